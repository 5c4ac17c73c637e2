#pragma once

// The rules that a provider states for the values of its settings: what they say in words, and whether a
// value keeps them. Every message and every description of what is accepted takes its words from here.

#include <foundation/export.hpp>
#include <settings/core/factory_setting_properties.hpp>

#include <string>
#include <vector>

namespace vx::core {

/// One record of declarative checks.
using ValueValidator = ::settings::core::SettingValueValidator::ConfigData;

/// A rule that a value broke.
struct Failure
{
    /// What is accepted, in words that follow "must be": "from 0 to 3".
    std::string constraint;
    /// The rule and the value in one sentence: "must be from 0 to 3; it is 5 (int32, 1-by-1)".
    std::string message;
};

/// The rules of the record that the value breaks, each by itself; empty when it keeps all.
[[nodiscard]] VX_API std::vector<Failure> findViolations(const ValueValidator& rules,
                                                         const foundation::verdixdata::Array& value);

/// What a record accepts, in words: "from 0 to 3", "one of: loose, compact". A value of the kind that the
/// setting takes, such as its factory value, makes them more exact: a cell has elements, a text characters.
[[nodiscard]] VX_API std::string describeValueValidator(const ValueValidator& rules,
                                                        const foundation::verdixdata::Array& example = {});

/// What a validator accepts, in words: "a whole number", "accepted by validateFontSize of libvxservices";
/// empty without a validator.
[[nodiscard]] VX_API std::string describeValidator(const ::settings::core::Validator& validator);

/// What a setting accepts altogether: "a whole number from 0 to 3", "a text, one of: loose, compact".
[[nodiscard]] VX_API std::string
describeConstraint(const ::settings::core::detail::FactorySettingProperties& properties);

/// "must be <rule>; it is <value> (<class>, <size>)".
[[nodiscard]] Failure makeFailure(std::string rule, const foundation::verdixdata::Array& value);

}  // namespace vx::core
