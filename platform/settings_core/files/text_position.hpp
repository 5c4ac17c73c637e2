#pragma once

#include <settings_core/diagnostic.hpp>

#include <foundation/export.hpp>

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// Finds positions in a UTF-8 text, which may be the content of a file and must outlive the index. A
/// byte-order mark takes no column. To find many positions takes no longer for a long text or for long lines.
class VX_API PositionIndex
{
public:
    /// Reads the text once.
    explicit PositionIndex(std::string_view text);

    /// Returns the position of the byte at this offset; that of the end if the text is shorter.
    [[nodiscard]] Position at(std::size_t wanted, const std::filesystem::path& file = {}) const;

private:
    [[nodiscard]] std::size_t charactersBefore(std::size_t offset) const noexcept;

    std::string_view text_;
    std::vector<std::size_t> lineStarts_;  // offsets; that of the first line is behind a byte-order mark
    std::vector<std::size_t> characters_;  // numbers of characters before each block of bytes
};

/// Returns one position, as PositionIndex does.
[[nodiscard]] VX_API Position positionAt(std::string_view text, std::size_t offset,
                                         const std::filesystem::path& file = {});

/// Thrown for input that cannot be parsed. The message says what was expected.
class VX_API ParseError : public std::runtime_error
{
public:
    /// `offset` is where the invalid part begins; the message need not repeat it.
    ParseError(std::size_t offset, const std::string& message) : std::runtime_error(message), offset_(offset)
    {}

    /// Returns the offset of the invalid part, in bytes from the beginning of the input.
    [[nodiscard]] std::size_t offset() const noexcept { return offset_; }

private:
    std::size_t offset_;
};

/// Thrown for a value that is well-formed, but of another class than wanted.
class VX_API UnsuitableValue : public ParseError
{
public:
    using ParseError::ParseError;
};

/// The bytes of a UTF-8 byte-order mark.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Returns the length in bytes of the valid UTF-8 prefix: that of the whole string if it is valid.
[[nodiscard]] VX_API std::size_t validUtf8PrefixLength(std::string_view text) noexcept;

}  // namespace vx::core
