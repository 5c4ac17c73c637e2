#pragma once

#include <settings_core/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <stdexcept>
#include <string>
#include <string_view>

namespace vx::core {

/// A path that leads to no node; says what became of it, or which paths are near.
class VX_API UnknownPath : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The path with the tree's root, which may be left out.
[[nodiscard]] VX_API std::string fullPath(const SettingsTree& tree, std::string_view path);

/// The node at this path, whose root may be left out. Raises UnknownPath.
[[nodiscard]] VX_API const Node&
nodeAt(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases, std::string_view path);

/// Why there is no node at this full path: which releases moved or removed it, or which paths are near.
[[nodiscard]] VX_API std::string explainUnknownPath(const SettingsTree& tree,
                                                    const ::settings::core::ReleaseChangeTable& releases,
                                                    std::string_view path);

/// The setting itself, or what an alias stands for, through further aliases. Raises std::runtime_error for a
/// group and for an alias that leads out of the tree or round in a circle.
[[nodiscard]] VX_API const Node& resolveSetting(const SettingsTree& tree, const Node& node);

}  // namespace vx::core
