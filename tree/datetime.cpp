#include <builder/validators.hpp>
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
void addServiceChecked(FactoryGroup& group, std::string name, std::u16string value, const Service& service,
                       Check check)
{
    auto forward = [service, check](const auto& node, const auto& setting, const auto& proposed) {
        if (service) {
            (service.get()->*check)(node, setting, proposed);
        }
    };
    addSetting(group, std::move(name), "FactoryValue", internal::charvec(std::move(value)), "ValidationFcn",
               makeCppValidator(std::move(forward)));
}

}  // namespace

void buildDateTimeArea(FactoryGroup& root)
{
    using Interface = DateTimeSettingsInterface;

    const Service service = ::settings::verdix::getServiceFromContext<Interface>();
    auto [locale, dateFormat, dateTimeFormat] = defaultsOf(service);

    auto dateTime = addGroup(root, "datetime");
    addServiceChecked(dateTime, "DefaultDateFormat", std::move(dateFormat), service, &Interface::checkFormat);
    addServiceChecked(dateTime, "DefaultFormat", std::move(dateTimeFormat), service, &Interface::checkFormat);
    addServiceChecked(dateTime, "DisplayLocale", std::move(locale), service, &Interface::checkLocale);
    addServiceChecked(dateTime, "ValidationWarning", u"", service, &Interface::checkValidationWarning);
}

}  // namespace verdix::settings::tree
