#pragma once

#include <settings_core/tree/settings_tree.hpp>

#include <string>
#include <variant>
#include <vector>

namespace bench {

/// A factory value in the types that all formats support.
using PlainValue = std::variant<bool, int, double, std::string, std::vector<int>, std::vector<double>,
                                std::vector<std::string>>;

/// A setting with what the other formats support: name and value, without constraints, visibility and element
/// class.
struct PlainSetting
{
    std::string group;  ///< full path
    std::string name;
    PlainValue value;

    [[nodiscard]] std::string path() const { return group + "." + name; }
};

/// Returns all settings of a tree that have a factory value, in the order of the tree.
[[nodiscard]] std::vector<PlainSetting> plainSettings(const vx::core::SettingsTree& tree);

}  // namespace bench
