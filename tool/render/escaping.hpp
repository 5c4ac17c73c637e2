#pragma once

#include <string>
#include <string_view>

namespace vx::tool {

/// Returns the string with HTML's special characters escaped, for use between tags or in a quoted attribute.
[[nodiscard]] std::string escapeHtml(std::string_view string);

/// Returns the string as a CSS string literal in single quotes.
[[nodiscard]] std::string cssString(std::string_view string);

/// Returns the string as a field of a CSV file (RFC 4180).
[[nodiscard]] std::string csvField(std::string field);

/// Returns a string without line breaks as a cell of a Markdown table.
[[nodiscard]] std::string markdownCell(std::string cell);

/// Returns a string as plain text in Markdown, with its line breaks as spaces.
[[nodiscard]] std::string markdownText(std::string_view string);

}  // namespace vx::tool
