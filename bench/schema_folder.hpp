#pragma once

#include <bench/plain_settings.hpp>
#include <filesystem>
#include <span>

namespace bench {

/// Writes the settings to the folder, which is created, as GSettings schemas (one per group, one key per
/// setting), and compiles them there. Throws std::runtime_error if the file cannot be written or
/// glib-compile-schemas fails.
void writeSchemaFolder(std::span<const PlainSetting> settings, const std::filesystem::path& folder);

}  // namespace bench
