// Services and hooks that throw, or disappear, while a tree is built: what they throw leaves
// createTree, what was built before stays, and the next tree is whole.

#include <settings_core/constraints/validation.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/cppmicroservices/framework.hpp>
#include <foundation/host.hpp>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <tests/faults/services.hpp>
#include <tests/support/factory.hpp>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/outside_core.hpp>
#include <vector>

namespace {

using cppmicroservices::InterfaceMapConstPtr;
using tests::CodeAnalyzerSettingsInterface;
using tests::DateTimeSettingsInterface;
using tests::OutsideCore;

struct NoStandardException
{};

struct RefusalTest : tests::ServicesTest
{
    RefusalTest()
    {
        auto offeredDateTime = context.RegisterService<DateTimeSettingsInterface>(dateTime);
        auto offeredCodeAnalyzer = context.RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);
        loadAnew();
        const OutsideCore core(*loader);
        for (const auto& node : core.nodes) {
            whole.push_back(node.path);
            pathOf[vx::core::formatValue(node.properties.factoryValue)] = node.path;
        }
        offeredDateTime.Unregister();
        offeredCodeAnalyzer.Unregister();
        codeAnalyzer->queries = 0;
        loadAnew();
    }

    /// The library's first uses are all before it again.
    void loadAnew()
    {
        bundle.Uninstall();
        const tests::BundleCopy copy(VX_BUNDLE_FILE);
        bundle = framework.start(copy.file());
        loader = tests::factoryLoader(framework.context());
    }

    void expectWhole() const { ASSERT_EQ(OutsideCore(*loader).nodes.size(), whole.size()); }

    /// A tree ends with this error just before the group of the setting.
    template <class Error>
    void expectStopBefore(const std::string& setting)
    {
        OutsideCore core("verdix");
        ASSERT_THROW(loader->createTree(core.root), Error) << setting;
        EXPECT_EQ(whole.at(core.nodes.size()), setting.substr(0, setting.rfind('.')));
    }

    cppmicroservices::Bundle bundle = framework.start(VX_BUNDLE_FILE);
    std::shared_ptr<settings::core::FactorySettingsLoader> loader;
    /// The paths of all nodes.
    std::vector<std::string> whole;
    /// The settings with these factory values; some are the services'.
    std::map<std::string, std::string> pathOf;
};

TEST_F(RefusalTest, QueriesThatRaise)
{
    context.RegisterService<DateTimeSettingsInterface>(dateTime);
    context.RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);
    for (auto [before, setting] : {std::pair(&dateTime->before, pathOf["de_CH"]),
                                   std::pair(&codeAnalyzer->before, pathOf["team.json"])})
    {
        loadAnew();
        *before = [](const std::string& query) { throw std::runtime_error(query); };
        expectStopBefore<std::runtime_error>(setting);
        *before = [](const std::string&) { throw NoStandardException(); };
        expectStopBefore<NoStandardException>(setting);
        *before = nullptr;
        expectWhole();
    }

    const auto tree = vx::core::loadTree(*loader);
    const auto& setting = nodeAt(tree, {}, pathOf["de_CH"]);
    const auto& value = setting.properties().factoryValue;
    dateTime->before = [](const std::string&) { throw std::bad_alloc(); };
    EXPECT_THROW(static_cast<void>(checkValue(setting, value)), std::bad_alloc) << "is no refusal";
    dateTime->before = nullptr;
    EXPECT_FALSE(checkValue(setting, value));
}

// It may have some the next time.
TEST_F(RefusalTest, AFactoryWithoutMemory)
{
    loadAnew();
    auto poor = context.RegisterService<CodeAnalyzerSettingsInterface>(
        cppmicroservices::ToFactory(std::make_shared<tests::Factory>(
            [](const auto&) -> InterfaceMapConstPtr { throw std::bad_alloc(); })));
    expectStopBefore<std::bad_alloc>(pathOf["team.json"]);
    poor.Unregister();
    context.RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);
    expectWhole();
    EXPECT_EQ(codeAnalyzer->queries, 1);
}

TEST_F(RefusalTest, ServicesThatGoBetweenLookUpAndUse)
{
    auto registration = context.RegisterService<DateTimeSettingsInterface>(dateTime);
    foundation::host::setMessageHook([&registration](const std::string& message) {
        if (message.find("DateTime") != std::string::npos && message.find("returning") != std::string::npos) {
            registration.Unregister();
        }
    });
    expectStopBefore<std::invalid_argument>(pathOf["de_CH"]);
    expectWhole();
    foundation::host::setMessageHook(nullptr);
}

TEST_F(RefusalTest, TheProcessAround)
{
    const auto framed = foundation::cppmicroservices::getFramework();
    foundation::host::setFramework(nullptr);
    EXPECT_THROW(OutsideCore{*loader}, std::logic_error);
    foundation::host::setFramework(framed);
    expectWhole();
}

}  // namespace
