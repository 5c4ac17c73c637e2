#include <cppmicroservices/Constants.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/LDAPFilter.h>
#include <cppmicroservices/ServiceFactory.h>
#include <cppmicroservices/ServiceObjects.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <framework_bundles.hpp>
#include <greeter.hpp>
#include <set>
#include <tests/support/running_framework.hpp>
#include <thread>

using namespace cppmicroservices;
using greetings::Counter;
using greetings::Greeter;

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

/// An interface that hides its identifier.
struct Nameless
{};

constexpr const char* noIdentifier = "";

}  // namespace

CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE(Nameless, noIdentifier)

namespace {

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
    const auto high = offer(context, "high", {{Constants::SERVICE_RANKING, 7}});
    const auto found = [&] { return greetingsIn(context, context.GetServiceReferences<Greeter>()); };

    EXPECT_EQ(found(), (std::vector<std::string>{"high", "first", "second", "low"}));
    EXPECT_EQ(context.GetServiceReference<Greeter>(), high.GetReference());
    EXPECT_LT(low.GetReference(), second.GetReference());
    EXPECT_LT(second.GetReference(), first.GetReference());
    EXPECT_FALSE(first.GetReference() < first.GetReference());
    // The highest is the last of a sorted set, as of any ordered container.
    const auto references = context.GetServiceReferences<Greeter>();
    EXPECT_EQ(*std::set(references.begin(), references.end()).rbegin(), high.GetReference());
    EXPECT_LT(any_cast<long>(first.GetReference().GetProperty(Constants::SERVICE_ID)),
              any_cast<long>(second.GetReference().GetProperty(Constants::SERVICE_ID)));

    low.SetProperties({{Constants::SERVICE_RANKING, 9}, {"Tone", std::string("deep")}});
    EXPECT_EQ(found(), (std::vector<std::string>{"low", "high", "first", "second"}));
    EXPECT_EQ(low.GetReference().GetProperty("tone").ToString(), "deep");
    EXPECT_THROW(low.SetProperties({{Constants::SERVICE_RANKING, std::string("high")}}),
                 std::invalid_argument);
}

TEST_F(ServiceRegistry, namesInterfacesByTypeAndFindsThemByNameAndFilter)
{
    const auto plain = offer(context, "plain");
    const auto loud = offer(context, "loud", {{"volume", 11}});

    EXPECT_EQ(us_service_interface_iid<Greeter>(), "greetings::Greeter");
    EXPECT_EQ(context.GetServiceReferences("greetings::Counter").size(), 2U);
    EXPECT_EQ(greetingsIn(context, context.GetServiceReferences<Greeter>("(volume>=10)")),
              std::vector<std::string>{"loud"});
    EXPECT_EQ(context.GetServiceReferences("", "(&(objectclass=greetings::*)(!(volume=*)))").size(), 1U);
    EXPECT_TRUE(context.GetServiceReferences("greetings::Unknown").empty());
    EXPECT_FALSE(context.GetServiceReference("greetings::Unknown"));
    EXPECT_THROW(context.GetServiceReferences<Greeter>("(volume"), std::invalid_argument);

    const auto refusal = testing::Throws<ServiceException>(
        testing::AllOf(testing::Property(&ServiceException::what,
                                         testing::StrEq("The service interface class has no "
                                                        "CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE macro")),
                       testing::Property(&ServiceException::GetType, ServiceException::UNSPECIFIED)));
    EXPECT_THAT([&] { context.GetServiceReferences<Nameless>(); }, refusal);
    EXPECT_THAT([&] { context.GetServiceReference<Nameless>(); }, refusal);
}

TEST_F(ServiceRegistry, givesEachInterfaceItsOwnView)
{
    const auto registration = offer(context, "hello");
    const auto counter = context.GetServiceReference<Counter>();

    EXPECT_EQ(context.GetService(counter)->next(), 1);
    const auto greeter = ServiceReference<Greeter>(counter);
    EXPECT_EQ(greeter.GetInterfaceId(), "greetings::Greeter");
    EXPECT_EQ(context.GetServiceObjects(greeter).GetService()->greet(), "hello");
    EXPECT_EQ(ServiceReferenceBase(counter), ServiceReferenceBase(greeter));
    EXPECT_EQ(std::hash<ServiceReferenceBase>()(counter), std::hash<ServiceReferenceBase>()(greeter));
    EXPECT_FALSE(ServiceReference<FixedGreeter>(counter))
        << "an interface that the service was not offered under";

    const auto all = context.GetService(ServiceReferenceU(counter));
    EXPECT_EQ(all->size(), 2U);
    EXPECT_EQ(ExtractInterface<Counter>(all)->next(), 2);
    EXPECT_EQ(ExtractInterface<FixedGreeter>(all), nullptr);

    const InterfaceMapConstPtr map = MakeInterfaceMap<Greeter>(std::make_shared<FixedGreeter>("by map"));
    const auto byMap = context.RegisterService(map, {{"kind", std::string("map")}});
    EXPECT_EQ(greetingsIn(context, context.GetServiceReferences<Greeter>("(kind=map)")),
              std::vector<std::string>{"by map"});
    EXPECT_THROW((void)context.RegisterService(std::make_shared<InterfaceMap>()), std::invalid_argument);
    EXPECT_THROW(context.RegisterService<Greeter>(std::shared_ptr<FixedGreeter>()), std::invalid_argument);
}

