// Services, hooks and sinks of the log that raise, or go away, while a tree is built: what they raise leaves
// createTree, what was built before stays, and the next tree is whole.

#include <settings_core/settings_tree.hpp>
#include <settings_core/validation.hpp>

#include <foundation/cppmicroservices/framework.hpp>
#include <foundation/host.hpp>
#include <foundation/log/diagnostic_logger.hpp>

#include <boost/log/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/smart_ptr/make_shared.hpp>
#include <cppmicroservices/FrameworkFactory.h>
#include <gtest/gtest.h>

#include <iostream>
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

constexpr const char* dateTimeArea = "verdix.datetime";
constexpr const char* codeAnalyzerArea = "verdix.codeanalyzer";
constexpr const char* connectorArea = "verdix.connector";

struct RefusalTest : tests::ServicesTest
{
    RefusalTest()
    {
        loadAnew();
        const OutsideCore core(*loader);
        for (const auto& node : core.nodes) {
            whole.push_back(node.path);
        }
    }
    ~RefusalTest() override
    {
        foundation::host::setLogThreshold(foundation::log::warning);
        std::cout << "points tried: " << points << '\n';
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

    /// A tree ends with this error just before the area.
    template <class Error>
    void expectStopBefore(const std::string& area)
    {
        ++points;
        OutsideCore core("verdix");
        ASSERT_THROW(loader->createTree(core.root), Error) << area;
        ASSERT_LT(core.nodes.size(), whole.size());
        for (std::size_t i = 0; i < core.nodes.size(); ++i) {
            ASSERT_EQ(core.nodes[i].path, whole[i]);
        }
        EXPECT_EQ(whole[core.nodes.size()], area);
    }

    cppmicroservices::Bundle bundle = framework.start(VX_BUNDLE_FILE);
    std::shared_ptr<settings::core::FactorySettingsLoader> loader;
    /// The paths of all nodes.
    std::vector<std::string> whole;
    std::size_t points = 0;
};

TEST_F(RefusalTest, QueriesThatRaise)
{
    context.RegisterService<DateTimeSettingsInterface>(dateTime);
    context.RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);
    for (auto [before, area] :
         {std::pair(&dateTime->before, dateTimeArea), std::pair(&codeAnalyzer->before, codeAnalyzerArea)})
    {
        loadAnew();
        *before = [](const std::string& query) { throw std::runtime_error(query); };
        expectStopBefore<std::runtime_error>(area);
        *before = [](const std::string&) { throw NoStandardException(); };
        expectStopBefore<NoStandardException>(area);
        *before = nullptr;
        expectWhole();
    }

    const auto tree = vx::core::loadTree(*loader);
    for (const auto& [name, query] :
         {std::pair("DefaultDateFormat", "checkFormat"), std::pair("DefaultFormat", "checkFormat"),
          std::pair("DisplayLocale", "checkLocale"),
          std::pair("ValidationWarning", "checkValidationWarning")})
    {
        const auto* setting = tree.find(std::string("verdix.datetime.") + name);
        const auto& value = setting->properties().factoryValue;
        dateTime->before = [](const std::string& asked) { throw std::runtime_error("refused by " + asked); };
        EXPECT_EQ(checkValue(*setting, value).message, std::string("refused by ") + query);
        dateTime->before = [](const std::string&) { throw NoStandardException(); };
        EXPECT_FALSE(checkValue(*setting, value).accepted());
        EXPECT_FALSE(checkValue(*setting, value).message.empty());
        dateTime->before = [](const std::string&) { throw std::bad_alloc(); };
        EXPECT_THROW(static_cast<void>(checkValue(*setting, value)), std::bad_alloc) << "is no refusal";
        dateTime->before = nullptr;
        EXPECT_TRUE(checkValue(*setting, value).accepted());
        points += 3;
    }
}

