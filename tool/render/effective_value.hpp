#pragma once

// How commands show the effective value of a setting and its origin.

#include <settings_core/files/layers.hpp>

#include <boost/json/object.hpp>

#include <string>

namespace vx::tool {

/// Returns the effective value of a setting, masked if it is a secret of a settings file.
[[nodiscard]] core::LayerValue shownEffective(core::Layers& layers, const core::Node& setting);

/// Returns the file of the value; empty for the factory's.
[[nodiscard]] std::string fileOf(const core::LayerValue& value);

/// Returns "personal" or "installation"; empty for the factory's.
[[nodiscard]] std::string originMark(const core::LayerValue& value);

/// Returns an object with value, origin and file, which is null for the factory's.
[[nodiscard]] boost::json::object effectiveJson(const core::LayerValue& value);

}  // namespace vx::tool
