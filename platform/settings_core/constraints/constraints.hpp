#pragma once

// The constraints of a setting, merged from class and size of the factory value, validator and value
// validators, so that code that parses, describes, exports or suggests values reads them in one place.

#include <settings_core/values/value_parsing.hpp>

#include <foundation/export.hpp>
#include <settings/core/factory_setting_properties.hpp>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vx::core {

/// A value validator: constraints as plain data.
using ValueValidator = ::settings::core::SettingValueValidator::ConfigData;

/// A named parameter of a constraint. A count is std::nullopt if it is unlimited.
struct Parameter
{
    std::string_view name;  ///< in exported trees and schemas
    /// Number, count, string or list of strings.
    std::variant<double, std::optional<std::size_t>, std::string, std::vector<std::string>> value;
};

/// A constraint of a value validator, in the notation of exported trees.
struct ExportedConstraint
{
    std::string_view kind;              ///< such as "range"
    std::vector<Parameter> parameters;  ///< in a fixed order
};

/// All constraints of a setting: the intersection of those of its factory value (class and size), its
/// validator and its value validators, as far as they are known without calling a function of the provider.
/// The strings belong to the setting's properties, which must outlive this object.
struct VX_API Constraint : ParseTarget
{
    using ValueValidator = ::settings::core::SettingValueValidator;  ///< has the types of some members

    /// The constraints contradict each other.
    bool acceptsNothing = false;

    /// Rows and columns; any number if empty.
    ValueValidator::Size size = {};
    /// The value has the size of the factory value.
    bool hasFactorySize = false;
    /// In elements, or in characters of a character vector.
    std::size_t maximumLength = std::numeric_limits<std::size_t>::max();

    /// Bounds of every number; NaN is accepted only if both are infinite.
    ValueValidator::Range range = {};
    /// Every number is an integer, hence finite.
    bool isWhole = false;

    /// Every string is one of these.
    std::optional<std::vector<std::u16string_view>> allowedStrings = std::nullopt;
    /// String scalars must not be missing.
    bool rejectsMissing = false;

    /// Names that are accepted in place of a colour's numbers.
    std::vector<std::u16string_view> colourNames = {};

    /// Whether any value with elements satisfies all constraints: neither the range nor the list of allowed
    /// strings is empty, and no constraint contradicts another.
    [[nodiscard]] bool isSatisfiable() const noexcept;

    // Each of these functions adds a constraint.

    /// Records a contradiction unless the condition is true.
    void require(bool isPossible) noexcept { acceptsNothing = acceptsNothing || !isPossible; }
    /// Returns the required class. If there is none yet, it becomes `type`.
    foundation::verdixdata::ArrayType classOr(foundation::verdixdata::ArrayType type) noexcept;
    /// Requires this size instead of that of the factory value.
    void restrictSize(const ValueValidator::Size& required) noexcept;
    /// Requires numbers, in this range.
    void restrictRange(const ValueValidator::Range& required) noexcept;
};

/// Whether values of the class are strings.
[[nodiscard]] inline bool isStringClass(foundation::verdixdata::ArrayType type) noexcept
{
    using foundation::verdixdata::ArrayType;
    return type == ArrayType::CHAR || type == ArrayType::STRING;
}

/// Returns the constraints of a setting.
[[nodiscard]] VX_API Constraint
constraintOf(const ::settings::core::detail::FactorySettingProperties& properties);

/// Describes all constraints of a setting: "a whole number from 0 to 3", "a string, one of: loose, compact".
[[nodiscard]] VX_API std::string
describeConstraint(const ::settings::core::detail::FactorySettingProperties& properties);

/// Describes the constraint of a validator: "a whole number", "accepted by validateFontSize of
/// libvxservices"; empty without a validator.
[[nodiscard]] VX_API std::string describeValidator(const ::settings::core::Validator& validator);

/// Describes the constraints of a value validator: "from 0 to 3", "one of: loose, compact". `example` is a
/// valid value such as the factory value; its class and size make the description more exact.
[[nodiscard]] VX_API std::string describeValueValidator(const ValueValidator& validator,
                                                        const foundation::verdixdata::Array& example = {});

/// Returns the constraints of a value validator for an exported tree, in a fixed order.
[[nodiscard]] VX_API std::vector<ExportedConstraint> exportedConstraints(const ValueValidator& validator);

/// Adds a constraint to value validators: to the last one, if exportedConstraints() could list it after those
/// that this already has, else to a new one. A count may be given as a number, an unlimited number as an
/// unlimited count. Throws std::invalid_argument for an unknown kind, and for missing or wrong parameters.
VX_API void restoreConstraint(const ExportedConstraint& constraint, std::vector<ValueValidator>& validators);

}  // namespace vx::core
