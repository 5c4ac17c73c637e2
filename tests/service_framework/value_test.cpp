#include <cppmicroservices/LDAPFilter.h>
#include <gtest/gtest.h>

#include <list>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tests/support/files.hpp>
#include <vector>

using namespace cppmicroservices;

namespace {

TEST(LdapFilter, doesWhatTheListSays)
{
    const AnyMap properties(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS,
                            {{"name", std::string("John Doe")},
                             {"literal", static_cast<const char*>("lit")},
                             {"letter", 'x'},
                             {"Age", 42},
                             {"weight", 71.5},
                             {"tenth", 0.1F},
                             {"id", 9000000000L},
                             {"on", true},
                             {"odd", std::string("a*b(c)\\d")},
                             {"empty", std::string()},
                             {"tags", std::vector<std::string>{"red", "green"}},
                             {"list", std::list<std::string>{"one", "two"}},
                             {"mixed", std::vector<Any>{1, std::string("two"), std::vector<Any>{9}}},
                             {"void", Any()},
                             {"two words", 1}});
    std::istringstream lines(tests::readFile(FILTER_LIST));
    std::size_t filters = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        ++filters;
        const std::string text = line.substr(1);
        if (line.front() == '!') {
            EXPECT_THROW(LDAPFilter{text}, std::invalid_argument) << text;
        } else {
            EXPECT_EQ(LDAPFilter(text).Match(properties), line.front() == '+') << text;
        }
    }
    EXPECT_GT(filters, 90U);
    for (const Any& seven :
         {Any(short{7}), Any(7), Any(7L), Any(7LL), Any(static_cast<unsigned char>(7)),
          Any(static_cast<unsigned short>(7)), Any(7U), Any(7UL), Any(7ULL), Any(7.0F), Any(7.0)})
    {
        const LDAPFilter isSeven("(&(n=7)(n~=7)(n<=7)(n>=7)(!(n<=6))(!(n>=8))(!(n=8))(n=*))");
        EXPECT_TRUE(isSeven.Match(AnyMap(AnyMap::ORDERED_MAP, {{"n", seven}}))) << seven.Type().name();
    }
}

TEST(LdapFilter, mindsTheCaseOfKeysWhenAskedAndHasANormalForm)
{
    const AnyMap properties(AnyMap::ORDERED_MAP, {{"Key", 1}, {"other", 2}});
    EXPECT_TRUE(LDAPFilter("(KEY=1)").Match(properties));
    EXPECT_TRUE(LDAPFilter("(Key=1)").MatchCase(properties));
    EXPECT_FALSE(LDAPFilter("(KEY=1)").MatchCase(properties));
    EXPECT_FALSE(
        LDAPFilter("(KEY=1)").MatchCase(AnyMap(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS, {{"Key", 1}})));
    const AnyMap ambiguous(AnyMap::UNORDERED_MAP, {{"key", 1}, {"KEY", 2}});
    EXPECT_THROW((void)LDAPFilter("(key=1)").MatchCase(ambiguous), std::runtime_error);

    EXPECT_EQ(LDAPFilter(" (& (a = \\*x*)(!(b<=2)))").ToString(), "(&(a= \\*x*)(!(b<=2)))");
    EXPECT_FALSE(LDAPFilter());
    EXPECT_FALSE(LDAPFilter().Match(AnyMap(AnyMap::ORDERED_MAP)));
}

TEST(Any, writesItsValueAsText)
{
    const std::pair<Any, std::string> cases[] = {
        {0.1, "0.1"},
        {0.1F, "0.10000000149"},
        {std::vector<Any>{1, std::string("b"), 1.0 / 3}, "[1,b,0.333333333333]"},
        {std::map<std::string, Any>{{"a", 1}, {"b", 1.0 / 3}}, "{a : 1, b : 0.333333333333}"},
        {std::map<std::string, double>{{"a", 1.0 / 3}}, "{a : 0.333333}"},
        {AnyMap(AnyMap::ORDERED_MAP, {{"a", 1}, {"b", std::string("x")}}), "{a : 1, b : x}"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(value.ToString(), text);
    }
    EXPECT_THROW((void)Any().ToString(), std::logic_error);
    EXPECT_EQ(Any().ToStringNoExcept(), "");
}

TEST(AnyMap, mindsTheCaseOfKeysByItsType)
{
    AnyMap ignoring(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS, {{"Key", 1}});
    ignoring["key"] = 2;
    EXPECT_FALSE(ignoring.emplace("KEY", 3).second);
    EXPECT_EQ(ignoring.begin()->first, "Key") << "the first writing stands";
    EXPECT_TRUE(ignoring.at("kEY") == 2);
    const AnyMap ordered(AnyMap::ORDERED_MAP, {{"b", 1}, {"a", 2}});
    EXPECT_THROW((void)ordered.at("A"), std::out_of_range);
    EXPECT_FALSE(ordered == AnyMap(AnyMap::UNORDERED_MAP, {{"a", 2}, {"b", 1}}));
}

}  // namespace
