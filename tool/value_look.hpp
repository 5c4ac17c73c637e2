#pragma once

// What a value shows itself as, beside its text, in CSS.

#include <settings_core/node.hpp>

#include <foundation/verdixdata/array.hpp>

#include <string>

namespace vx::tool {

/// "rgb(14 0 255)" for a triple of a setting for colours; empty for anything else.
[[nodiscard]] std::string colourOf(const core::Node& setting, const foundation::verdixdata::Array& value);

/// Declarations for a text in the font that a group's factory values "Name", "Size" and "Style" describe;
/// empty when these three do not describe one.
[[nodiscard]] std::string fontOf(const core::Node& group);

}  // namespace vx::tool
