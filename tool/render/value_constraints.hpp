#pragma once

#include <settings_core/constraints/parse_target.hpp>
#include <settings_core/tree/node.hpp>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vx::tool {

/// All constraints of a setting, from class, size, validator and value validators, as far as they are known
/// without calling a function.
struct ValueConstraints
{
    using ValueValidator = ::settings::core::SettingValueValidator;

    core::ParseTarget form;
    /// No value can be written: the constraints exclude each other, or the setting is read-only.
    bool acceptsNothing = false;

    /// Rows and columns; any number if empty.
    ValueValidator::Size size = {};
    /// In elements, or in characters of a character vector.
    std::size_t maximumLength = std::numeric_limits<std::size_t>::max();

    /// Bounds of every number; NaN is accepted only if both are infinite.
    ValueValidator::Range range = {};
    /// Every number is an integer, hence finite.
    bool isWhole = false;

    /// Every string is one of these.
    std::optional<std::vector<std::u16string>> allowedStrings = std::nullopt;
    /// String scalars must not be missing.
    bool rejectsMissing = false;
    /// Accepted in place of the numbers of a colour.
    std::vector<std::u16string> colourNames = {};
};

/// Returns the constraints of a setting.
[[nodiscard]] ValueConstraints constraintsOf(const core::Node& setting);

}  // namespace vx::tool
