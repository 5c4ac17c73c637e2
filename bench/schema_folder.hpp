#pragma once

#include <bench/plain_settings.hpp>
#include <filesystem>
#include <span>

namespace bench {

/// Writes the settings as a GSettings schema, one schema a group and one key a setting, and compiles it into
/// the folder. Raises std::runtime_error.
void writeSchemaFolder(std::span<const PlainSetting> settings, const std::filesystem::path& folder);

}  // namespace bench
