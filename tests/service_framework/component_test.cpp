#include <cppmicroservices/Constants.h>
#include <cppmicroservices/SharedLibraryException.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bundle_maker.hpp>
#include <greeter.hpp>
#include <lifecycle.hpp>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>
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

    ServiceReference<Greeter> find(const std::string& kind)
    {
        const auto found = running_.context().GetServiceReferences<Greeter>("(kind=" + kind + ")");
        return found.empty() ? ServiceReference<Greeter>() : found.front();
    }

    /// A file that begins as a library does, but cannot be loaded, with this manifest.
    std::string notLoadable(const std::string& name, const std::string& manifest) const
    {
        return folder_.with(name + ".so", tests::readFile(PLAIN_LIBRARY).substr(0, 64) +
                                              makeArchive({{name + "/manifest.json", manifest}}));
    }

    tests::TestFolder folder_;
    tests::RunningFramework running_;
};

TEST_F(ComponentTest, installsABundleFromItsFile)
{
    auto bundle = running_.install(GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetSymbolicName(), "test_greeter");
    EXPECT_EQ(bundle.GetVersion().ToString(), "1.2.3");
    EXPECT_EQ(bundle.GetLocation(), GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetHeaders().at("BUNDLE.vendor").ToString(), "Tarnwick");
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_INSTALLED);
    EXPECT_FALSE(bundle.GetBundleContext());
    EXPECT_EQ(running_.install(GREETER_BUNDLE), bundle) << "a second time is the same bundle";
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
    auto bundle = running_.start(GREETER_BUNDLE);
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

TEST_F(ComponentTest, makesOneObjectForThreadsThatAskAtOnce)
{
    auto bundle = running_.start(GREETER_BUNDLE);
    const auto reference = find("polite");
    const auto ask = [&] { EXPECT_EQ(running_.context().GetService(reference)->greet(), "Good morning"); };
    {
        const std::array<std::jthread, 4> threads{std::jthread(ask), std::jthread(ask), std::jthread(ask),
                                                  std::jthread(ask)};
    }
    bundle.Stop();
    EXPECT_EQ(std::ranges::count(lifecycle::take(), "constructed"), 1);
}

TEST_F(ComponentTest, endsComponentsWithTheFramework)
{
    running_.start(GREETER_BUNDLE);
    running_.context().GetService(find("polite"));
    running_.stop();
    EXPECT_EQ(std::ranges::count(lifecycle::take(), "destroyed"), 1);
}

TEST_F(ComponentTest, startsABundleWithoutComponentsWithoutLoadingIt)
{
    const auto bundle = running_.start(notLoadable("bare", R"({"bundle.symbolic_name": "bare"})"));
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
    EXPECT_TRUE(bundle.GetRegisteredServices().empty());
}

TEST_F(ComponentTest, saysThatALibraryDoesNotLoad)
{
    const auto file =
        notLoadable("hollow", R"({"bundle.symbolic_name": "hollow", "scr": {"version": 1, "components": [
        {"implementation-class": "a::B", "service": {"interfaces": ["greetings::Greeter"]},
         "properties": {"kind": "hollow"}}]}})");
    const auto bundle = running_.start(file);
    EXPECT_THAT([&] { running_.context().GetService(find("hollow")); },
                testing::Throws<SharedLibraryException>(
                    testing::AllOf(testing::Property(&SharedLibraryException::what, testing::HasSubstr(file)),
                                   testing::Property(&SharedLibraryException::GetBundle, bundle))));
    EXPECT_EQ(running_.errors().size(), 1U);
}

TEST_F(ComponentTest, refusesBadBundleFiles)
{
    const std::string library = tests::readFile(PLAIN_LIBRARY);
    const auto withManifest = [&](const std::string& text) {
        return library + makeArchive({{"bad/manifest.json", text}});
    };
    const std::string contents[] = {
        "",
        "not a library at all",
        library,
        withManifest("[1, 2]"),
        withManifest(R"({"bundle.symbolic_name": "bad", "bundle.version": "one"})"),
        withManifest(R"({"bundle.symbolic_name": "bad"})").substr(0, library.size() + 40),
    };
    for (const std::string& content : contents) {
        const std::string file = folder_.with("bad.so", content);
        EXPECT_THAT([&] { running_.install(file); },
                    testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr(file)));
        EXPECT_TRUE(running_.context().GetBundles(file).empty());
    }
    EXPECT_THROW(running_.install(folder_ / "missing.so"), std::runtime_error);
}

}  // namespace
