#pragma once

#include <settings_core/files/json_reader.hpp>
#include <settings_core/tree/node.hpp>

#include <optional>
#include <string>

namespace vx::core {

/// Converts a stored value that the setting rejects because an earlier release stored it in another class.
/// Returns the value as JSON on one line; nothing if the setting accepts the value as it is, or if no
/// conversion leads to a value that the setting accepts and from which the old one can be restored.
///
/// The conversions are tried in this order. All but the last apply to each element of a list.
/// - false and true to 0 and 1, and back
/// - a number to a string with its shortest decimal, and back
/// - false and true to "false" and "true", and back
/// - false and true to "off" and "on", and back
/// - a string to a list of this string, and back
[[nodiscard]] std::optional<std::string> convertStoredValue(const Node& setting, const JsonValue& value);

}  // namespace vx::core
