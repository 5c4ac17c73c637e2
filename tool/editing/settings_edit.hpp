#pragma once

#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/layers.hpp>

#include <filesystem>
#include <string>

#include "host/session.hpp"

namespace vx::tool {

/// Lets the user edit a copy of one of the settings files in a text editor, then replaces the file, unless
/// the text is unchanged or discarded. Of new errors, of a change of the file meanwhile and of what an
/// earlier edit left, the user decides; without a terminal, nothing is changed then. Returns whether the file
/// was changed. Throws std::runtime_error if it was not and the edited text is kept; the message names the
/// copy. If the file is new, `access` says who may read it.
bool editSettingsFile(const Session& session, const core::LayerFiles& files,
                      const std::filesystem::path& file, core::FileAccess access, const std::string& editor);

}  // namespace vx::tool
