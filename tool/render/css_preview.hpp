#pragma once

// The colour or font that a value describes, as CSS, to preview it beside the value.

#include <settings_core/tree/node.hpp>

#include <foundation/verdixdata/array.hpp>

#include <string>

namespace vx::tool {

/// Returns the CSS colour of a value, such as "rgb(14 0 255)"; empty unless the setting has a colour
/// constraint and the value is an RGB triple.
[[nodiscard]] std::string cssColour(const core::Node& setting, const foundation::verdixdata::Array& value);

/// Returns CSS declarations for the font that the factory values of the group's settings "Name", "Size" and
/// "Style" describe; empty if they do not describe one.
[[nodiscard]] std::string cssFont(const core::Node& group);

}  // namespace vx::tool
