#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <tests/support/outside_core.hpp>

namespace {

using namespace verdix::settings;
using foundation::verdixdata::Array;
using settings::core::CPPValidator;
using tests::OutsideCore;

struct OptionTest : testing::Test
{
    OutsideCore core{"verdix"};
    FactoryGroup group = addGroup(core.root, "area");

    template <class... Pairs>
    const settings::core::detail::FactorySettingProperties& add(Pairs... pairs)
    {
        addSetting(group, "Setting", std::move(pairs)...);
        return core.nodes.back().properties;
    }
};

TEST_F(OptionTest, SaysWhatIsWrongLetterByLetter)
{
    const FunctionDescriptor lower{"f", "c", "lib"};
    const FunctionDescriptor java{"f", "JAVA", "Class"};
    const std::string of = "verdix.area.Setting: ";
    const std::string flag = " flag must be true or false.";
    const std::string type = of + "Invalid type for ";
    const std::string functions =
        " Must be a string for a VERDIX function or a FunctionDescriptor for a C function.";
    const std::string languages =
        " is not a valid language for a FunctionDescriptor. It must be 'C' or 'Java'.";
    const std::pair<std::function<void()>, std::string> cases[] = {
        {[&] { add("factoryvalue", true); }, of + "factoryvalue is not a valid input argument."},
        {[&] { add("", 1); }, of + " is not a valid input argument."},
        {[&] { add("Hidden", 1); }, of + "Hidden" + flag},
        {[&] { add("ReadOnly", 0); }, of + "ReadOnly" + flag},
        {[&] { add("AdditionalFile", 1.0); }, of + "AdditionalFile" + flag},
        {[&] { add("ValidationFcn", true); }, type + "ValidationFcn." + functions},
        {[&] { add("FactoryValueFcn", 3); }, type + "FactoryValueFcn." + functions},
        {[&] { add("ValueValidator", "words"); },
         type + "ValueValidator. Must be verdix::settings::internal::SettingValueValidator."},
        {[&] { add("ErrorHandler", true); }, of + "Error Handler must be function"},
        {[&] { add("FactoryValue", 1.5); }, "Value is invalid."},
        {[&] { add("ValidationFcn", lower); }, of + "c" + languages},
        {[&] { add("FactoryValueFcn", java); }, of + "JAVA" + languages},
    };
    for (const auto& [call, text] : cases) {
        EXPECT_THAT(call, testing::ThrowsMessage<std::logic_error>(text));
    }
    EXPECT_EQ(core.nodes.size(), 1U) << "a refused setting reached the settings core";
    EXPECT_TRUE(group.settings.empty());
}

TEST_F(OptionTest, AnAdditionalFileIsKeptWithTheContextOfItsTree)
{
    EXPECT_EQ(add().additionalFileContext, nullptr);
    EXPECT_EQ(add("AdditionalFile", true).additionalFileContext, group.treeContext);
}

TEST_F(OptionTest, RulesAddUpUntilAListReplacesThem)
{
    using Rule = internal::SettingValueValidator;
    const auto lengths = [](const auto& rules) {
        std::vector<std::size_t> all;
        for (const Rule& rule : rules) {
            all.push_back(rule.maximumLength.value_or(0));
        }
        return all;
    };
    const Rule one{{.maximumLength = 1}};
    const Rule two{{.maximumLength = 2}};
    auto added = add("ValueValidator", one, "ValueValidator", two).valueValidators;
    const auto copy = added;
    added.push_back(Rule(one));
    EXPECT_THAT(lengths(copy), testing::ElementsAre(1, 2));
    EXPECT_THAT(lengths(added), testing::ElementsAre(1, 2, 1));
    EXPECT_THAT(lengths(add("ValueValidator", one, "ValueValidator", std::vector{two}).valueValidators),
                testing::ElementsAre(2));
}

TEST_F(OptionTest, CallablesArriveUnchanged)
{
    int calls = 0;
    const auto validator = makeCppValidator([&](const auto&, const std::string& name, const Array&) {
        ++calls;
        EXPECT_EQ(name, "S");
    });
    const auto& properties = add("ValidationFcn", validator, "ErrorHandler",
                                 [&](const std::string&, const Array&) { calls += 10; });

    const auto& stored = std::get<CPPValidator>(properties.validator);
    stored.callable()(nullptr, "S", Array());
    properties.errorHandler("S", Array());
    EXPECT_EQ(calls, 11);
}

}  // namespace
