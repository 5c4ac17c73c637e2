#pragma once

// Values, nodes, releases and trees as JSON, in the form of exported trees.

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "release_tree.hpp"

namespace vx::review {

/// Returns an object with class, dimensions and the elements in column-major order; null for an unassigned
/// value. The data of a character row vector is one string; numbers that are not finite are "NaN", "Inf" and
/// "-Inf".
[[nodiscard]] boost::json::value valueJson(const foundation::verdixdata::Array& value);

/// Returns the value of a parameter; null if there is none.
[[nodiscard]] boost::json::value parameterJson(const core::Parameter& parameter);

/// Returns an object with the kind and the name of a function; null if there is none.
///@{
[[nodiscard]] boost::json::value functionJson(const ::settings::core::Validator& validator);
[[nodiscard]] boost::json::value functionJson(const ::settings::core::RunTimeDefault& runTimeDefault);
///@}

/// Returns the constraints of a node's value validators.
[[nodiscard]] boost::json::array constraintsJson(const core::Node& node);

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

/// Returns a release's tree in the form of a baseline: an exported tree without the members that have the
/// value they have for a setting without options, without the dimensions of rows, and with the values that
/// run-time defaults computed.
[[nodiscard]] boost::json::object baselineJson(const ReleaseTree& release);

/// Returns the string; null if it is empty.
[[nodiscard]] boost::json::value stringOrNull(std::string_view string);

}  // namespace vx::review
