#include <cppmicroservices/Constants.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>
#include <cppmicroservices/ServiceObjects.h>
#include <cppmicroservices/SharedLibraryException.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bundle_maker.hpp>
#include <chrono>
#include <dlfcn.h>
#include <filesystem>
#include <framework_bundles.hpp>
#include <functional>
#include <future>
#include <greeter.hpp>
#include <lifecycle.hpp>
#include <stdexcept>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>

using namespace cppmicroservices;
using greetings::Counter;
using greetings::Greeter;

namespace {

struct OneGreeter final : Greeter
{
    std::string greet() const override { return "hello"; }
};

using Events = std::vector<std::string>;

/// What happened to components. Who gives the library its context, and how often, is the framework's affair.
Events takeEvents()
{
    Events events = lifecycle::take();
    std::erase_if(events, [](const std::string& event) { return event.starts_with("context"); });
    return events;
}

struct BundleTest : testing::Test
{
    BundleTest() { lifecycle::take(); }
    ServiceReference<Greeter> find(const std::string& kind)
    {
        const auto found = context.GetServiceReferences<Greeter>("(kind=" + kind + ")");
        return found.empty() ? ServiceReference<Greeter>() : found.front();
    }

    /// The code of the greeter bundle with another manifest.
    std::string greeterWith(const std::string& members) const
    {
        const std::string original = tests::readFile(GREETER_BUNDLE);
        return folder.with("greeter.so", original.substr(0, original.rfind("PK\x03\x04")) +
                                             makeArchive({{"test_greeter/manifest.json",
                                                           R"({"bundle.symbolic_name": "test_greeter", )" +
                                                               members + "}"}}));
    }

    const tests::TestFolder folder;
    tests::RunningFramework running;
    BundleContext context = running.context();
};

TEST_F(BundleTest, goesThroughItsStates)
{
    auto bundle = running.install(GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetHeaders().at("BUNDLE.vendor").ToString(), "Tarnwick");
    EXPECT_EQ(running.install(GREETER_BUNDLE), bundle) << "a second time is the same bundle";
    EXPECT_EQ(context.GetBundles(GREETER_BUNDLE), std::vector<Bundle>{bundle});
    EXPECT_LT(Bundle(running.framework()), bundle);
    EXPECT_LT(bundle, Bundle()) << "an empty handle is the last";
    bundle.Stop();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_INSTALLED);
    bundle.Start();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
    const BundleContext first = bundle.GetBundleContext();
    bundle.Stop();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_RESOLVED);
    bundle.Start();
    EXPECT_FALSE(first == bundle.GetBundleContext()) << "each run has a context of its own";
    EXPECT_TRUE(first == BundleContext());
    EXPECT_LT(bundle.GetBundleContext(), first);

    bundle.Uninstall();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_UNINSTALLED);
    EXPECT_FALSE(context.GetBundle(bundle.GetBundleId()));
    EXPECT_THROW(bundle.Start(), std::logic_error);
    EXPECT_THROW(bundle.Stop(), std::logic_error);
    EXPECT_THROW(bundle.GetRegisteredServices(), std::logic_error);
    EXPECT_THROW(Bundle().Start(), std::invalid_argument);
}

TEST_F(BundleTest, takesItsRunAlongWhenItStops)
{
    auto bundle = running.start(GREETER_BUNDLE);
    auto own = bundle.GetBundleContext();
    auto offered = own.RegisterService<Greeter>(std::make_shared<OneGreeter>());
    const auto held = context.GetService(offered.GetReference());
    const auto hosted = context.RegisterService<Greeter>(std::make_shared<OneGreeter>()).GetReference();
    const auto used = own.GetService(hosted);
    const auto usedAgain = own.GetService(hosted);
    int heard = 0;
    own.AddFrameworkListener([&](const FrameworkEvent&) { ++heard; });
    context.GetService(find("throwing"));
    const auto objects = own.GetServiceObjects(hosted);
    EXPECT_EQ(offered.GetReference().GetBundle(), bundle);
    EXPECT_EQ(hosted.GetUsingBundles(), std::vector<Bundle>{bundle});

    bundle.Stop();
    EXPECT_THROW(offered.Unregister(), std::logic_error);
    EXPECT_TRUE(hosted.GetUsingBundles().empty());
    bundle.Start();
    context.GetService(find("throwing"));
    EXPECT_EQ(heard, 1) << "its listeners go with the run";
    EXPECT_EQ(running.errors().size(), 2U) << "others stay";
    bundle.Stop();
    EXPECT_EQ(held->greet() + used->greet(), "hellohello");
    const std::function<void(BundleContext)> operations[] = {
        [](BundleContext over) { (void)over.GetBundles(); },
        [](BundleContext over) { (void)over.InstallBundles(GREETER_BUNDLE); },
        [](BundleContext over) { (void)over.GetServiceReferences<Greeter>(); },
        [](BundleContext over) { over.AddFrameworkListener([](const FrameworkEvent&) {}); },
        [](BundleContext over) { over.RegisterService<Greeter>(std::make_shared<OneGreeter>()); },
        [&](BundleContext over) { (void)over.GetService(hosted); },
    };
    for (const auto& operation : operations) {
        EXPECT_THROW(operation(own), IllegalStateException) << &operation - operations;
        EXPECT_THROW(operation(BundleContext()), IllegalStateException) << &operation - operations;
    }
    EXPECT_THROW(objects.GetService(), IllegalStateException);
    EXPECT_THROW(own.GetService(ServiceReferenceU()), std::invalid_argument) << "the reference counts first";
}

