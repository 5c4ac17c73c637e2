#pragma once

#include <string_view>

/// The parts of the page of settings, from the files beside this header.
namespace vx::tool::page {

/// The document, with {{style}}, {{script}} and other places to fill.
extern const std::string_view document;
extern const std::string_view style;
extern const std::string_view script;

}  // namespace vx::tool::page
