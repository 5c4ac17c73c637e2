#pragma once

#include <string_view>

/// The parts of the settings page, embedded from the files beside this header.
namespace vx::tool::page {

/// The HTML document with the placeholders {{style}}, {{script}} and others.
extern const std::string_view document;
extern const std::string_view style;
extern const std::string_view script;

}  // namespace vx::tool::page
