#pragma once

// How commands show effective values and their origins.

#include <settings_core/files/layers.hpp>

#include <boost/json/object.hpp>

#include <optional>
#include <string>

#include "render/table.hpp"

namespace vx::tool {

/// Returns the effective value of a setting, masked if it is a secret of a settings file.
[[nodiscard]] core::LayerValue shownEffective(core::Layers& layers, const core::Node& setting);

/// Returns the effective value of a setting if a file gives it and it differs from the factory value. Runs no
/// run-time default for settings that no file sets.
[[nodiscard]] std::optional<core::LayerValue> modifiedValue(core::Layers& layers, const core::Node& setting);

/// Returns the value on one line, shortened to a width in characters; "(no value)" if there is none.
[[nodiscard]] std::string valueOnOneLine(const core::LayerValue& value, std::size_t width);

/// Returns "personal", "installation", or "computed" for what a function computed; empty for another factory
/// value.
[[nodiscard]] std::string_view originMark(const core::LayerValue& value);

/// Adds a cell with the value and one with its origin, for a table that this output shows.
void addValueCells(Table::Row& row, const core::LayerValue& value, const Output& out);

/// Adds the member `lockedBy`: an object with file and path, null without a lock.
void addLock(boost::json::object& document, const std::optional<core::SettingLock>& lock);

}  // namespace vx::tool
