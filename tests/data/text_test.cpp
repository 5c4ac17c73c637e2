#include <foundation/verdixdata/text.hpp>

#include <gtest/gtest.h>

namespace {

using namespace foundation::verdixdata;

TEST(Text, ConvertsBothWays)
{
    const std::pair<std::string, std::u16string> texts[] = {
        {"gr\xC3\xBC\xC3\x9F", u"gr\u00FC\u00DF"},
        {"a\xF0\x9F\x98\x80z", u"a\U0001F600z"},
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
    };
    for (const auto& [narrow, wide] : texts) {
        EXPECT_EQ(toUtf16(narrow), wide) << narrow;
        EXPECT_EQ(toUtf8(wide), narrow);
    }
}

TEST(Text, ReplacesWhatIsMalformedAndKeepsTheRest)
{
    const std::pair<std::string, std::u16string> narrow[] = {
        {"a\xFFz", u"a\uFFFDz"},
        {"\xC3z", u"\uFFFDz"},                              // the letter after a cut sequence stays
        {"\xE2\x82", u"\uFFFD\uFFFD"},                      // cut at the end
        {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // longer than needed
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last code point
    };
    for (const auto& [text, expected] : narrow) {
        EXPECT_EQ(toUtf16(text), expected);
    }
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(toUtf8(std::u16string{u'a', 0xD83D, u'z'}), "a" + replaced + "z");
    EXPECT_EQ(toUtf8(std::u16string{0xDE00, 0xD83D}), replaced + replaced);
}

}  // namespace