TEST_F(RefusalTest, FactoriesThatMakeNothing)
{
    const tests::Make makers[] = {
        [](const auto&) { return nullptr; },
        [](const auto&) -> InterfaceMapConstPtr { throw std::runtime_error("no"); }};
    for (const auto& make : makers) {
        loadAnew();
        const auto factory = cppmicroservices::ToFactory(std::make_shared<tests::Factory>(make));
        auto first = context.RegisterService<DateTimeSettingsInterface>(factory);
        auto second = context.RegisterService<CodeAnalyzerSettingsInterface>(factory);
        expectWhole();
        first.Unregister();
        second.Unregister();
        ++points;
    }

    // A factory that has no memory may have some the next time.
    loadAnew();
    auto poor = context.RegisterService<CodeAnalyzerSettingsInterface>(
        cppmicroservices::ToFactory(std::make_shared<tests::Factory>(
            [](const auto&) -> InterfaceMapConstPtr { throw std::bad_alloc(); })));
    expectStopBefore<std::bad_alloc>(codeAnalyzerArea);
    poor.Unregister();
    context.RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);
    expectWhole();
    EXPECT_EQ(codeAnalyzer->queries, 1);
}

TEST_F(RefusalTest, ServicesThatGoAway)
{
    // Between the look-up and the use.
    const auto goWhenFound = [](auto& registration, const std::string& service) {
        foundation::host::setMessageHook([&registration, service](const std::string& message) {
            if (message.find(service) != std::string::npos && message.find("returning") != std::string::npos)
            {
                registration.Unregister();
            }
        });
    };
    auto first = context.RegisterService<DateTimeSettingsInterface>(dateTime);
    goWhenFound(first, "DateTime");
    expectStopBefore<std::invalid_argument>(dateTimeArea);
    expectWhole();
    loadAnew();
    auto second = context.RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);
    goWhenFound(second, "CodeAnalyzer");
    expectStopBefore<std::invalid_argument>(codeAnalyzerArea);
    expectWhole();
    foundation::host::setMessageHook(nullptr);

    // In the middle of their first answer: whoever holds them asks them still.
    loadAnew();
    auto third = context.RegisterService<DateTimeSettingsInterface>(dateTime);
    auto fourth = context.RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);
    dateTime->before = [&](const std::string&) { third.Unregister(); };
    codeAnalyzer->before = [&](const std::string&) { fourth.Unregister(); };
    const auto tree = vx::core::loadTree(*loader);
    const auto* locale = tree.find("verdix.datetime.DisplayLocale");
    dateTime->before = [](const std::string& query) { throw std::runtime_error(query); };
    codeAnalyzer->before = nullptr;
    EXPECT_EQ(tree.nodes().size(), whole.size());
    EXPECT_EQ(checkValue(*locale, locale->properties().factoryValue).message, "checkLocale");
    expectWhole();
    EXPECT_EQ(codeAnalyzer->queries, 2) << "it is kept";
    points += 2;
}

TEST_F(RefusalTest, TheProcessAround)
{
    foundation::host::setMessageHook([](const std::string&) { throw NoStandardException(); });
    EXPECT_THROW(OutsideCore{*loader}, NoStandardException);
    foundation::host::setMessageHook(nullptr);
    expectWhole();

    struct Broken : boost::log::sinks::basic_sink_backend<boost::log::sinks::synchronized_feeding>
    {
        [[noreturn]] void consume(const boost::log::record_view&) { throw NoStandardException(); }
    };
    const auto sink = boost::make_shared<boost::log::sinks::synchronous_sink<Broken>>();
    boost::log::core::get()->add_sink(sink);
    expectWhole();
    foundation::host::setLogThreshold(foundation::log::debug);
    expectStopBefore<NoStandardException>(connectorArea);
    boost::log::core::get()->remove_sink(sink);
    expectWhole();

    // No framework, and one that is over.
    const auto framed = foundation::cppmicroservices::getFramework();
    foundation::host::setFramework(nullptr);
    EXPECT_THROW(OutsideCore{*loader}, std::logic_error);
    auto over =
        std::make_shared<cppmicroservices::Framework>(cppmicroservices::FrameworkFactory().NewFramework());
    over->Start();
    over->Stop();
    foundation::host::setFramework(over);
    EXPECT_THROW(OutsideCore{*loader}, std::runtime_error);
    foundation::host::setFramework(framed);
    expectWhole();
    points += 3;
}

}  // namespace
