#include <cppmicroservices/Constants.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/ServiceObjects.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <greeter.hpp>
#include <stdexcept>
#include <tests/support/factory.hpp>
#include <tests/support/running_framework.hpp>
#include <utility>

using namespace cppmicroservices;
using greetings::Counter;
using greetings::Greeter;
using tests::Factory;
using tests::Make;

namespace {

class FixedGreeter final : public Greeter, public Counter
{
public:
    explicit FixedGreeter(std::string text) : text_(std::move(text)) {}
    std::string greet() const override { return text_; }
    int next() override { return ++count_; }

private:
    std::string text_;
    int count_ = 0;
};

struct ServiceRegistry : testing::Test
{
    tests::RunningFramework running;
    BundleContext context = running.context();
};

auto offer(BundleContext context, const std::string& text, const ServiceProperties& properties = {})
{
    return context.RegisterService<Greeter, Counter>(std::make_shared<FixedGreeter>(text), properties);
}

std::vector<std::string> greetingsIn(BundleContext context,
                                     const std::vector<ServiceReference<Greeter>>& references)
{
    std::vector<std::string> texts;
    texts.reserve(references.size());
    for (const auto& reference : references) {
        texts.push_back(context.GetService(reference)->greet());
    }
    return texts;
}

TEST_F(ServiceRegistry, ordersReferencesByRankingThenId)
{
    const auto first = offer(context, "first");
    auto low = offer(context, "low", {{Constants::SERVICE_RANKING, -1}});
    const auto second = offer(context, "second");
    const auto high = offer(context, "high", {{"Service.Ranking", 7}});
    const auto found = [&] { return greetingsIn(context, context.GetServiceReferences<Greeter>()); };

    EXPECT_EQ(found(), (std::vector<std::string>{"high", "first", "second", "low"}));
    EXPECT_EQ(context.GetServiceReference<Greeter>(), high.GetReference());
    const auto references = context.GetServiceReferences("", "(objectclass=greetings::Greeter)");
    EXPECT_TRUE(std::ranges::is_sorted(references, [](const auto& a, const auto& b) { return b < a; }));
    EXPECT_EQ(ServiceReference<Greeter>(references.front()), high.GetReference());
    EXPECT_LT(ServiceReferenceU(), low.GetReference());

    low.SetProperties({{Constants::SERVICE_RANKING, 9}});
    EXPECT_EQ(found(), (std::vector<std::string>{"low", "high", "first", "second"}));
    EXPECT_THROW(low.SetProperties({{Constants::SERVICE_RANKING, 1L}}), std::invalid_argument);
    EXPECT_EQ(found().front(), "low") << "a refused change changes nothing";
}

TEST_F(ServiceRegistry, keepsItsOwnPropertiesThroughChanges)
{
    auto registration = offer(context, "hello", {{"Tone", 1}});
    const auto reference = registration.GetReference();
    const Any id = reference.GetProperty(Constants::SERVICE_ID);
    EXPECT_LT(any_cast<long>(id),
              any_cast<long>(offer(context, "next").GetReference().GetProperty("SERVICE.ID")));
    registration.SetProperties({{"new", 2},
                                {Constants::SERVICE_ID, 7777L},
                                {Constants::OBJECTCLASS, 1},
                                {Constants::SERVICE_SCOPE, 1}});
    EXPECT_THAT(reference.GetPropertyKeys(),
                testing::UnorderedElementsAre("new", Constants::SERVICE_ID, Constants::SERVICE_SCOPE,
                                              Constants::OBJECTCLASS));
    EXPECT_TRUE(reference.GetProperty("tone").Empty());
    EXPECT_TRUE(reference.GetProperty(Constants::SERVICE_ID) == id);
    EXPECT_EQ(any_cast<std::vector<std::string>>(reference.GetProperty(Constants::OBJECTCLASS)).size(), 2U);
    EXPECT_TRUE(reference.GetProperty(Constants::SERVICE_SCOPE) == Constants::SCOPE_SINGLETON);
    EXPECT_THROW(registration.SetProperties({{"a", 1}, {"A", 2}}), std::runtime_error);
    EXPECT_THROW(offer(context, "twice", {{"a", 1}, {"A", 2}}), std::runtime_error);
}

TEST_F(ServiceRegistry, namesInterfacesByTypeAndFindsThemByNameAndFilter)
{
    offer(context, "plain");
    offer(context, "loud", {{"volume", 11}});

    EXPECT_EQ(us_service_interface_iid<Greeter>(), "greetings::Greeter");
    EXPECT_EQ(context.GetServiceReferences("::greetings::Counter").size(), 2U);
    const InterfaceMap odd = {{"::greetings::Odd", std::make_shared<FixedGreeter>("odd")}};
    (void)context.RegisterService(std::make_shared<InterfaceMap>(odd));
    EXPECT_TRUE(context.GetServiceReference("greetings::Odd"));
    EXPECT_EQ(greetingsIn(context, context.GetServiceReferences<Greeter>("(volume>=10)")),
              std::vector<std::string>{"loud"});
    EXPECT_EQ(context.GetServiceReferences("", "(&(objectclass=greetings::Counter)(!(volume=*)))").size(),
              1U);
    EXPECT_FALSE(context.GetServiceReference("greetings::Unknown"));
    const auto greeter = ServiceReference<Greeter>(context.GetServiceReference<Counter>());
    EXPECT_EQ(greeter.GetInterfaceId(), "greetings::Greeter");
    EXPECT_FALSE(ServiceReference<FixedGreeter>(greeter)) << "does not offer that";
    EXPECT_EQ(context.GetService(greeter)->greet(), "plain");
    EXPECT_THROW(context.GetServiceReferences<Greeter>("(volume"), std::invalid_argument);
}

TEST_F(ServiceRegistry, refusesWhatIsEmpty)
{
    EXPECT_THROW((void)context.RegisterService(InterfaceMapConstPtr()), std::invalid_argument);
    EXPECT_THROW((void)context.RegisterService(std::make_shared<InterfaceMap>()), std::invalid_argument);
    EXPECT_THROW(context.RegisterService<Greeter>(std::shared_ptr<FixedGreeter>()), std::invalid_argument);
    EXPECT_THROW(context.RegisterService<Greeter>(std::shared_ptr<ServiceFactory>()), ServiceException);
    EXPECT_THROW(context.GetService(ServiceReferenceU()), std::invalid_argument);
    EXPECT_THROW(context.GetServiceObjects(ServiceReferenceU()), std::invalid_argument);
    EXPECT_THROW(ServiceRegistrationU().GetReference(), std::logic_error);
    EXPECT_THROW(ServiceRegistrationU().Unregister(), std::logic_error);
}

TEST_F(ServiceRegistry, countsTheUsesOfAService)
{
    const auto reference = offer(context, "hello").GetReference();
    const auto isInUse = [&] {
        EXPECT_EQ(reference.GetUsingBundles().size(), context.GetBundle().GetServicesInUse().size());
        return reference.GetUsingBundles() == std::vector<Bundle>{context.GetBundle()};
    };
    auto one = context.GetService(reference);
    auto copy = one;
    EXPECT_EQ(context.GetService(reference), one);
    one.reset();
    EXPECT_TRUE(isInUse()) << "by the copy";
    copy.reset();
    EXPECT_FALSE(isInUse());

    auto map = context.GetService(ServiceReferenceU(reference));
    auto greeter = ExtractInterface<Greeter>(map);
    map.reset();
    EXPECT_FALSE(isInUse()) << "the map is the use";
    const auto objects = context.GetServiceObjects(ServiceReferenceU(reference));
    EXPECT_FALSE(isInUse());
    greeter = ExtractInterface<Greeter>(objects.GetService());
    EXPECT_TRUE(isInUse()) << "each object is a use";
    greeter.reset();
    EXPECT_FALSE(isInUse());
}

TEST_F(ServiceRegistry, keepsObjectsUsableAfterUnregistration)
{
    auto object = std::make_shared<FixedGreeter>("still here");
    const std::weak_ptr<FixedGreeter> watch = object;
    auto registration = context.RegisterService<Greeter>(object, {{"kind", std::string("kept")}});
    object.reset();
    const auto reference = registration.GetReference();
    auto held = context.GetService(reference);
    const auto objects = context.GetServiceObjects(reference);

    registration.Unregister();
    EXPECT_FALSE(reference);
    EXPECT_FALSE(reference.GetBundle());
    EXPECT_TRUE(reference.GetUsingBundles().empty());
    EXPECT_EQ(reference.GetProperty("kind").ToString(), "kept");
    EXPECT_TRUE(context.GetServiceReferences<Greeter>().empty());
    EXPECT_EQ(objects.GetService(), nullptr);
    EXPECT_THROW(context.GetService(reference), std::invalid_argument);
    EXPECT_THROW(registration.Unregister(), std::logic_error);
    EXPECT_THROW(registration.GetReference(), std::logic_error);
    EXPECT_THROW(registration.SetProperties({}), std::logic_error);

    EXPECT_EQ(held->greet(), "still here");
    held.reset();
    EXPECT_TRUE(watch.expired());
}

TEST_F(ServiceRegistry, asksAFactoryOncePerUse)
{
    const auto factory = std::make_shared<Factory>(
        [](const auto&) { return MakeInterfaceMap<Greeter>(std::make_shared<FixedGreeter>("made")); });
    auto registration = context.RegisterService<Greeter>(ToFactory(factory));
    const auto reference = registration.GetReference();
    EXPECT_EQ(reference.GetProperty(Constants::SERVICE_SCOPE).ToString(), Constants::SCOPE_BUNDLE);

    auto one = context.GetService(reference);
    auto two = context.GetService(reference);
    EXPECT_EQ(one, two);
    one.reset();
    EXPECT_EQ(factory->returned, 0);
    two.reset();
    EXPECT_EQ(factory->returned, 1);

    one = context.GetService(reference);
    registration.Unregister();
    EXPECT_EQ(factory->returned, 2) << "while it is in use";
    EXPECT_EQ(one->greet(), "made");
    one.reset();
    EXPECT_EQ(factory->returned, 2);
    EXPECT_EQ(running.errors().size(), 2U);
}

TEST_F(ServiceRegistry, tellsListenersWhatAFactoryDoesWrong)
{
    // The event's type, and that of its ServiceException.
    using Events = std::vector<std::pair<FrameworkEvent::Type, int>>;
    constexpr auto failure = FrameworkEvent::FRAMEWORK_ERROR;
    Events events;
    auto token = context.AddFrameworkListener([&](const FrameworkEvent& event) {
        try {
            std::rethrow_exception(event.GetThrowable());
        } catch (const ServiceException& error) {
            events.emplace_back(event.GetType(), error.GetType());
        } catch (...) {
            events.emplace_back(event.GetType(), -1);
        }
        throw std::domain_error("a listener's own trouble");
    });
    const std::pair<Make, Events> cases[] = {
        {[](const auto&) { return nullptr; }, {{failure, ServiceException::FACTORY_ERROR}}},
        {[](const auto&) -> InterfaceMapPtr { throw ServiceException("no", ServiceException::REMOTE); },
         {{failure, ServiceException::FACTORY_EXCEPTION}}},
        {[&](const auto& own) { return context.GetService(ServiceReferenceU(own.GetReference())); },
         {{failure, ServiceException::FACTORY_RECURSION}, {failure, ServiceException::FACTORY_ERROR}}},
        {[](const auto&) {
             return InterfaceMapPtr(MakeInterfaceMap<Counter>(std::make_shared<FixedGreeter>("")));
         },
         {{FrameworkEvent::FRAMEWORK_WARNING, -1}}},
    };
    const auto getFrom = [&](const Make& make) {
        const auto factory = ToFactory(std::make_shared<Factory>(make));
        return context.GetService(context.RegisterService<Greeter>(factory).GetReference());
    };
    for (const auto& [make, expected] : cases) {
        EXPECT_EQ(getFrom(make), nullptr);
        EXPECT_EQ(std::exchange(events, {}), expected);
    }
    EXPECT_THROW(getFrom([](const auto&) -> InterfaceMapPtr { throw 7; }), int);
    EXPECT_TRUE(events.empty()) << "what is no std::exception passes through";
    context.RemoveListener(std::move(token));
    EXPECT_EQ(getFrom(cases[0].first), nullptr);
    EXPECT_TRUE(events.empty());
}

}  // namespace
