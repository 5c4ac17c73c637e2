#pragma once

#include <settings_core/tree/settings_tree.hpp>

namespace fuzz {

/// A small tree with a setting of each class, each kind of rule, and of the kinds of nodes that settings
/// files must not name. A few settings are targets of moves in the table of release changes.
[[nodiscard]] vx::core::SettingsTree everyClassTree();

}  // namespace fuzz
