#pragma once

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <string>

/// Services of other modules that the tree asks for defaults and checks.
namespace factory_settings_interface {

/// The platform's defaults for dates and times, as patterns and a locale name.
struct DateTimeDefaults
{
    std::u16string locale;          ///< language and country: "en_US"
    std::u16string dateFormat;      ///< pattern of a date alone
    std::u16string dateTimeFormat;  ///< pattern of a date with its time
};

/// Service that knows the platform's date and time conventions. Each check raises an exception, whose text is
/// what the user reads, to refuse the value proposed for the setting of that name.
class VX_API DateTimeSettingsInterface
{
public:
    /// The setting that a value is proposed for.
    using Node = boost::shared_ptr<const settings::core::Settings>;
    /// The value proposed.
    using Array = foundation::verdixdata::Array;

    virtual ~DateTimeSettingsInterface() = default;

    /// What the settings have as factory values.
    [[nodiscard]] virtual DateTimeDefaults getDefaults() = 0;
    /// Refuses what is no pattern of dates and times.
    virtual void checkFormat(const Node& node, const std::string& name, const Array& value) = 0;
    /// Refuses what is no name of a locale.
    virtual void checkLocale(const Node& node, const std::string& name, const Array& value) = 0;
    /// Refuses what does not say when to warn of a doubtful pattern.
    virtual void checkValidationWarning(const Node& node, const std::string& name, const Array& value) = 0;
};

}  // namespace factory_settings_interface
