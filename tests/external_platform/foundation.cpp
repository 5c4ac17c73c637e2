// Switches that are off, no log, and a service framework that starts when it is first asked for.

#include <foundation/cppmicroservices/framework.hpp>
#include <foundation/feature/ifeature.hpp>
#include <foundation/verdixdata/text.hpp>

#include <boost/log/core/core.hpp>
#include <cppmicroservices/Any.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <map>
#include <mutex>
#include <stdexcept>

namespace foundation::feature {

IFeature::IFeature(const char* name, std::size_t length) noexcept : name_(name, length) {}
IFeature::~IFeature() = default;

int IFeature::defaultValue() const noexcept
{
    return 0;
}

std::u16string IFeature::getName() const
{
    return verdixdata::toUtf16(name_);
}

int IFeature::get()
{
    return getState()->value;
}

FeatureState* management::process::getDataPtr(const std::string& name)
{
    static std::mutex mutex;
    static std::map<std::string, FeatureState> states;
    const std::lock_guard lock(mutex);
    return &states[name];
}

}  // namespace foundation::feature

namespace foundation::cppmicroservices {

static const bool wasLogging = boost::log::core::get()->set_logging_enabled(false);

std::shared_ptr<::cppmicroservices::Framework> getFramework()
{
    static const auto framework = [] {
        auto made = ::cppmicroservices::FrameworkFactory().NewFramework();
        made.Start();
        return std::make_shared<::cppmicroservices::Framework>(std::move(made));
    }();
    return framework;
}

void detail::logMessage(const std::function<std::string()>&) {}

void detail::assertOnFalse(const std::function<bool()>& predicate, const std::string& message)
{
    if (!predicate()) {
        throw std::logic_error(message);
    }
}

bool detail::isPerConfigService(const ::cppmicroservices::ServiceReferenceBase& reference)
{
    return reference.GetProperty(perConfigProperty).ToString() == "1";
}

}  // namespace foundation::cppmicroservices
