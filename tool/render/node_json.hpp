#pragma once

// Values, nodes and releases as JSON, in the form that all commands share.

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/tree/node.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <string>
#include <vector>

namespace vx::tool {

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

[[nodiscard]] boost::json::array stringsJson(const std::vector<std::string>& strings);

/// Returns the string; null if it is empty.
[[nodiscard]] boost::json::value stringOrNull(std::string_view string);

}  // namespace vx::tool
