#pragma once

#include <string>
#include <string_view>

namespace vx::tool {

/// Returns the string with HTML's special characters escaped, for use between tags or in a quoted attribute.
[[nodiscard]] std::string escapeHtml(std::string_view string);

/// Returns the string as a CSS string literal in single quotes.
[[nodiscard]] std::string cssString(std::string_view string);

}  // namespace vx::tool
