#pragma once

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>

namespace factory_settings_interface {

/// The platform's defaults for dates and times, as patterns and a locale name.
struct DateTimeDefaults
{
    std::u16string locale;
    std::u16string dateFormat;
    std::u16string dateTimeFormat;
};

/// Service that knows the platform's date and time conventions. Each check raises an exception, whose text is
/// what the user reads, to refuse the value proposed for the setting of that name.
class VX_API DateTimeSettingsInterface
{
public:
    using Node = boost::shared_ptr<const settings::core::Settings>;
    using Array = foundation::verdixdata::Array;

    virtual ~DateTimeSettingsInterface() = default;

    [[nodiscard]] virtual DateTimeDefaults getDefaults() = 0;
    virtual void checkFormat(const Node& node, const std::string& name, const Array& value) = 0;
    virtual void checkLocale(const Node& node, const std::string& name, const Array& value) = 0;
    virtual void checkValidationWarning(const Node& node, const std::string& name, const Array& value) = 0;
};

}  // namespace factory_settings_interface
