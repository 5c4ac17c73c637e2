#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
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

/// A piece of output that is written as it is: the program's own, or in a format with escapes of its own.
struct Exact
{
    std::string_view bytes;
};

/// A piece of output with unprintable characters escaped, in the colour of its style.
struct Styled
{
    std::string bytes;
};

/// The reader of standard output closed it before the end, which needs no message.
class ReaderGone : public std::exception
{
public:
    [[nodiscard]] const char* what() const noexcept override { return "the reader is gone"; }
};

/// Returns whether the terminal, if there is one, understands no escape sequences.
[[nodiscard]] bool isDumbTerminal();

/// Buffered output to a file descriptor, which it does not own, or only to the buffer. Writing throws
/// CommandError, with the destination's name, if the descriptor cannot be written (full disk), and
/// ReaderGone if it is a pipe whose reader has closed it. Output that is not flushed is lost.
class Output
{
public:
    Output(int descriptor, std::string name, ColourChoice colour, OutputFormat format = OutputFormat::text);
    /// Keeps everything in the buffer, without colours. Tables fit in lines of `lineWidth` columns.
    explicit Output(std::optional<std::size_t> lineWidth = std::nullopt) : lineWidth_(lineWidth) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Writes a string, which may be foreign, with unprintable characters escaped, line breaks among them.
    Output& operator<<(std::string_view string);
    Output& operator<<(const std::string& string) { return *this << std::string_view(string); }
    /// Writes a piece of the program's own text as it is.
    ///@{
    Output& operator<<(const char* literal) { return *this << Exact{literal}; }
    Output& operator<<(char character) { return *this << Exact{{&character, 1}}; }
    ///@}
    Output& operator<<(Exact piece);
    Output& operator<<(const Styled& piece) { return *this << Exact{piece.bytes}; }

    template <std::unsigned_integral Number>
    Output& operator<<(Number number)
    {
        char buffer[20];
        return *this << Exact{{buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr}};
    }

    /// Returns whether to write one JSON document, and nothing else.
    [[nodiscard]] bool isJson() const noexcept { return format_ == OutputFormat::json; }

    /// Returns whether a terminal shows what is written, be it in a pager.
    [[nodiscard]] bool isTerminal() const noexcept;

    /// Returns the number of columns that a line has; none if lines are not for a terminal, and of any
    /// length.
    [[nodiscard]] std::optional<std::size_t> lineWidth() const noexcept { return lineWidth_; }

    /// Returns the number of characters at which to cut values: `width` where lines have a width; elsewhere
    /// values are whole.
    [[nodiscard]] std::size_t valueWidth(std::size_t width) const noexcept
    {
        return lineWidth_ ? width : std::string_view::npos;
    }

    /// Has a terminal's user see what is written in a pager, all at once when it is flushed.
    void usePager() noexcept;

    /// Returns the string in the style's colour, if colours are on.
    [[nodiscard]] Styled styled(Style style, std::string_view string) const;

    /// Returns what the buffer holds.
    [[nodiscard]] std::string_view buffer() const noexcept { return buffer_; }

    /// Writes the buffer, unless a pager is to show all output at once.
    void flushUnlessPaged()
    {
        if (!hasPager_) {
            flush();
        }
    }

    /// Writes the buffer, or shows it in the pager until the user quits that. Throws CommandError or
    /// ReaderGone.
    void flush();

private:
    int descriptor_ = -1;  ///< -1: there is only the buffer
    std::string name_;
    bool hasColour_ = false;
    bool hasPager_ = false;
    std::optional<std::size_t> lineWidth_;
    OutputFormat format_ = OutputFormat::text;
    std::string buffer_;
};

}  // namespace vx::tool
