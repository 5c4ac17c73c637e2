#include <cppmicroservices/Constants.h>
#include <cppmicroservices/SharedLibraryException.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bundle_maker.hpp>
#include <filesystem>
#include <greeter.hpp>
#include <lifecycle.hpp>
#include <running_framework.hpp>
#include <thread>

using namespace cppmicroservices;
using greetings::Counter;
using greetings::Greeter;

namespace {

using Events = std::vector<std::string>;

class ComponentTest : public testing::Test
{
protected:
    ComponentTest() { lifecycle::take(); }

    Bundle install(const std::string& file) { return running_.context().InstallBundles(file).at(0); }

    ServiceReference<Greeter> find(const std::string& kind)
    {
        const auto found = running_.context().GetServiceReferences<Greeter>("(kind=" + kind + ")");
        return found.empty() ? ServiceReference<Greeter>() : found.front();
    }

    RunningFramework running_;
};

TEST_F(ComponentTest, installsABundleFromItsFile)
{
    auto bundle = install(GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetSymbolicName(), "test_greeter");
    EXPECT_EQ(bundle.GetVersion().ToString(), "1.2.3");
    EXPECT_EQ(bundle.GetLocation(), GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetHeaders().at("BUNDLE.vendor").ToString(), "Tarnwick");
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_INSTALLED);
    EXPECT_FALSE(bundle.GetBundleContext());
    EXPECT_EQ(install(GREETER_BUNDLE), bundle) << "a second time is the same bundle";
    EXPECT_EQ(running_.context().GetBundle(bundle.GetBundleId()), bundle);
    EXPECT_EQ(running_.context().GetBundles(GREETER_BUNDLE), std::vector<Bundle>{bundle});
    EXPECT_LT(Bundle(running_.framework()), bundle);

    bundle.Uninstall();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_UNINSTALLED);
    EXPECT_THROW(bundle.Start(), std::logic_error);
    EXPECT_FALSE(running_.context().GetBundle(bundle.GetBundleId()));
}

TEST_F(ComponentTest, makesAComponentAtItsFirstUse)
{
    auto bundle = install(GREETER_BUNDLE);
    bundle.Start();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
    EXPECT_EQ(bundle.GetRegisteredServices().size(), 3U);
    EXPECT_FALSE(find("disabled"));
    EXPECT_EQ(lifecycle::take(), Events{}) << "nothing is loaded before the first use";

    const auto reference = find("polite");
    EXPECT_EQ(reference.GetBundle(), bundle);
    EXPECT_EQ(reference.GetProperty(Constants::SERVICE_RANKING), 5);
    EXPECT_EQ(reference.GetProperty("component.name").ToString(), "greetings::PoliteGreeter");
    auto greeter = running_.context().GetService(reference);
    EXPECT_EQ(lifecycle::take(), (Events{"context set", "new", "constructed", "activated"}));
    EXPECT_EQ(greeter->greet(), "Good morning");
    EXPECT_EQ(running_.context().GetService(ServiceReference<Counter>(reference))->next(), 1);
    greeter.reset();
    EXPECT_EQ(running_.context().GetService(ServiceReference<Counter>(reference))->next(), 2);
    EXPECT_EQ(lifecycle::take(), Events{}) << "one object serves all uses";

    bundle.Stop();
    auto events = lifecycle::take();
    events.resize(3);
    EXPECT_EQ(events, (Events{"deactivated", "delete", "destroyed"}));
    EXPECT_FALSE(reference);
    EXPECT_FALSE(find("polite"));
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_RESOLVED);
}

TEST_F(ComponentTest, keepsAComponentUsableWhileItIsHeld)
{
    auto bundle = install(GREETER_BUNDLE);
    bundle.Start();
    auto greeter = running_.context().GetService(find("polite"));
    bundle.Stop();
    EXPECT_EQ(greeter->greet(), "Good morning");
    greeter.reset();
    const auto events = lifecycle::take();
    for (const std::string event : {"constructed", "activated", "deactivated", "destroyed", "delete"}) {
        EXPECT_EQ(std::ranges::count(events, event), 1) << event;
    }
}

TEST_F(ComponentTest, reportsAComponentThatCannotBeMade)
{
    auto bundle = install(GREETER_BUNDLE);
    bundle.Start();
    EXPECT_EQ(running_.context().GetService(find("throwing")), nullptr);
    EXPECT_EQ(running_.errors().size(), 1U);
    EXPECT_EQ(running_.context().GetService(find("absent")), nullptr);
    EXPECT_EQ(running_.errors().size(), 2U);
}