TEST_F(ServiceRegistry, keepsObjectsUsableAfterUnregistration)
{
    auto object = std::make_shared<FixedGreeter>("still here");
    const std::weak_ptr<FixedGreeter> watch = object;
    auto registration = context.RegisterService<Greeter>(object, {{"kind", std::string("kept")}});
    object.reset();
    const auto reference = registration.GetReference();
    EXPECT_TRUE(reference.GetUsingBundles().empty());
    auto held = context.GetService(reference);
    EXPECT_EQ(reference.GetUsingBundles(), std::vector<Bundle>{context.GetBundle()});
    EXPECT_EQ(context.GetBundle().GetServicesInUse().size(), 1U);
    EXPECT_EQ(reference.GetBundle().GetBundleId(), 0);
    const auto objects = context.GetServiceObjects(reference);

    registration.Unregister();
    EXPECT_FALSE(reference);
    EXPECT_FALSE(reference.GetBundle());
    EXPECT_EQ(reference.GetProperty("kind").ToString(), "kept");
    EXPECT_TRUE(context.GetServiceReferences<Greeter>().empty());
    EXPECT_EQ(objects.GetService(), nullptr);
    EXPECT_THROW(context.GetService(reference), std::invalid_argument);
    EXPECT_THROW(context.GetServiceObjects(reference), std::invalid_argument);
    EXPECT_THROW(registration.Unregister(), std::logic_error);
    EXPECT_THROW(registration.GetReference(), std::logic_error);

    EXPECT_EQ(held->greet(), "still here");
    held.reset();
    EXPECT_TRUE(watch.expired());
}

class CountingFactory final : public ServiceFactory
{
public:
    InterfaceMapConstPtr GetService(const Bundle&, const ServiceRegistrationBase&) override
    {
        ++made;
        if (made == 2) {
            throw std::domain_error("the second is missing");
        }
        return MakeInterfaceMap<Greeter>(std::make_shared<FixedGreeter>("made"));
    }
    void UngetService(const Bundle&, const ServiceRegistrationBase&, const InterfaceMapConstPtr&) override
    {
        ++returned;
    }

    int made = 0;
    int returned = 0;
};

TEST_F(ServiceRegistry, asksAFactoryOncePerUseAndReportsItsErrors)
{
    const auto factory = std::make_shared<CountingFactory>();
    const auto registration = context.RegisterService<Greeter>(ToFactory(factory));
    const auto reference = registration.GetReference();
    EXPECT_EQ(reference.GetProperty(Constants::SERVICE_SCOPE).ToString(), Constants::SCOPE_BUNDLE);

    auto one = context.GetService(reference);
    auto two = context.GetService(reference);
    EXPECT_EQ(one, two);
    EXPECT_EQ(factory->made, 1);
    one.reset();
    EXPECT_EQ(factory->returned, 0);
    two.reset();
    EXPECT_EQ(factory->returned, 1);

    EXPECT_EQ(context.GetService(reference), nullptr);
    EXPECT_EQ(running.errors().size(), 1U);
}

TEST(LdapFilter, matches)
{
    const AnyMap properties(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS,
                            {{"name", std::string("John Doe")},
                             {"Age", 42},
                             {"weight", 71.5},
                             {"id", 9000000000L},
                             {"on", true},
                             {"odd", std::string("a*b(c)\\d")},
                             {"empty", std::string()},
                             {"tags", std::vector<std::string>{"red", "green"}},
                             {"mixed", std::vector<Any>{1, std::string("two")}}});
    const char* const matching[] = {"(name=John Doe)",    "(NAME=John Doe)",
                                    "(name=J*)",          "(name=*Doe)",
                                    "(name=J*n*e)",       "(name=*)",
                                    "(name~= johnDOE )",  "(name>=John)",
                                    "(age=42)",           "(age>=42)",
                                    "(weight<=71.5)",     "(id=9000000000)",
                                    "(on=true)",          "(odd=a\\*b\\(c\\)\\\\d)",
                                    "(odd=a*\\(c*)",      "(empty=)",
                                    "(tags=green)",       "(tags=g*)",
                                    "(mixed=1)",          "(mixed=two)",
                                    "(!(nobody=*))",      "(&(age=42)(on=true))",
                                    "(|(age=1)(on=true))"};
    for (const char* text : matching) {
        EXPECT_TRUE(LDAPFilter(text).Match(properties)) << text;
    }
    for (const char* text :
         {"(name=john doe)", "(name=John)", "(name=*ohn*oh*)", "(nobody=*)", "(name<=John)", "(age<=41)",
          "(age=forty)", "(weight>=72)", "(on=false)", "(on>=true)", "(odd=a\\*)", "(name=)", "(tags=blue)",
          "(!(age=42))", "(&(age=42)(on=false))", "(|(age=1)(age=2))"})
    {
        EXPECT_FALSE(LDAPFilter(text).Match(properties)) << text;
    }
    EXPECT_TRUE(LDAPFilter(" ( & (age=42) (!(|(age=1)(name=x))) ) ").Match(properties));
    EXPECT_TRUE(LDAPFilter("(Age=42)").MatchCase(properties));
    EXPECT_FALSE(LDAPFilter("(age=42)").MatchCase(properties));
    EXPECT_FALSE(LDAPFilter().Match(properties));
    EXPECT_EQ(LDAPFilter(" (& (a = \\*x*)(!(b<=2)))").ToString(), "(&(a= \\*x*)(!(b<=2)))");
}

