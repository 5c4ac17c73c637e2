#pragma once

// The messages for values that a setting rejects. They say once what is wrong, then what the user may have
// meant, then what is allowed.

#include <settings_core/files/text_position.hpp>
#include <settings_core/tree/node.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/array.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::core {

/// Text that cannot be parsed to a value of a setting.
struct RejectedText
{
    std::string_view text;                 ///< the whole value
    Notation notation = Notation::script;  ///< of the text
    /// The diagnostic has the position of the error. Otherwise the text is an argument of a command, and the
    /// message tells the column, and quotes a corrected text for a shell.
    bool hasPosition = false;
};

/// Returns why the constraints of a setting exclude a value: `"lnog" is not allowed; did you mean "long"?
/// Allowed: short, long`, `12 is not allowed: must be a whole number from 0 to 9`. A secret is not shown.
[[nodiscard]] std::string describeRejection(const Node& setting, const foundation::verdixdata::Array& value);

/// Returns why a text is no value of a setting: as describeRejection, with the corrected text if that is
/// obvious; or what was expected where, if the notation is wrong. `error` is what parsing it threw.
[[nodiscard]] std::string describeTextRejection(const Node& setting, const RejectedText& rejected,
                                                const ParseError& error);

}  // namespace vx::core