TEST_F(ComponentTest, makesOneObjectForThreadsThatAskAtOnce)
{
    auto bundle = install(GREETER_BUNDLE);
    bundle.Start();
    const auto reference = find("polite");
    const auto ask = [&] { EXPECT_EQ(running_.context().GetService(reference)->greet(), "Good morning"); };
    {
        const std::array<std::jthread, 4> threads{std::jthread(ask), std::jthread(ask), std::jthread(ask),
                                                  std::jthread(ask)};
    }
    bundle.Stop();
    EXPECT_EQ(std::ranges::count(lifecycle::take(), "constructed"), 1);
}

TEST_F(ComponentTest, startsAndStopsAThousandTimes)
{
    auto bundle = install(GREETER_BUNDLE);
    constexpr int cycles = 1000;
    for (int i = 0; i < cycles; ++i) {
        bundle.Start();
        ASSERT_EQ(running_.context().GetService(find("polite"))->greet(), "Good morning");
        bundle.Stop();
    }
    const auto events = lifecycle::take();
    for (const std::string event : {"constructed", "activated", "deactivated", "destroyed", "new", "delete"})
    {
        EXPECT_EQ(std::ranges::count(events, event), cycles) << event;
    }
}

TEST_F(ComponentTest, endsComponentsWithTheFramework)
{
    install(GREETER_BUNDLE).Start();
    running_.context().GetService(find("polite"));
    running_.stop();
    EXPECT_EQ(std::ranges::count(lifecycle::take(), "destroyed"), 1);
}

TEST_F(ComponentTest, startsABundleWithoutComponentsWithoutLoadingIt)
{
    const auto notLoadable = readTestFile(PLAIN_LIBRARY).substr(0, 64) +
                             makeArchive({{"bare/manifest.json", R"({"bundle.symbolic_name": "bare"})"}});
    auto bundle = install(writeTestFile("bare.so", notLoadable));
    bundle.Start();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
    EXPECT_TRUE(bundle.GetRegisteredServices().empty());
}

TEST_F(ComponentTest, saysThatALibraryDoesNotLoad)
{
    const auto manifest = R"({"bundle.symbolic_name": "hollow", "scr": {"version": 1, "components": [
        {"implementation-class": "a::B", "service": {"interfaces": ["greetings::Greeter"]},
         "properties": {"kind": "hollow"}}]}})";
    const auto file = writeTestFile("hollow.so", readTestFile(PLAIN_LIBRARY).substr(0, 64) +
                                                     makeArchive({{"hollow/manifest.json", manifest}}));
    auto bundle = install(file);
    bundle.Start();
    try {
        running_.context().GetService(find("hollow"));
        ADD_FAILURE() << "a library of 64 bytes was loaded";
    } catch (const SharedLibraryException& error) {
        EXPECT_NE(std::string(error.what()).find(file), std::string::npos) << error.what();
        EXPECT_EQ(error.GetBundle(), bundle);
    }
    EXPECT_EQ(running_.errors().size(), 1U);
}

TEST_F(ComponentTest, refusesBadBundleFiles)
{
    const std::string library = readTestFile(PLAIN_LIBRARY);
    const auto withManifest = [&](const std::string& text) {
        return library + makeArchive({{"bad/manifest.json", text}});
    };
    const std::vector<std::pair<std::string, std::string>> files = {
        {"missing.so", ""},
        {"empty.so", ""},
        {"text.so", "not a library at all"},
        {"plain.so", library},
        {"broken_json.so", withManifest("{\n  \"bundle.symbolic_name\": oops\n}")},
        {"no_name.so", withManifest(R"({"bundle.version": "1.0.0"})")},
        {"no_object.so", withManifest("[1, 2]")},
        {"bad_version.so", withManifest(R"({"bundle.symbolic_name": "bad", "bundle.version": "one"})")},
        {"cut.so", withManifest(R"({"bundle.symbolic_name": "bad"})").substr(0, library.size() + 40)},
    };
    for (const auto& [name, content] : files) {
        const std::string file = writeTestFile(name, content);
        if (name == "missing.so") {
            std::filesystem::remove(file);
        }
        try {
            install(file);
            ADD_FAILURE() << name << " was installed";
        } catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find(file), std::string::npos) << error.what();
        }
        EXPECT_TRUE(running_.context().GetBundles(file).empty()) << name;
    }
}

}  // namespace
