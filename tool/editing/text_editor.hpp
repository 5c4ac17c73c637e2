#pragma once

#include <filesystem>
#include <string>

namespace vx::tool {

/// Returns the shell command of the user's text editor: $VISUAL, $EDITOR, or else the first of the usual
/// programs that is installed. Throws CommandError when there is none.
[[nodiscard]] std::string textEditorCommand();

/// Edits the file in the text editor, and returns when that has ended. Meanwhile, SIGINT, SIGQUIT and SIGHUP,
/// which a terminal sends to both, are left to the editor, and SIGTERM is passed on to it. Throws
/// CommandError when the editor cannot be started, fails or is killed.
void runTextEditor(const std::string& command, const std::filesystem::path& file);

}  // namespace vx::tool
