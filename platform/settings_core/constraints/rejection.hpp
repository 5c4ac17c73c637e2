#pragma once

// The messages for values that a setting rejects. They say once what is wrong, then what the user may have
// meant, then what is allowed.

#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/tree/node.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/array.hpp>

#include <string>
#include <string_view>

namespace vx::core {

/// Returns why the constraints of a setting exclude a value: `"lnog" is not allowed; did you mean "long"?
/// Allowed: short, long`, `12 is not allowed: must be a whole number from 0 to 9`. A secret is not shown.
[[nodiscard]] std::string describeRejection(const Node& setting, const foundation::verdixdata::Array& value,
                                            const Writing& writing);

/// Returns why a text is no value of a setting: as describeRejection, with the corrected text if that is
/// obvious; or what was expected where, if the notation is wrong. `error` is what parsing it threw.
[[nodiscard]] std::string describeTextRejection(const Node& setting, std::string_view text,
                                                const Writing& writing, const ParseError& error);

}  // namespace vx::core
