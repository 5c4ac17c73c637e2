#include <settings_core/files/text_position.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/locale/utf.hpp>

#include <algorithm>

namespace vx::core {

namespace {

constexpr std::size_t blockSize = 256;

}  // namespace

PositionIndex::PositionIndex(std::string_view text)
    : text_(text), lineStarts_{text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0}
{
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1)) {
        lineStarts_.push_back(at + 1);
    }
    characters_.reserve(text.size() / blockSize + 1);
    characters_.push_back(0);
    for (std::size_t end = blockSize; end <= text.size(); end += blockSize) {
        characters_.push_back(characters_.back() + characterCount(text.substr(end - blockSize, blockSize)));
    }
}

Position PositionIndex::at(std::size_t wanted, const std::filesystem::path& file) const
{
    const std::size_t offset = std::min(wanted, text_.size());
    const auto next = std::upper_bound(lineStarts_.begin() + 1, lineStarts_.end(), offset);
    const std::size_t start = std::min(*(next - 1), offset);  // an offset may be in the byte-order mark
    return {file.string(), static_cast<std::size_t>(next - lineStarts_.begin()),
            charactersBefore(offset) - charactersBefore(start) + 1};
}

std::size_t PositionIndex::charactersBefore(std::size_t offset) const noexcept
{
    const std::size_t block = offset / blockSize;
    return characters_[block] + characterCount(text_.substr(block * blockSize, offset - block * blockSize));
}

Position positionAt(std::string_view text, std::size_t offset, const std::filesystem::path& file)
{
    return PositionIndex(text).at(offset, file);
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
