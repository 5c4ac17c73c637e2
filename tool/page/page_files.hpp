#pragma once

#include <span>
#include <string_view>

/// The parts of the settings page, embedded from the files beside this header.
namespace vx::tool::page {

/// The HTML document with the placeholders {{style}}, {{scripts}} and others.
extern const std::string_view document;
extern const std::string_view style;
/// The parts of one script, in their order.
extern const std::span<const std::string_view> scripts;
/// Of the whole script, for the content security policy.
extern const std::string_view scriptHash;

}  // namespace vx::tool::page
