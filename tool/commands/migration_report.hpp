#pragma once

// Migrations, as the commands plan and show them.

#include <settings_core/releases/migration.hpp>

#include <boost/json/array.hpp>

#include <filesystem>
#include <string>
#include <vector>

#include "host/session.hpp"
#include "render/table.hpp"

namespace vx::tool {

/// Returns the migration of a settings file with this content, with secrets masked in its events. Throws
/// CommandError if the file is damaged or of a newer release, or cannot be migrated in this range.
[[nodiscard]] core::Migration planMigration(const std::string& text, const std::filesystem::path& file,
                                            const Session& session, const core::MigrationRange& range);

/// Returns a table with a row for each event.
[[nodiscard]] Table eventTable(const std::vector<core::MigrationEvent>& events);

/// Returns an object for each event: `release`, `change`, `path`, `target`, `before` and `after`.
[[nodiscard]] boost::json::array eventsJson(const std::vector<core::MigrationEvent>& events);

}  // namespace vx::tool
