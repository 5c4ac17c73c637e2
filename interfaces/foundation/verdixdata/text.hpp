#pragma once

#include <foundation/export.hpp>

#include <string>
#include <string_view>

namespace foundation::verdixdata {

/// UTF-8 to UTF-16. Each byte that is no part of well-formed UTF-8 becomes U+FFFD.
[[nodiscard]] VX_API std::u16string toUtf16(std::string_view text);

/// UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
[[nodiscard]] VX_API std::string toUtf8(std::u16string_view text);

}  // namespace foundation::verdixdata
