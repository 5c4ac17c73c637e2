#pragma once

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>

/// Services of other modules that supply factory values and validators to the tree.
namespace factory_settings_interface {

/// The platform's default locale and patterns for dates and times.
struct DateTimeDefaults
{
    std::u16string locale;          ///< language and country: "en_US"
    std::u16string dateFormat;      ///< pattern of a date alone
    std::u16string dateTimeFormat;  ///< pattern of a date with its time
};

/// Service with the platform's date and time conventions. Each check function validates a value for the
/// setting `name` and throws an exception if the value is invalid; its message is shown to the user.
class VX_API DateTimeSettingsInterface
{
public:
    /// The setting whose value is validated.
    using Node = boost::shared_ptr<const settings::core::Settings>;
    /// The value to validate.
    using Array = foundation::verdixdata::Array;

    virtual ~DateTimeSettingsInterface() = default;

    /// Returns the factory values of the settings.
    [[nodiscard]] virtual DateTimeDefaults getDefaults() = 0;
    /// Throws if the value is not a date and time pattern.
    virtual void checkFormat(const Node& node, const std::string& name, const Array& value) = 0;
    /// Throws if the value is not a locale name.
    virtual void checkLocale(const Node& node, const std::string& name, const Array& value) = 0;
    /// Throws if the value is not an option for when to warn about a questionable pattern.
    virtual void checkValidationWarning(const Node& node, const std::string& name, const Array& value) = 0;
};

}  // namespace factory_settings_interface
