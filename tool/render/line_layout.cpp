#include "render/line_layout.hpp"

#include <settings_core/values/value_format.hpp>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <sys/ioctl.h>
#include <unistd.h>

namespace vx::tool {

namespace {

constexpr std::size_t usualWidth = 80;
constexpr std::size_t leastWidth = 20;

/// Lets the C library decode UTF-8 in this thread, whatever the locale of the process is.
class Utf8Locale
{
public:
    Utf8Locale() : former_(::uselocale(utf8())) {}
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;
    ~Utf8Locale() { ::uselocale(former_); }

private:
    static locale_t utf8()
    {
        static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return locale;
    }

    locale_t former_;
};

struct Character
{
    std::string_view bytes;
    std::size_t width;
    bool startsPiece;  ///< a line may be broken before it
};

/// Returns the first character of a string that is not empty. Without a locale for UTF-8, each one has a
/// width of 1.
Character firstCharacter(std::string_view string)
{
    if (static_cast<unsigned char>(string.front()) < 0x80) {
        return {string.substr(0, 1), 1, false};
    }
    wchar_t code = 0;
    std::mbstate_t state{};
    const std::size_t size = std::mbrtowc(&code, string.data(), string.size(), &state);
    if (size == 0 || size > string.size()) {
        return {string.substr(0, 1), core::characterCount(string.substr(0, 1)), false};
    }
    const int width = ::wcwidth(code);
    const bool isWideLetter = width == 2 && std::iswpunct(static_cast<std::wint_t>(code)) == 0;
    return {string.substr(0, size), width < 0 ? 1 : static_cast<std::size_t>(width), isWideLetter};
}

/// A part of a line that is not broken: a word, or an alternative, or a wide letter with what belongs to it.
struct Piece
{
    std::size_t size = 0;   ///< in bytes, with the spaces behind it
    std::size_t width = 0;  ///< in columns, without them
    std::size_t spaces = 0;
};

Piece firstPiece(std::string_view string)
{
    Piece piece;
    while (piece.size < string.size()) {
        const Character next = firstCharacter(string.substr(piece.size));
        const bool isSpace = next.bytes == " ";
        const bool isAfterBreak = piece.spaces != 0 || string.substr(0, piece.size).ends_with('|');
        if ((isAfterBreak && !isSpace) || (piece.width != 0 && next.startsPiece)) {
            break;
        }
        piece.size += next.bytes.size();
        (isSpace ? piece.spaces : piece.width) += next.width;
    }
    return piece;
}

}  // namespace

std::size_t displayWidth(std::string_view string)
{
    const Utf8Locale utf8;
    std::size_t width = 0;
    while (!string.empty()) {
        const Character next = firstCharacter(string);
        width += next.width;
        string.remove_prefix(next.bytes.size());
    }
    return width;
}

std::string cutToWidth(std::string_view string, std::size_t width)
{
    if (displayWidth(string) <= width) {
        return std::string(string);
    }
    const Utf8Locale utf8;
    std::size_t size = 0;
    std::size_t rest = width - 1;
    for (Character next = firstCharacter(string); next.width <= rest;
         next = firstCharacter(string.substr(size))) {
        size += next.bytes.size();
        rest -= next.width;
    }
    return std::string(string.substr(0, size)) + "…";
}

std::vector<std::string> breakLine(std::string_view string, std::size_t width)
{
    const Utf8Locale utf8;
    std::vector<std::string> lines(1);
    std::size_t column = 0;
    std::size_t spaces = 0;  // at the end of the line
    while (!string.empty()) {
        const Piece piece = firstPiece(string);
        if (column != 0 && column + piece.width > width) {
            lines.back().resize(lines.back().size() - spaces);
            lines.emplace_back();
            column = 0;
        }
        lines.back() += string.substr(0, piece.size);
        column += piece.width + piece.spaces;
        spaces = piece.spaces;
        string.remove_prefix(piece.size);
    }
    return lines;
}

std::size_t terminalWidth()
{
    const char* variable = std::getenv("COLUMNS");
    const std::string_view columns = variable == nullptr ? "" : variable;
    std::size_t width = 0;
    std::from_chars(columns.data(), columns.data() + columns.size(), width);
    winsize size{};
    if (width == 0 && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) {
        width = size.ws_col;
    }
    return width == 0 ? usualWidth : std::max(width, leastWidth);
}

}  // namespace vx::tool
