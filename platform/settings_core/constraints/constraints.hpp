#pragma once

// The constraints that a provider puts on the values of its settings: whether a value satisfies them, and how
// they are described in messages and documentation.

#include <foundation/export.hpp>
#include <settings/core/factory_setting_properties.hpp>

#include <string>
#include <vector>

namespace vx::core {

/// A value validator: constraints as plain data.
using ValueValidator = ::settings::core::SettingValueValidator::ConfigData;

/// A constraint that a value violates.
struct Failure
{
    /// The constraint as a phrase that follows "must be": "from 0 to 3".
    std::string constraint;
    /// Constraint and value in one sentence: "must be from 0 to 3; it is 5 (int32, 1-by-1)".
    std::string message;
};

/// Returns one entry for each constraint of the value validator that the value violates.
[[nodiscard]] VX_API std::vector<Failure> findViolations(const ValueValidator& validator,
                                                         const foundation::verdixdata::Array& value);

/// Describes the constraints of a value validator: "from 0 to 3", "one of: loose, compact". `example` is a
/// valid value such as the factory value; its class and size make the description more exact.
[[nodiscard]] VX_API std::string describeValueValidator(const ValueValidator& validator,
                                                        const foundation::verdixdata::Array& example = {});

/// Describes the constraint of a validator: "a whole number", "accepted by validateFontSize of
/// libvxservices"; empty without a validator.
[[nodiscard]] VX_API std::string describeValidator(const ::settings::core::Validator& validator);

/// Describes all constraints of a setting: "a whole number from 0 to 3", "a string, one of: loose, compact".
[[nodiscard]] VX_API std::string
describeConstraint(const ::settings::core::detail::FactorySettingProperties& properties);

/// Returns a failure with the message "must be <constraint>; it is <value> (<class>, <size>)".
[[nodiscard]] Failure makeFailure(std::string constraint, const foundation::verdixdata::Array& value);

}  // namespace vx::core
