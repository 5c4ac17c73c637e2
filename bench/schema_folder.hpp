#pragma once

#include <bench/plain_settings.hpp>
#include <filesystem>
#include <span>

namespace bench {

/// Writes the settings as GSettings schemas, one per group with one key per setting, and compiles them in the
/// folder. Throws std::runtime_error.
void writeSchemaFolder(std::span<const PlainSetting> settings, const std::filesystem::path& folder);

}  // namespace bench
