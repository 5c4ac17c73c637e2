#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace vx::tool {

/// What a piece of text is; the colours follow from it.
enum class Style : std::uint8_t
{
    plain,
    heading,
    group,
    value,
    note,  ///< secondary, may be read past
    good,
    bad
};

enum class ColourChoice : std::uint8_t
{
    automatic,  ///< on a terminal that has colours, unless NO_COLOR is set
    always,
    never
};

enum class OutputForm : std::uint8_t
{
    text,  ///< for people
    json   ///< for programs: one document
};

/// Buffered text to a file descriptor, which it does not own. Failure (a closed pipe, a full disk) names the
/// destination and the reason. What is not flushed is lost.
class Output
{
public:
    Output(int descriptor, std::string name, ColourChoice colour, OutputForm form = OutputForm::text);
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

    /// Whether to write a JSON document, and nothing else.
    [[nodiscard]] bool isJson() const noexcept { return form_ == OutputForm::json; }

    /// The text in the style's colour, or as it is where there are no colours.
    [[nodiscard]] std::string painted(Style style, std::string_view text) const;

    /// Raises Failure.
    void flush();

private:
    int descriptor_;
    std::string name_;
    bool hasColour_;
    OutputForm form_;
    std::string buffer_;
};

}  // namespace vx::tool
