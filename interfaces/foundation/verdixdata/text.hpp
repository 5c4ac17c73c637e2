#pragma once

#include <foundation/export.hpp>

#include <string>
#include <string_view>

namespace foundation::verdixdata {

/// Converts UTF-8 to UTF-16. Each byte that is not part of valid UTF-8 becomes U+FFFD.
[[nodiscard]] VX_API std::u16string toUtf16(std::string_view utf8);

/// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
[[nodiscard]] VX_API std::string toUtf8(std::u16string_view utf16);

}  // namespace foundation::verdixdata
