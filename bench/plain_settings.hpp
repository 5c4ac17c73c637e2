#pragma once

#include <settings_core/tree/settings_tree.hpp>

#include <string>
#include <variant>
#include <vector>

namespace bench {

/// A factory value, reduced to the types that every library in the benchmark can store.
using PlainValue = std::variant<bool, int, double, std::string, std::vector<int>, std::vector<double>,
                                std::vector<std::string>>;

/// A setting, reduced to what every library in the benchmark can store: name and value, but no constraints,
/// visibility or element class.
struct PlainSetting
{
    std::string group;  ///< full path
    std::string name;   ///< last component of the path
    PlainValue value;

    [[nodiscard]] std::string path() const { return group + "." + name; }
};

/// Returns all settings of a tree that have a factory value, in the order of the tree.
[[nodiscard]] std::vector<PlainSetting> plainSettings(const vx::core::SettingsTree& tree);

}  // namespace bench
