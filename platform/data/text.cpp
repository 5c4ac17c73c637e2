#include <foundation/verdixdata/text.hpp>

#include <boost/locale/utf.hpp>

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace foundation::verdixdata {

namespace {

template <class To, class From>
std::basic_string<To> convert(std::basic_string_view<From> input)
{
    using boost::locale::utf::code_point;
    using boost::locale::utf::utf_traits;
    constexpr code_point replacement = 0xFFFD;

    std::basic_string<To> result;
    result.reserve(input.size());
    const auto isAscii = [](From unit) { return static_cast<std::make_unsigned_t<From>>(unit) < 0x80; };
    const From* position = input.data();
    const From* const end = position + input.size();
    while (position != end) {
        const From* const ascii = position;
        position = std::find_if_not(position, end, isAscii);
        result.append(ascii, position);
        if (position == end) {
            break;
        }
        // After a decoding error, skip one code unit only: the next one may begin a valid sequence.
        const From* const start = position;
        code_point point = utf_traits<From>::decode(position, end);
        if (!boost::locale::utf::is_valid_codepoint(point)) {
            point = replacement;
            position = start + 1;
        }
        utf_traits<To>::encode(point, std::back_inserter(result));
    }
    return result;
}

}  // namespace

std::u16string toUtf16(std::string_view utf8)
{
    return convert<char16_t>(utf8);
}

std::string toUtf8(std::u16string_view utf16)
{
    return convert<char>(utf16);
}

}  // namespace foundation::verdixdata
