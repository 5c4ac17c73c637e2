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

/// What happened to components. A library that an earlier test has loaded may stay, with its context.
Events takeEvents()
{
    Events events = lifecycle::take();
    std::erase_if(events, [](const std::string& event) { return event.starts_with("context"); });
    return events;
}

class ComponentTest : public testing::Test
{
protected:
    ComponentTest() { lifecycle::take(); }

    ServiceReference<Greeter> find(const std::string& kind)
    {
        const auto found = running_.context().GetServiceReferences<Greeter>("(kind=" + kind + ")");
        return found.empty() ? ServiceReference<Greeter>() : found.front();
    }

    tests::RunningFramework running_;
};

TEST_F(ComponentTest, makesAComponentAtItsFirstUse)
{
    auto bundle = running_.start(GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetRegisteredServices().size(), 3U);
    EXPECT_FALSE(find("disabled"));
    EXPECT_EQ(takeEvents(), Events{}) << "nothing is loaded before the first use";

    const auto reference = find("polite");
    EXPECT_EQ(reference.GetBundle(), bundle);
    EXPECT_EQ(reference.GetProperty(Constants::SERVICE_RANKING), 5);
    EXPECT_EQ(reference.GetProperty("component.name").ToString(), "greetings::PoliteGreeter");
    auto greeter = running_.context().GetService(reference);
    EXPECT_EQ(takeEvents(), (Events{"new", "constructed", "activated"}));
    EXPECT_EQ(greeter->greet(), "Good morning");
    EXPECT_EQ(bundle.GetBundleContext().GetService(reference), greeter) << "one object serves all bundles";
    EXPECT_EQ(running_.context().GetService(ServiceReference<Counter>(reference))->next(), 1);
    greeter.reset();
    EXPECT_EQ(running_.context().GetService(ServiceReference<Counter>(reference))->next(), 2);
    EXPECT_EQ(takeEvents(), Events{}) << "one object serves all uses";

    bundle.Stop();
    EXPECT_EQ(takeEvents(), (Events{"deactivated", "delete", "destroyed"}));
    EXPECT_FALSE(reference);
    EXPECT_FALSE(find("polite"));

    bundle.Start();
    lifecycle::take();
    EXPECT_NE(find("polite"), reference);
    EXPECT_EQ(running_.context().GetService(find("polite"))->greet(), "Good morning");
    EXPECT_EQ(takeEvents(), (Events{"new", "constructed", "activated"}))
        << "a component of its own for each run";
}

TEST_F(ComponentTest, givesNullForAComponentThatCannotBeMade)
{
    running_.start(GREETER_BUNDLE);
    for (const char* kind : {"throwing", "absent"}) {
        EXPECT_EQ(running_.context().GetService(find(kind)), nullptr) << kind;
    }
    EXPECT_EQ(running_.errors().size(), 2U);
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

TEST_F(ComponentTest, saysThatALibraryDoesNotLoad)
{
    const std::string manifest = R"({"bundle.symbolic_name": "hollow", "scr": {"version": 1, "components": [
        {"implementation-class": "a::B", "service": {"interfaces": ["greetings::Greeter"]},
         "properties": {"kind": "hollow"}}]}})";
    const tests::TestFolder folder;
    const std::string head = tests::readFile(PLAIN_LIBRARY).substr(0, 64);
    const auto file = folder.with("hollow.so", head + makeArchive({{"hollow/manifest.json", manifest}}));
    const auto bundle = running_.start(file);
    EXPECT_THAT([&] { running_.context().GetService(find("hollow")); },
                testing::Throws<SharedLibraryException>(
                    testing::AllOf(testing::Property(&SharedLibraryException::what, testing::HasSubstr(file)),
                                   testing::Property(&SharedLibraryException::GetBundle, bundle))));
    EXPECT_EQ(running_.errors().size(), 1U);
}

}  // namespace
