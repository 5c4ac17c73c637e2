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
using CheckFunction = void (DateTimeSettingsInterface::*)(const DateTimeSettingsInterface::Node&,
                                                          const std::string&,
                                                          const DateTimeSettingsInterface::Array&);

DateTimeDefaults defaultsOf(const Service& service)
{
    return service ? service->getDefaults()
                   : DateTimeDefaults{u"en_US", u"dd-MMM-uuuu", u"dd-MMM-uuuu HH:mm:ss"};
}

// Returns a validator that calls a check function of the service. Each setting shares ownership of the
// service. Without a service, all values are valid.
auto forwardTo(const Service& service, CheckFunction check)
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
    addCharvec(dateTime, "DefaultDateFormat", std::move(dateFormat),
               forwardTo(service, &Interface::checkFormat));
    addCharvec(dateTime, "DefaultFormat", std::move(dateTimeFormat),
               forwardTo(service, &Interface::checkFormat));
    addCharvec(dateTime, "DisplayLocale", std::move(locale), forwardTo(service, &Interface::checkLocale));
    addCharvec(dateTime, "ValidationWarning", "", forwardTo(service, &Interface::checkValidationWarning));
}

}  // namespace verdix::settings::tree
