#pragma once

#include <settings/core/setting_value_validator.hpp>
#include <settings/core/validators.hpp>

#include <optional>
#include <string_view>

namespace vx::tool {

/// What a function of a native library requires beyond the other constraints of its settings. Each rejects
/// also values of another class or size than the factory value.
struct NativeConstraint
{
    using Range = ::settings::core::SettingValueValidator::Range;

    std::string_view library;
    std::string_view function;
    std::optional<Range> wholeNumbers = std::nullopt;  ///< every number is an integer in this range
    std::string_view stringKeywords = "{}";            ///< JSON Schema for every string
    std::string_view rowKeywords = "{}";               ///< JSON Schema for the array of a row's elements
};

/// Returns what the validator requires, or null if it is no function of a native library, or an unknown one.
[[nodiscard]] const NativeConstraint*
findNativeConstraint(const ::settings::core::Validator& validator) noexcept;

}  // namespace vx::tool
