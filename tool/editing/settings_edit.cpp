#include "editing/settings_edit.hpp"

#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/base_folders.hpp>
#include <settings_core/files/change_records.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_file.hpp>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "cli/command_error.hpp"
#include "cli/diagnostics.hpp"
#include "editing/edit_check.hpp"
#include "editing/edited_copy.hpp"
#include "editing/question.hpp"
#include "editing/text_editor.hpp"

namespace vx::tool {

namespace {

namespace fs = std::filesystem;
using Content = std::optional<std::string>;

constexpr std::size_t shownDiagnostics = 20;

/// Returns the content of a settings file. Throws if it could not be replaced after the edit.
Content readForEditing(const fs::path& file, core::FileAccess access)
{
    const core::LockedFile locked(file, core::lockTimeout, access);
    locked.requireWritable();
    return locked.content();
}

/// Returns the text with which the edit of a file that does not exist begins.
std::string newFileText(const Session& session)
{
    const fs::path schema = defaultSchemaFile();
    const auto release = session.publishedRelease();
    return core::emptySettingsFile(release ? core::formatReleaseName(*release) : "",
                                   core::fileKind(schema).empty() ? "" : schema.string());
}

/// Prints the first diagnostics to standard error.
void showDiagnostics(std::vector<core::Diagnostic> diagnostics)
{
    const std::size_t count = diagnostics.size();
    diagnostics.resize(std::min(count, shownDiagnostics));
    Output errors(STDERR_FILENO, "standard error", ColourChoice::never);
    writeDiagnostics(diagnostics, errors);
    if (count > shownDiagnostics) {
        errors << "... and " << count - shownDiagnostics << " more\n";
    }
    errors.flush();
}

/// Whether to continue with the text that an earlier edit left. If there is none, there is nothing to ask.
bool continuesEarlierEdit(const EditedCopy& copy, const Content& present, const std::string& newText)
{
    const Content kept = copy.text();
    if (!kept || kept == present || kept == copy.before().value_or(newText)) {
        return false;
    }
    const std::string situation = copy.path().string() + " holds the text of an earlier edit";
    const Answer answer = ask(situation, {Answer::edit, Answer::discard, Answer::keep});
    if (answer == Answer::keep) {
        throw CommandError(ExitCode::failed,
                           situation + ": edit it with vxsettings edit on a terminal, or remove it");
    }
    return answer == Answer::edit;
}

/// One edit of a settings file, from the text editor to the user's last decision.
class SettingsEdit
{
public:
    /// `begun` is the text with which the edit began.
    SettingsEdit(fs::path file, core::FileAccess access, const EditedCopy& copy, std::string begun,
                 EditCheck check)
        : file_(std::move(file)),
          access_(access),
          copy_(copy),
          begun_(std::move(begun)),
          before_(copy.before()),
          check_(std::move(check))
    {}

    /// Returns whether the settings file was changed; throws if the copy is to be kept.
    bool run(const std::string& editor)
    {
        Answer answer = Answer::edit;
        while (answer == Answer::edit) {
            runTextEditor(editor, copy_.path());
            const Content text = copy_.text();
            if (!text) {
                throw CommandError(ExitCode::failed,
                                   "nothing is changed: the editor removed " + copy_.path().string());
            }
            answer = text == begun_ ? Answer::discard : saveIfWanted(*text);
        }
        return answer != Answer::discard;
    }

private:
    /// Returns `save` or `overwrite` if the text is saved, otherwise what to do instead.
    Answer saveIfWanted(const std::string& text)
    {
        Answer answer = askAboutErrors(text);
        if (answer == Answer::save && !save(text, false)) {
            answer = decide("something else changed it since the edit began",
                            {Answer::edit, Answer::overwrite, Answer::discard, Answer::keep});
            if (answer == Answer::overwrite) {
                save(text, true);
            }
        }
        return answer;
    }

    Answer askAboutErrors(const std::string& text)
    {
        const auto [isSettingsFile, diagnostics] = check_.run(text);
        if (diagnostics.empty()) {
            return Answer::save;
        }
        showDiagnostics(diagnostics);
        const std::size_t count = diagnostics.size();
        const std::string problem = std::to_string(count) + (count == 1 ? " new error" : " new errors");
        return isSettingsFile ? decide(problem, {Answer::edit, Answer::save, Answer::discard, Answer::keep})
                              : decide(problem, {Answer::edit, Answer::discard, Answer::keep});
    }

    [[nodiscard]] Answer decide(const std::string& problem, std::initializer_list<Answer> answers) const
    {
        const Answer answer = ask(
            file_.string() + ": " + problem + "; the edited text is in " + copy_.path().string(), answers);
        if (answer == Answer::keep) {
            throw CommandError(ExitCode::failed, file_.string() + " is not changed: " + problem);
        }
        return answer;
    }

    /// Replaces the settings file; returns false if something else has changed it. Nobody waits for the lock
    /// while the user decides what then.
    bool save(const std::string& text, bool isForced) const
    {
        core::LockedFile locked(file_, core::lockTimeout, access_);
        if (!isForced && locked.content() != before_ && locked.content() != text) {
            return false;
        }
        core::ChangeRecorder(core::defaultStateFolder(), "edit").replace(locked, text);
        return true;
    }

    fs::path file_;
    core::FileAccess access_;
    const EditedCopy& copy_;
    std::string begun_;
    Content before_;
    EditCheck check_;
};

}  // namespace

bool editSettingsFile(const Session& session, const core::LayerFiles& files, const fs::path& file,
                      core::FileAccess access, const std::string& editor)
{
    const Content present = readForEditing(file, access);
    const std::string newText = newFileText(session);
    EditedCopy copy(core::defaultStateFolder(), file);
    if (!continuesEarlierEdit(copy, present, newText)) {
        copy.begin(present, present.value_or(newText));
    }
    const std::string begun = copy.before().value_or(newText);
    bool isChanged = false;
    try {
        isChanged =
            SettingsEdit(file, access, copy, begun, EditCheck(session, files, file, begun)).run(editor);
    } catch (const std::runtime_error& error) {
        const Content text = copy.text();
        if (text && text != begun) {
            throw CommandError(ExitCode::failed, std::string(error.what()) + "; the edited text is kept in " +
                                                     copy.path().string() + " for the next edit");
        }
        copy.discard();
        throw;
    }
    copy.discard();
    return isChanged;
}

}  // namespace vx::tool