TEST_F(BundleTest, makesAComponentAtItsFirstUse)
{
    auto bundle = running.start(GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetRegisteredServices().size(), 3U);
    EXPECT_FALSE(find("disabled"));
    EXPECT_FALSE(find("twin")) << "of a name that another component has";
    EXPECT_EQ(takeEvents(), Events{}) << "nothing is loaded before the first use";

    const auto reference = find("polite");
    EXPECT_EQ(reference.GetBundle(), bundle);
    EXPECT_EQ(reference.GetProperty("component.name").ToString(), "greetings::Polite");
    EXPECT_EQ(reference.GetProperty(Constants::SERVICE_SCOPE).ToString(), Constants::SCOPE_SINGLETON);
    auto greeter = context.GetService(reference);
    EXPECT_EQ(takeEvents(), (Events{"new", "constructed", "activated"}));
    EXPECT_EQ(greeter->greet(), "Good morning");
    EXPECT_EQ(bundle.GetBundleContext().GetService(reference), greeter) << "one object serves all bundles";
    EXPECT_EQ(context.GetService(ServiceReference<Counter>(reference))->next(), 1);
    greeter.reset();
    EXPECT_EQ(context.GetService(ServiceReference<Counter>(reference))->next(), 2);
    EXPECT_EQ(takeEvents(), Events{}) << "one object serves all uses";

    greeter = context.GetService(reference);
    bundle.Stop();
    EXPECT_EQ(takeEvents(), (Events{"deactivated", "delete"}));
    EXPECT_FALSE(reference);
    EXPECT_FALSE(find("polite"));
    EXPECT_EQ(greeter->greet(), "Good morning") << "a held object outlives its bundle's stop";

    bundle.Start();
    EXPECT_NE(find("polite"), reference);
    EXPECT_EQ(context.GetService(find("polite"))->greet(), "Good morning");
    EXPECT_EQ(takeEvents(), (Events{"new", "constructed", "activated"}))
        << "a component of its own for each run";
    greeter.reset();
    EXPECT_EQ(takeEvents(), Events{"destroyed"});
}

TEST_F(BundleTest, activatesImmediateComponentsOnceItIsActive)
{
    const auto immediate = [](const std::string& name) {
        return R"({"implementation-class": ")" + name + R"(", "immediate": true, "unknown": 1,
            "properties": {"greeting": "Good day"}, "service": {"interfaces": ["greetings::Greeter"]}})";
    };
    auto bundle = running.start(greeterWith(
        R"("scr": {"version": 1, "components": [)" + immediate("greetings::ThrowingGreeter") + ", " +
        immediate("greetings::AbsentGreeter") + ", " + immediate("greetings::Polite") + "]}"));
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE) << "whatever one of them throws";
    EXPECT_EQ(takeEvents(), (Events{"new", "constructed", "activated"}));
    EXPECT_EQ(bundle.GetRegisteredServices().size(), 3U);
    running.stop();
    EXPECT_EQ(takeEvents(), (Events{"deactivated", "delete", "destroyed"}));
}

TEST_F(BundleTest, keepsWhatItWasInstalledFrom)
{
    const std::string file = greeterWith(R"("bundle.version": "1.0.0")");
    auto bundle = running.install(file);
    std::filesystem::remove(file);
    EXPECT_EQ(running.install(file), bundle) << "the file is gone";
    EXPECT_EQ(greeterWith(R"("bundle.version": "2.0.0")"), file);
    EXPECT_EQ(running.install(file), bundle) << "another file took its place";
    EXPECT_EQ(bundle.GetVersion().ToString(), "1.0.0");
    const std::string newer = tests::readFile(file);
    auto beside = running.install(folder.with("newer.so", newer));
    EXPECT_EQ(beside.GetVersion().ToString(), "2.0.0");
    EXPECT_THROW(running.install(folder.with("copy.so", newer)), std::runtime_error) << "the same version";
    bundle.Uninstall();
    beside.Uninstall();
    EXPECT_EQ(running.install(file).GetVersion().ToString(), "2.0.0");
}

