#include <settings_core/files/text_position.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/locale/utf.hpp>

#include <algorithm>

namespace vx::core {

Position positionAt(std::string_view text, std::size_t offset, const std::filesystem::path& file)
{
    const std::string_view before = text.substr(0, offset);
    const auto lineBreaks = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    std::string_view line = before.substr(before.rfind('\n') + 1);  // npos + 1 wraps to 0
    if (lineBreaks == 0 && line.starts_with(byteOrderMark)) {
        line.remove_prefix(byteOrderMark.size());
    }
    return {file.string(), lineBreaks + 1, characterCount(line) + 1};
}

std::size_t validUtf8PrefixLength(std::string_view text) noexcept
{
    using boost::locale::utf::is_valid_codepoint;
    using boost::locale::utf::utf_traits;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        position = std::find_if(position, end, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
        const char* const start = position;
        if (position != end && !is_valid_codepoint(utf_traits<char>::decode(position, end))) {
            return static_cast<std::size_t>(start - text.data());
        }
    }
    return text.size();
}

}  // namespace vx::core
