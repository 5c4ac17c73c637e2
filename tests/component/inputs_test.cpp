#include <component/feature.hpp>
#include <component/inputs.hpp>

#include <foundation/host.hpp>

#include <cppmicroservices/ServiceException.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <tests/support/running_framework.hpp>
#include <vector>

namespace inputs_test {

struct Greeter
{
    virtual ~Greeter() = default;
};

struct Nameless
{
    virtual ~Nameless() = default;
};

}  // namespace inputs_test

CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE(inputs_test::Greeter, "test.Greeter")
CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE(inputs_test::Nameless, "")

namespace inputs_test {

using foundation::feature::Feature;
using settings::verdix::getServiceFromContext;
using testing::ElementsAre;

struct ServiceTest : testing::Test
{
    ServiceTest()
    {
        foundation::host::setMessageHook([this](const std::string& text) { messages.push_back(text); });
        foundation::host::setAssertionHook([this](const std::string& text) { assertions.push_back(text); });
    }
    ~ServiceTest() override
    {
        foundation::host::setMessageHook(nullptr);
        foundation::host::setAssertionHook(nullptr);
    }

    auto publish(const std::shared_ptr<Greeter>& greeter, cppmicroservices::ServiceProperties properties = {})
    {
        return framework.context().RegisterService<Greeter>(greeter, properties);
    }

    std::vector<std::string> messages;
    std::vector<std::string> assertions;
    tests::RunningFramework framework;
};

TEST_F(ServiceTest, TheFirstRankedServiceIsChosenAndNamedOrNone)
{
    EXPECT_EQ(getServiceFromContext<Greeter>(), nullptr);
    EXPECT_THAT(messages, ElementsAre("getService<test.Greeter>: found [0] services.",
                                      "getService found [0] services."));

    const auto plain = std::make_shared<Greeter>();
    const auto preferred = std::make_shared<Greeter>();
    publish(plain);
    EXPECT_EQ(getServiceFromContext<Greeter>(), plain);

    const auto registration =
        publish(preferred, {{cppmicroservices::Constants::SERVICE_RANKING, cppmicroservices::Any(7)}});
    messages.clear();
    EXPECT_EQ(getServiceFromContext<Greeter>(), preferred);
    const auto id =
        registration.GetReference().GetProperty(cppmicroservices::Constants::SERVICE_ID).ToStringNoExcept();
    EXPECT_THAT(messages, ElementsAre("getService<test.Greeter>: found [2] services.",
                                      "getService<test.Greeter>: returning service with service.id: " + id));
    EXPECT_TRUE(assertions.empty());
}

TEST_F(ServiceTest, AServiceOfOneConfigurationIsReportedAndReturned)
{
    const auto offered = [this](const cppmicroservices::Any& mark) {
        auto registration =
            publish(std::make_shared<Greeter>(), {{std::string("com.tarnwick.service.perconfig"), mark}});
        EXPECT_NE(getServiceFromContext<Greeter>(), nullptr);
        registration.Unregister();
    };
    offered(false);
    offered(std::string("true"));
    EXPECT_TRUE(assertions.empty());
    offered(true);
    EXPECT_THAT(
        assertions,
        ElementsAre("Per-Config Service being returned from getService() call. This is likely unintended "
                    "behavior. If intended, please use getPerConfigService API"));
}

TEST_F(ServiceTest, AnInterfaceWithoutIdentifierIsRefused)
{
    EXPECT_THAT(getServiceFromContext<Nameless>,
                testing::ThrowsMessage<cppmicroservices::ServiceException>(
                    "The service interface class has no CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE macro"));
}

TEST(FeatureSwitch, NamesMustEndWhereTheySay)
{
    EXPECT_THAT([] { return Feature<0>("webui", 3); },
                testing::ThrowsMessage<std::logic_error>("feature name needs to be null terminated."));
    EXPECT_NO_THROW(Feature<0>("webui", 5));
}

}  // namespace inputs_test
