#include <settings_core/files/input_file.hpp>
#include <settings_core/files/layers.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "editing/settings_edit.hpp"
#include "editing/text_editor.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

struct EditOptions
{
    std::string scope = "personal";
};

/// Returns the settings file of a scope: for the installation the first one that exists, or else the first.
std::filesystem::path fileOfScope(const core::LayerFiles& files, std::string_view scope)
{
    if (scope == "personal") {
        return files.personal;
    }
    const auto existing = std::ranges::find_if(
        files.installation, [](const auto& file) { return !core::fileKind(file).empty(); });
    return existing == files.installation.end() ? files.installation.front() : *existing;
}

ExitCode edit(LazySession& lazy, const EditOptions& options, Output& out)
{
    const std::string editor = textEditorCommand();
    const core::LayerFiles files = lazy.layerFiles();
    const std::filesystem::path file = fileOfScope(files, options.scope);
    const bool isChanged = editSettingsFile(lazy.get(), files, file, editor);
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
            "is checked before it\nreplaces the file. If that fails, the copy is kept in "
            "$XDG_STATE_HOME/verdix/edit (default: ~/.local/state),\nand the next edit continues with it.\n"
            "Examples:\n  vxsettings edit\n  EDITOR='code --wait' vxsettings edit --scope installation");
    auto options = std::make_shared<EditOptions>();
    addChoice(command, "--scope", options->scope, {"personal", "installation"},
              "Which settings file to edit (default: personal)");
    return [options](LazySession& session, Output& out) { return edit(session, *options, out); };
}

}  // namespace vx::tool
