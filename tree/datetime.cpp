#include <component/inputs.hpp>
#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <factory_settings_interface/date_time_settings_interface.hpp>

#include <memory>

namespace verdix::settings::tree {

namespace {

using factory_settings_interface::DateTimeDefaults;
using factory_settings_interface::DateTimeSettingsInterface;

using Service = std::shared_ptr<DateTimeSettingsInterface>;
using Check = void (DateTimeSettingsInterface::*)(const DateTimeSettingsInterface::Node&, const std::string&,
                                                  const DateTimeSettingsInterface::Array&);

DateTimeDefaults defaultsOf(const Service& service)
{
    return service ? service->getDefaults()
                   : DateTimeDefaults{u"en_US", u"dd-MMM-uuuu", u"dd-MMM-uuuu HH:mm:ss"};
}

// Each setting holds the service for as long as it may be checked. Without a service there is nobody to
// judge, and every value is accepted.
auto forwardedTo(const Service& service, Check check)
{
    return checkedBy([service, check](const auto& node, const auto& setting, const auto& proposed) {
        if (service) {
            (service.get()->*check)(node, setting, proposed);
        }
    });
}

}  // namespace

void buildDateTimeArea(FactoryGroup& root)
{
    using Interface = DateTimeSettingsInterface;

    const Service service = ::settings::verdix::getServiceFromContext<Interface>();
    auto [locale, dateFormat, dateTimeFormat] = defaultsOf(service);

    auto dateTime = addGroup(root, "datetime");
    addText(dateTime, "DefaultDateFormat", std::move(dateFormat),
            forwardedTo(service, &Interface::checkFormat));
    addText(dateTime, "DefaultFormat", std::move(dateTimeFormat),
            forwardedTo(service, &Interface::checkFormat));
    addText(dateTime, "DisplayLocale", std::move(locale), forwardedTo(service, &Interface::checkLocale));
    addText(dateTime, "ValidationWarning", "", forwardedTo(service, &Interface::checkValidationWarning));
}

}  // namespace verdix::settings::tree
