#pragma once

#include <settings_core/settings_tree.hpp>

#include <string>
#include <variant>
#include <vector>

namespace bench {

/// A factory value in the types that all formats know.
using PlainValue = std::variant<bool, int, double, std::string, std::vector<int>, std::vector<double>,
                                std::vector<std::string>>;

/// A setting as the other formats know it: a name and a value, without rules, visibility or class.
struct PlainSetting
{
    std::string group;  ///< full path
    std::string name;
    PlainValue value;

    [[nodiscard]] std::string path() const { return group + "." + name; }
};

/// All settings of a tree that have a factory value, in the tree's order, so that those of a group which are
/// made together stand together.
[[nodiscard]] std::vector<PlainSetting> plainSettings(const vx::core::SettingsTree& tree);

}  // namespace bench
