#pragma once

#include <settings_core/files/layers.hpp>

#include <boost/json/object.hpp>

#include <string>
#include <string_view>

#include "render/output.hpp"

namespace vx::tool {

/// Writes a document with one member per line, or one element per line for members that are arrays of
/// objects.
void writeJson(const boost::json::object& document, Output& out);

/// Adds a value and where it is from: `value`, `origin`, `file` (null for a factory value) and, if it was
/// computed, `computedBy`.
void addLayerValue(boost::json::object& document, const core::LayerValue& value);

/// Returns JSON without the line breaks and tabs, which are never part of a string.
[[nodiscard]] std::string jsonOnOneLine(std::string_view json);

}  // namespace vx::tool
