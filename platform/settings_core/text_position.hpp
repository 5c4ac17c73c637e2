#pragma once

#include <foundation/export.hpp>

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vx::core {

/// Where something stands in a text, both counted from 1; columns count characters, not bytes.
struct TextPosition
{
    std::size_t line = 1;    ///< of the text
    std::size_t column = 1;  ///< within the line
};

/// The position of a byte of a UTF-8 text. A byte-order mark takes no column.
[[nodiscard]] VX_API TextPosition positionAt(std::string_view text, std::size_t offset) noexcept;

/// "<file>:<line>:<column>: <message>".
[[nodiscard]] VX_API std::string located(const std::filesystem::path& file, std::string_view text,
                                         std::size_t offset, std::string_view message);

/// Part of a text that cannot be what it should; says what was expected.
class VX_API ParseError : public std::runtime_error
{
public:
    /// `offset` is that of the part; the message does not repeat it.
    ParseError(std::size_t offset, const std::string& message) : std::runtime_error(message), offset_(offset)
    {}

    /// In bytes from the beginning of the text that was read.
    [[nodiscard]] std::size_t offset() const noexcept { return offset_; }

private:
    std::size_t offset_;
};

/// The bytes of a UTF-8 byte-order mark.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Bytes in front of the first that is no well-formed UTF-8; the size of the text when all is.
[[nodiscard]] VX_API std::size_t validUtf8PrefixLength(std::string_view text) noexcept;

}  // namespace vx::core
