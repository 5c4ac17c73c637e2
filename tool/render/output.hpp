#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace vx::tool {

/// The role of a piece of output, which determines its colour.
enum class Style : std::uint8_t
{
    plain,
    heading,
    group,
    value,
    note,  ///< secondary
    good,
    bad
};

enum class ColourChoice : std::uint8_t
{
    automatic,  ///< on a terminal that supports colours, unless NO_COLOR is set
    always,
    never
};

enum class OutputFormat : std::uint8_t
{
    text,  ///< for people
    json   ///< for programs, one document
};

/// Buffered output to a file descriptor, which it does not own, or only to the buffer. Writing throws
/// CommandError, with the destination's name, if the descriptor cannot be written (closed pipe, full disk).
/// Output that is not flushed is lost.
class Output
{
public:
    Output(int descriptor, std::string name, ColourChoice colour, OutputFormat format = OutputFormat::text);
    /// Keeps everything in the buffer, without colours.
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    Output& operator<<(std::string_view text);
    Output& operator<<(char character) { return *this << std::string_view(&character, 1); }

    template <std::unsigned_integral Number>
    Output& operator<<(Number number)
    {
        char buffer[20];
        return *this << std::string_view(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
    }

    /// Returns whether to write one JSON document, and nothing else.
    [[nodiscard]] bool isJson() const noexcept { return format_ == OutputFormat::json; }

    /// Returns the text in the style's colour; unchanged if colours are off.
    [[nodiscard]] std::string styled(Style style, std::string_view text) const;

    /// Returns what the buffer holds.
    [[nodiscard]] std::string_view buffer() const noexcept { return buffer_; }

    /// Writes the buffer. Throws CommandError.
    void flush();

private:
    int descriptor_ = -1;  ///< -1: there is only the buffer
    std::string name_;
    bool hasColour_ = false;
    OutputFormat format_ = OutputFormat::text;
    std::string buffer_;
};

}  // namespace vx::tool
