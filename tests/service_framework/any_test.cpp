#include <cppmicroservices/AnyMap.h>
#include <gtest/gtest.h>

#include <list>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

using namespace cppmicroservices;

namespace {

TEST(Any, writesItsValueAsText)
{
    const std::pair<Any, std::string> cases[] = {
        {true, "1"},
        {0.1, "0.1"},
        {1234567890123.0, "1.23456789012e+12"},
        {0.1F, "0.10000000149"},
        {std::vector<Any>{1, std::string("b"), 1.0 / 3}, "[1,b,0.333333333333]"},
        {std::list<std::string>(), "[]"},
        {std::set<int>{2, 1}, "[1,2]"},
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

TEST(Any, givesItsValueByItsExactType)
{
    Any number = 42;
    EXPECT_THROW(any_cast<long>(number), BadAnyCastException);
    EXPECT_THROW(ref_any_cast<long>(number), BadAnyCastException);
    EXPECT_THROW(any_cast<int>(Any()), BadAnyCastException);
    EXPECT_EQ(any_cast<long>(&number), nullptr);
    const Any copy = number;
    ref_any_cast<int>(number) = 7;
    EXPECT_EQ(any_cast<int>(number), 7);
    EXPECT_TRUE(copy == Any(42));
    EXPECT_FALSE(copy == 42L);
    EXPECT_FALSE(Any() == copy);
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
