#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bundle_maker.hpp>
#include <dlfcn.h>
#include <greeter.hpp>
#include <lifecycle.hpp>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>

using namespace cppmicroservices;
using greetings::Greeter;
using tests::RunningFramework;

namespace {

using Events = std::vector<std::string>;

bool isLoaded(const char* library)
{
    void* handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if (handle) {
        dlclose(handle);
    }
    return handle != nullptr;
}

TEST(Unload, followsTheLastUserOfAStoppedBundle)
{
    const RunningFramework running;
    auto context = running.context();
    auto bundle = running.start(GREETER_BUNDLE);
    EXPECT_FALSE(isLoaded(GREETER_BUNDLE));
    auto greeter = context.GetService(context.GetServiceReference<Greeter>());
    lifecycle::take();

    bundle.Stop();
    EXPECT_TRUE(isLoaded(GREETER_BUNDLE));
    EXPECT_EQ(greeter->greet(), "Good morning") << "a held object outlives its bundle's stop";
    EXPECT_EQ(lifecycle::take(), Events{});
    bundle.Start();
    auto another = context.GetService(context.GetServiceReference<Greeter>());
    EXPECT_EQ(lifecycle::take(), (Events{"context set", "new", "constructed", "activated"}));
    greeter.reset();
    EXPECT_EQ(lifecycle::take(), (Events{"deactivated", "delete", "destroyed"}));
    bundle.Stop();
    another.reset();
    EXPECT_EQ(lifecycle::take(), (Events{"deactivated", "delete", "destroyed", "context cleared"}));
    EXPECT_FALSE(isLoaded(GREETER_BUNDLE));
}

TEST(Unload, followsAFrameworkThatIsDroppedWithoutAStop)
{
    lifecycle::take();
    std::shared_ptr<Greeter> greeter;
    {
        Framework framework = FrameworkFactory().NewFramework();
        framework.Start();
        auto context = framework.GetBundleContext();
        context.InstallBundles(GREETER_BUNDLE).at(0).Start();
        greeter = context.GetService(context.GetServiceReference<Greeter>());
    }
    EXPECT_EQ(greeter->greet(), "Good morning") << "a held object outlives its framework";
    EXPECT_EQ(lifecycle::take(), (Events{"context set", "new", "constructed", "activated"}));
    greeter.reset();
    EXPECT_EQ(lifecycle::take(), (Events{"deactivated", "delete", "destroyed", "context cleared"}));
    EXPECT_FALSE(isLoaded(GREETER_BUNDLE));
}

TEST(Unload, saysWhyAComponentCannotBeMade)
{
    const RunningFramework running;
    auto context = running.context();
    running.start(GREETER_BUNDLE);
    context.GetService(context.GetServiceReferences<Greeter>("(kind=throwing)").at(0));
    context.GetService(context.GetServiceReferences<Greeter>("(kind=absent)").at(0));
    const Events expected = {
        "The component greetings::ThrowingGreeter cannot be activated: no greeting today",
        "The library " GREETER_BUNDLE " exports no function DeleteInstance_greetings_AbsentGreeter"};
    EXPECT_EQ(running.errors(), expected);
    EXPECT_FALSE(isLoaded(GREETER_BUNDLE));
}

TEST(Manifest, refusesWhatThisFrameworkDoesNotDo)
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
        {component(R"(, "service": {"interfaces": ["a::I"]}, "references": [])"), "\"references\" asks for"},
        {component(""), "exports no function DeleteInstance_a_B"},
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
