#pragma once

#include <settings_core/node.hpp>
#include <settings_core/parse_target.hpp>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vx::tool {

/// What class, shape, validator and records of a setting demand of its values together, as far as it can be
/// told without running anything.
struct ValueConstraints
{
    using Records = ::settings::core::SettingValueValidator;

    core::ParseTarget form;
    /// The demands exclude each other, or the setting is read-only: no value can be written.
    bool isImpossible = false;

    /// Rows and columns; any number where open.
    Records::Size size = {};
    /// Elements; characters of a text.
    std::size_t maximumLength = std::numeric_limits<std::size_t>::max();

    /// Bounds of every number; NaN is one only where both are open.
    Records::Range range = {};
    /// Every number is whole, and so finite.
    bool isWhole = false;

    /// Every text is one of these.
    std::optional<std::vector<std::u16string>> texts = std::nullopt;
    /// A string must not be missing.
    bool isPresent = false;
    /// These may stand in place of numbers.
    std::vector<std::u16string> wordsForNumbers = {};
};

[[nodiscard]] ValueConstraints constraintsOf(const core::Node& setting);

}  // namespace vx::tool
