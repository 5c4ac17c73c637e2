#pragma once

#include <string>
#include <string_view>

namespace vx::tool {

/// Returns the string with HTML's special characters escaped, for use between tags or in a quoted attribute.
[[nodiscard]] std::string escapeHtml(std::string_view string);

/// Returns the string as a CSS string literal in single quotes.
[[nodiscard]] std::string cssString(std::string_view string);

/// Returns the string as a field of a CSV file (RFC 4180). An apostrophe precedes what a spreadsheet would
/// calculate as a formula: anything but a number that begins with =, +, -, @, a tab or a carriage return.
[[nodiscard]] std::string csvField(std::string field);

/// Returns a string as plain text in Markdown, also in a cell of a table, with its line breaks as spaces and
/// other unprintable characters escaped.
[[nodiscard]] std::string markdownText(std::string_view string);

/// Returns a string as code in a line of Markdown, with unprintable characters escaped.
[[nodiscard]] std::string markdownCode(std::string_view string);

}  // namespace vx::tool