TEST_F(BundleTest, readsTheValuesOfAManifest)
{
    const AnyMap headers = running
                               .install(greeterWith(R"("none": null, "beyond": 2147483648, "real": 1e3,
        "largest": 2147483647, "list": [1, null, -3000000000, true, "x"], "object": {"key": "%word"})"))
                               .GetHeaders();
    EXPECT_EQ(headers.count("none") + headers.count("beyond"), 0U);
    EXPECT_EQ(headers.at("REAL"), 1000.0);
    EXPECT_EQ(headers.at("largest"), 2147483647);
    EXPECT_EQ(headers.at("list"), (std::vector<Any>{1, true, std::string("x")}));
    EXPECT_EQ(any_cast<AnyMap>(headers.at("object")).at("key"), std::string("word"));
}

TEST_F(BundleTest, saysThatALibraryDoesNotLoad)
{
    const std::string manifest = R"({"bundle.symbolic_name": "hollow", "scr": {"version": 1, "components": [
        {"implementation-class": "a::B", "service": {"interfaces": ["greetings::Greeter"]},
         "properties": {"kind": "hollow"}}]}})";
    const std::string head = tests::readFile(PLAIN_LIBRARY).substr(0, 64);
    const auto file = folder.with("hollow.so", head + makeArchive({{"hollow/manifest.json", manifest}}));
    const auto bundle = running.start(file);
    EXPECT_THAT([&] { context.GetService(find("hollow")); },
                testing::Throws<SharedLibraryException>(
                    testing::AllOf(testing::Property(&SharedLibraryException::what, testing::HasSubstr(file)),
                                   testing::Property(&SharedLibraryException::GetBundle, bundle))));
    EXPECT_EQ(running.errors().size(), 1U);
}

TEST(FrameworkTest, isABundleThatStartsAndStopsAgain)
{
    using Event = FrameworkEvent;
    Framework framework = FrameworkFactory().NewFramework(
        FrameworkConfiguration{{"Own.Key", 5},
                               {Constants::LIBRARY_LOAD_OPTIONS, std::string("now")},
                               {Constants::FRAMEWORK_VENDOR, std::string("somebody")}});
    const auto waited = [&](int milliseconds) {
        return framework.WaitForStop(std::chrono::milliseconds(milliseconds)).GetType();
    };
    EXPECT_EQ(waited(1), Event::FRAMEWORK_ERROR) << "it never started";
    framework.Init();
    auto context = framework.GetBundleContext();
    std::vector<Event::Type> events;
    context.AddFrameworkListener([&](const Event& event) { events.push_back(event.GetType()); });
    framework.Start();
    framework.Start();
    EXPECT_EQ(events, std::vector{Event::FRAMEWORK_STARTED});
    EXPECT_EQ(waited(1), Event::FRAMEWORK_WAIT_TIMEDOUT);

    EXPECT_TRUE(framework.GetHeaders().at("bundle.symbolic_name") == Constants::SYSTEM_BUNDLE_SYMBOLICNAME);
    EXPECT_EQ(context.GetProperty(Constants::FRAMEWORK_VENDOR).ToString(), vx::frameworkName);
    EXPECT_EQ(context.GetProperty(Constants::FRAMEWORK_VERSION).ToString(), vx::frameworkVersion);
    EXPECT_TRUE(context.GetProperty("Own.Key") == 5);
    EXPECT_TRUE(context.GetProperty(Constants::LIBRARY_LOAD_OPTIONS) == (RTLD_LAZY | RTLD_LOCAL));
    EXPECT_EQ(context.GetProperty(Constants::FRAMEWORK_WORKING_DIR).ToString(),
              std::filesystem::current_path());
    EXPECT_EQ(context.GetProperty(Constants::FRAMEWORK_STORAGE).ToString(), "fwdir");
    const std::string uuid = context.GetProperty(Constants::FRAMEWORK_UUID).ToString();
    EXPECT_THROW(framework.Uninstall(), std::runtime_error);
    auto bundle = context.InstallBundles(GREETER_BUNDLE).at(0);
    bundle.Start();
    EXPECT_THROW(Framework{bundle}, std::logic_error);

    auto stopped = std::async(std::launch::async, waited, 0);
    EXPECT_EQ(stopped.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    framework.Stop();
    EXPECT_EQ(stopped.get(), Event::FRAMEWORK_STOPPED) << "a waiting thread is woken";
    EXPECT_FALSE(framework.GetBundleContext());
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_INSTALLED);
    framework.Start();
    EXPECT_NE(framework.GetBundleContext().GetProperty(Constants::FRAMEWORK_UUID).ToString(), uuid);
}

}  // namespace
