#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <tests/support/outside_core.hpp>
#include <typeinfo>
#include <vector>

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

/// Names of the options whose properties are not those of a node with no options set.
std::set<std::string> changedOptions(const settings::core::detail::FactorySettingProperties& properties)
{
    std::set<std::string> changed;
    const auto note = [&](bool isChanged, const char* option) {
        if (isChanged) {
            changed.insert(option);
        }
    };
    note(properties.visible.isWritten(), "Hidden");
    note(properties.readOnly.isWritten(), "ReadOnly");
    note(properties.additionalFile || properties.additionalFileContext, "AdditionalFile");
    note(properties.factoryValue.isAssigned(), "FactoryValue");
    note(properties.validator.index() != 0, "ValidationFcn");
    note(properties.runTimeDefault.index() != 0, "FactoryValueFcn");
    note(!properties.valueValidators.empty(), "ValueValidator");
    note(static_cast<bool>(properties.errorHandler), "ErrorHandler");
    return changed;
}

/// Gives the value to each option of its own node.
template <class Value>
void expectTakers(const FactoryGroup& group, Value value, const std::set<std::string>& takers)
{
    const FactorySetting setting(group.treeContext, group.settingsNode, nullptr, "Setting");
    for (const char* option : {"Hidden", "ReadOnly", "AdditionalFile", "FactoryValue", "ValidationFcn",
                               "FactoryValueFcn", "ValueValidator", "ErrorHandler"})
    {
        SCOPED_TRACE(std::string(typeid(Value).name()) + " given to " + option);
        SettingOptions options = detail::defaultOptions(setting);
        bool isTaken = true;
        try {
            applyOption(options, option, value);
        } catch (const std::logic_error&) {
            isTaken = false;
        }
        EXPECT_EQ(isTaken, takers.contains(option));
        EXPECT_EQ(changedOptions(options.properties),
                  isTaken ? std::set<std::string>{option} : std::set<std::string>{});
    }
}

TEST_F(OptionTest, EachTakesItsOwnTypesAndChangesItselfAlone)
{
    using Handler = void(const std::string&, const Array&);
    using Record = internal::SettingValueValidator;
    const std::set<std::string> functions{"ValidationFcn", "FactoryValueFcn"};
    std::set<std::string> strings = functions;
    strings.insert("FactoryValue");

    expectTakers(group, true, {"Hidden", "ReadOnly", "AdditionalFile", "FactoryValue"});
    expectTakers(group, 1, {"FactoryValue"});
    expectTakers(group, "a.b", strings);
    expectTakers(group, internal::charvec(std::string("a")), {"FactoryValue"});
    expectTakers(group, FunctionDescriptor{"f", "Java", "Class"}, functions);
    expectTakers(group, makeCppValidator([](const auto&, const auto&, const auto&) {}), {"ValidationFcn"});
    expectTakers(group, Record(), {"ValueValidator"});
    expectTakers(group, std::vector{Record()}, {"ValueValidator"});
    expectTakers(group, [](const std::string&, const Array&) {}, {"ErrorHandler"});

    expectTakers(group, static_cast<const char*>(nullptr), {});
    expectTakers(group, static_cast<Handler*>(nullptr), {});
    expectTakers(group, std::string("a.b"), {});
    expectTakers(group, std::make_unique<int>(1), {});
    const auto moveOnly = [owned = std::make_unique<int>(1)](const std::string&, const Array&) {};
    expectTakers(group, std::cref(moveOnly), {"ErrorHandler"});
    EXPECT_THROW(addSetting(group, "S", "ErrorHandler",
                            [owned = std::make_unique<int>(1)](const std::string&, const Array&) {}),
                 std::logic_error);
    EXPECT_THROW(addSetting(group, "S", static_cast<const char*>(nullptr), 1), std::logic_error);
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
    EXPECT_THAT(lengths(add("ValueValidator", one, "ValueValidator", two).valueValidators),
                testing::ElementsAre(1, 2));
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
