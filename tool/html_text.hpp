#pragma once

#include <string>
#include <string_view>

namespace vx::tool {

/// A text as HTML, between tags or in a quoted attribute.
[[nodiscard]] std::string html(std::string_view text);

/// A text as a string of CSS, with its quotes, which are single.
[[nodiscard]] std::string cssString(std::string_view text);

}  // namespace vx::tool
