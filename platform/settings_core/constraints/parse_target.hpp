#pragma once

#include <settings_core/tree/node.hpp>

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <optional>

namespace vx::core {

/// Target type for parsing a value of a setting.
struct ParseTarget
{
    /// Class to parse to; nothing derives it from the notation: string, logical, double or cell of strings.
    std::optional<foundation::verdixdata::ArrayType> elementClass = std::nullopt;
    /// Whether a string, the name of a colour, is allowed instead of numbers.
    bool acceptsColourNames = false;
};

/// Returns the target for a setting: the class of its factory value or, without one, the class that its
/// validator or value validators require.
[[nodiscard]] VX_API ParseTarget parseTargetOf(const Node& setting);

}  // namespace vx::core
