// What only the embedded framework does and says.

#include <cppmicroservices/FrameworkFactory.h>
#include <cppmicroservices/LDAPFilter.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bundle_maker.hpp>
#include <greeter.hpp>
#include <lifecycle.hpp>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>

using namespace cppmicroservices;
using greetings::Greeter;
using tests::RunningFramework;

namespace {

TEST(Embedded, stopsWhenItIsDropped)
{
    using Events = std::vector<std::string>;
    std::shared_ptr<Greeter> greeter;
    {
        Framework framework = FrameworkFactory().NewFramework();
        framework.Start();
        auto context = framework.GetBundleContext();
        context.InstallBundles(GREETER_BUNDLE).at(0).Start();
        greeter = context.GetService(context.GetServiceReference<Greeter>());
    }
    EXPECT_EQ(lifecycle::take(), (Events{"context set", "new", "constructed", "activated", "deactivated",
                                         "delete", "context cleared"}));
    EXPECT_EQ(greeter->greet(), "Good morning") << "a held object outlives its framework";
    greeter.reset();
    EXPECT_EQ(lifecycle::take(), Events{"destroyed"});
}

TEST(Embedded, saysWhyAComponentCannotBeMade)
{
    RunningFramework running;
    auto context = running.context();
    auto bundle = running.start(GREETER_BUNDLE);
    context.GetService(context.GetServiceReferences<Greeter>("(kind=polite)").at(0));
    context.GetService(context.GetServiceReferences<Greeter>("(kind=throwing)").at(0));
    context.GetService(context.GetServiceReferences<Greeter>("(kind=absent)").at(0));
    const std::vector<std::string> expected = {
        "The component greetings::ThrowingGreeter cannot be activated: no greeting today",
        "The library " GREETER_BUNDLE " exports no function DeleteInstance_greetings_AbsentGreeter",
        "The component greetings::Polite threw while it was deactivated: no rest"};
    bundle.Stop();
    EXPECT_EQ(running.errors(), expected);
    running.stop();
    EXPECT_THROW(bundle.Start(), std::runtime_error);
    running.framework().Start();
    EXPECT_THROW(bundle.Start(), std::runtime_error) << "it is not installed in this run";
}

TEST(Embedded, boundsTheNestingOfFilters)
{
    std::string filter = "(a=1)";
    for (int depth = 0; depth < 100; ++depth) {
        filter = "(!" + filter + ")";
    }
    EXPECT_TRUE(LDAPFilter(filter));
    EXPECT_THROW(LDAPFilter("(!" + filter + ")"), std::invalid_argument);
}

TEST(Embedded, refusesWhatThisFrameworkDoesNotDo)
{
    const RunningFramework running;
    const tests::TestFolder folder;
    const std::string library = tests::readFile(PLAIN_LIBRARY);
    const auto component = [](const std::string& members) {
        return R"("scr": {"version": 1, "components": [{"implementation-class": "a::B")" + members + "}]}";
    };
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"("bundle.activator": true)", "has a bundle activator"},
        {R"("scr": 1)", "\"scr\" is of the wrong JSON type"},
        {R"("scr": {"version": 2, "components": []})", "\"version\" is not 1"},
        {R"("scr": {"version": 1, "components": [{}]})", "component 1: \"implementation-class\" is missing"},
        {component(R"(, "service": {"interfaces": []})"), "\"interfaces\" is empty"},
        {component(R"(, "service": {"interfaces": ["a::I"], "scope": "prototype"})"),
         "\"scope\" is not singleton"},
        {component(R"(, "name": "")"), "its name is empty"},
        {component(R"(, "references": [])"), "\"references\" is not supported"},
        {component(R"(, "immediate": false)"), "\"immediate\" is false"},
        {component(R"(, "configuration-policy": "require", "configuration-pid": ["$"])"),
         "requires a configuration"},
        {component(R"(, "service": {"interfaces": ["a::I"]}, "properties": {"service.ranking": "5"})"),
         ", component a::B: The property service.ranking is 5 of type string; make it an int"},
    };
    int number = 0;
    for (const auto& [members, reason] : cases) {
        const std::string name = "refused" + std::to_string(++number);
        const std::string manifest = R"({"bundle.symbolic_name": ")" + name + "\", " + members + "}";
        auto bundle = running.install(
            folder.with(name + ".so", library + makeArchive({{name + "/manifest.json", manifest}})));
        EXPECT_THAT([&] { bundle.Start(); },
                    testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr(reason)));
        EXPECT_EQ(bundle.GetState() & (Bundle::STATE_INSTALLED | Bundle::STATE_RESOLVED), bundle.GetState());
        EXPECT_TRUE(bundle.GetRegisteredServices().empty());
    }
}

}  // namespace
