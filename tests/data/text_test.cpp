#include <data/unprintable.hpp>

#include <foundation/verdixdata/text.hpp>

#include <gtest/gtest.h>

#include <array>

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

TEST(Text, EscapesWhatATerminalWouldObey)
{
    const std::array<std::string, 3> cases[] = {
        {"gr\u00fcn \u05d0", "gr\u00fcn \u05d0", "gr\u00fcn \u05d0"},
        {"\x1b[2J\n\t", "\\x1b[2J\\n\\t", "\\u001b[2J\\u000a\\u0009"},
        {"\x7f\xc2\x80\xc2\x9f\xc2\xa0", "\\x7f\\u0080\\u009f\xc2\xa0", "\\u007f\\u0080\\u009f\xc2\xa0"},
        {"\u061c\u200e\u200f\u202a\u202e\u2066\u2069", "\\u061c\\u200e\\u200f\\u202a\\u202e\\u2066\\u2069",
         "\\u061c\\u200e\\u200f\\u202a\\u202e\\u2066\\u2069"},
        {"\u200d\u202f\u2065\u206a", "\u200d\u202f\u2065\u206a", "\u200d\u202f\u2065\u206a"},
        {"\x9b\xc2z\xc0\x9b", "\\x9b\\xc2z\\xc0\\x9b", "\\ufffd\\ufffdz\\ufffd\\ufffd"},
    };
    for (const auto& [string, text, json] : cases) {
        EXPECT_EQ(vx::data::escapeUnprintable(string), text);
        EXPECT_EQ(vx::data::escapeUnprintable(string, vx::data::EscapeStyle::json), json);
    }
}

}  // namespace
