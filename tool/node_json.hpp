#pragma once

// Facts about values, nodes and releases as JSON, the same in every verb's documents.

#include <settings_core/node.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <string>
#include <vector>

namespace vx::tool {

/// Class, dimensions and, column by column, the elements; null for what is not assigned. A character row is
/// one text.
[[nodiscard]] boost::json::value valueJson(const foundation::verdixdata::Array& value);

/// Everything that a provider said of a node.
[[nodiscard]] boost::json::object nodeJson(const core::Node& node);

/// The changes of a release; `index` is its place in the table.
[[nodiscard]] boost::json::object releaseJson(std::uint64_t index,
                                              const ::settings::core::ReleaseChangeSet& set);

[[nodiscard]] boost::json::array textsJson(const std::vector<std::string>& texts);

/// Null for an empty text.
[[nodiscard]] boost::json::value textOrNull(std::string_view text);

}  // namespace vx::tool
