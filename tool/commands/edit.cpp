#include <settings_core/files/layers.hpp>

#include <filesystem>
#include <memory>
#include <string>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "editing/settings_edit.hpp"
#include "editing/text_editor.hpp"
#include "render/json_text.hpp"
#include "settings_changes.hpp"

namespace vx::tool {

namespace {

ExitCode edit(LazySession& lazy, const Scope& scope, Output& out)
{
    const std::string editor = textEditorCommand();
    const core::LayerFiles files = lazy.layerFiles();
    const std::filesystem::path file = scope.fileIn(files);
    const bool isChanged = editSettingsFile(lazy.get(), files, file, scope.access(), editor);
    if (out.isJson()) {
        writeJson({{"file", file.string()}, {"isChanged", isChanged}}, out);
    } else {
        out << file.string() << (isChanged ? " is changed\n" : ": nothing changed\n");
    }
    return ExitCode::done;
}

}  // namespace

Action addEdit(CLI::App& command)
{
    setHelp(command, "Edit your personal settings file in a text editor",
            "The editor is $VISUAL, $EDITOR, or else sensible-editor, editor or vi. It edits a copy, which "
            "is checked before it replaces the file. If that fails, the copy is kept in "
            "$XDG_STATE_HOME/verdix/edit (default: ~/.local/state), and the next edit continues with it.\n"
            "Examples:\n  vxsettings edit\n  EDITOR='code --wait' vxsettings edit --scope installation");
    auto scope = std::make_shared<Scope>();
    scope->addOption(command);
    return [scope](LazySession& session, Output& out) { return edit(session, *scope, out); };
}

}  // namespace vx::tool
