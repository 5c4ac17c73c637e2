#pragma once

#include <settings_core/node.hpp>

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <optional>

namespace vx::core {

/// What somebody who writes a value for a setting means by it.
struct ParseTarget
{
    /// Nothing: whatever the written form is, a text, logical, double or a cell of texts.
    std::optional<foundation::verdixdata::ArrayType> elementClass = std::nullopt;
    /// A text may stand in place of numbers: the name of a colour.
    bool acceptsColourNames = false;
};

/// The form of a setting's values: that of its factory value; without one, what its validator or its rules
/// demand.
[[nodiscard]] VX_API ParseTarget parseTargetOf(const Node& setting);

}  // namespace vx::core
