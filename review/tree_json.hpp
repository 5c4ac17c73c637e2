#pragma once

// Values, nodes, releases and trees as JSON, in the form of exported trees.

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <boost/json/object.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::review {

/// Returns an object with class, dimensions and the elements in column-major order; null for an unassigned
/// value. The data of a character row vector is one string.
[[nodiscard]] boost::json::value valueJson(const foundation::verdixdata::Array& value);

/// Returns the value of a parameter; null if there is none.
[[nodiscard]] boost::json::value parameterJson(const core::Parameter& parameter);

/// Returns all properties that the provider declared for a node.
[[nodiscard]] boost::json::object nodeJson(const core::Node& node);

/// Returns the changes of a release; `index` is its key in the release change table.
[[nodiscard]] boost::json::object releaseJson(std::uint64_t index,
                                              const ::settings::core::ReleaseChangeSet& set);

/// Returns tree, release changes and path list as one document. The names and the order of its members are
/// stable.
[[nodiscard]] boost::json::object treeJson(const core::SettingsTree& tree,
                                           const ::settings::core::ReleaseChangeTable& releases,
                                           const std::vector<std::string>& settingPathList);

/// Returns the string; null if it is empty.
[[nodiscard]] boost::json::value stringOrNull(std::string_view string);

}  // namespace vx::review