TEST(LdapFilter, refusesMalformedText)
{
    for (const std::string text :
         {"",     " ",       "a=b",           "(",      "()",         "(a)",    "(a",
          "(a=b", "(a=\\",   "(=b)",          "(a<b)",  "(a>b)",      "(a~b)",  "(&)",
          "(!)",  "(&(a=b)", "(!(a=b)(c=d))", "(a=b)c", "(a=b)(c=d)", "(a=(b)", "((a=b))"})
    {
        EXPECT_THROW(LDAPFilter{text}, std::invalid_argument) << text;
    }
}

TEST(Any, holdsComparesAndConverts)
{
    const Any number = 42;
    EXPECT_EQ(any_cast<int>(number), 42);
    EXPECT_THROW(any_cast<long>(number), BadAnyCastException);
    EXPECT_FALSE(number == Any(43));
    EXPECT_TRUE(Any().Empty());
    EXPECT_THROW((void)Any().ToString(), std::logic_error);
    EXPECT_EQ(Any().ToStringNoExcept(), "");
    EXPECT_EQ(Any(0.1).ToString(), "0.1");
    EXPECT_EQ(Any(std::vector<Any>{1, std::string("b")}).ToString(), "[1,b]");
    EXPECT_EQ(Any(std::map<std::string, Any>{{"a", 1}, {"b", 2}}).ToString(), "{a : 1, b : 2}");
}

TEST_F(ServiceRegistry, givesTheFrameworksIdentityAndRefusesUseAfterStop)
{
    EXPECT_EQ(context.GetProperty(Constants::FRAMEWORK_VENDOR).ToString(), vx::frameworkName);
    EXPECT_EQ(context.GetProperty(Constants::FRAMEWORK_VERSION).ToString(), vx::frameworkVersion);
    EXPECT_EQ(running.framework().GetVersion().ToString(), vx::frameworkVersion);
    EXPECT_EQ(running.framework().GetState(), Bundle::STATE_ACTIVE);
    EXPECT_EQ(running.framework().WaitForStop(std::chrono::milliseconds(1)).GetType(),
              FrameworkEvent::FRAMEWORK_WAIT_TIMEDOUT);
    EXPECT_THROW(running.framework().Uninstall(), std::runtime_error);

    const auto registration = offer(context, "before the stop");
    running.stop();
    EXPECT_FALSE(context);
    EXPECT_THROW(context.GetBundles(), IllegalStateException);
    EXPECT_THROW(BundleContext().GetBundle(), IllegalStateException);
    EXPECT_FALSE(running.framework().GetBundleContext());
}

TEST_F(ServiceRegistry, servesManyThreadsAtOnce)
{
    constexpr int rounds = 200;
    const auto work = [&](int ranking) {
        for (int i = 0; i < rounds; ++i) {
            auto mine = offer(context, "mine", {{Constants::SERVICE_RANKING, ranking}});
            mine.SetProperties({{Constants::SERVICE_RANKING, i % 5}});
            for (const auto& reference : context.GetServiceReferences<Greeter>("(service.ranking>=1)")) {
                try {
                    const auto greeter = context.GetService(reference);
                    EXPECT_TRUE(!greeter || greeter->greet() == "mine");
                } catch (const std::invalid_argument&) {
                    // Its thread has unregistered it meanwhile.
                    continue;
                }
            }
            mine.Unregister();
        }
    };
    {
        const std::array<std::jthread, 4> threads{std::jthread(work, 0), std::jthread(work, 1),
                                                  std::jthread(work, 2), std::jthread(work, 3)};
    }
    EXPECT_TRUE(running.context().GetServiceReferences<Greeter>().empty());
}

}  // namespace
