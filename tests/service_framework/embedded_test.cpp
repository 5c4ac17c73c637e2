// What only the embedded framework does and says.

#include <cppmicroservices/FrameworkFactory.h>
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
    const RunningFramework running;
    auto context = running.context();
    running.start(GREETER_BUNDLE);
    context.GetService(context.GetServiceReferences<Greeter>("(kind=throwing)").at(0));
    context.GetService(context.GetServiceReferences<Greeter>("(kind=absent)").at(0));
    const std::vector<std::string> expected = {
        "The component greetings::ThrowingGreeter cannot be activated: no greeting today",
        "The library " GREETER_BUNDLE " exports no function DeleteInstance_greetings_AbsentGreeter"};
    EXPECT_EQ(running.errors(), expected);
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
        {R"("scr": {"version": 1})", "\"components\" is missing"},
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
