#include "editing/edit_check.hpp"

#include <settings_core/files/file_check.hpp>
#include <settings_core/files/text_position.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vx::tool {

namespace {

namespace fs = std::filesystem;
using core::Diagnostic;

/// Returns the files of the layers below a settings file, whose locks apply to it.
core::LayerFiles filesBelow(core::LayerFiles files, const fs::path& file)
{
    const auto own = std::ranges::find(files.installation, file);
    if (own != files.installation.end()) {
        files.installation.erase(files.installation.begin(), own + 1);
    }
    files.personal.clear();
    return files;
}

/// Returns what stays the same of a diagnostic when something else in the file changes: neither the number of
/// another line, nor the suggestions, which only the first unknown paths get.
std::string problemOf(const Diagnostic& diagnostic)
{
    const std::string& message = diagnostic.message;
    return diagnostic.path + ": " + message.substr(0, std::min(message.find(';'), message.find(" in line ")));
}

}  // namespace

EditCheck::EditCheck(const Session& session, const core::LayerFiles& files, fs::path file,
                     const std::string& before)
    : session_(session), file_(std::move(file)), lowerLayers_(session.tree(), filesBelow(files, file_))
{
    for (const Diagnostic& diagnostic : checkAll(before).diagnostics) {
        problemsBefore_.insert(problemOf(diagnostic));
    }
}

EditDiagnostics EditCheck::run(const std::string& text)
{
    EditDiagnostics result = checkAll(text);
    if (result.isSettingsFile) {
        auto known = problemsBefore_;
        std::erase_if(result.diagnostics, [&known](const Diagnostic& diagnostic) {
            return !known.extract(problemOf(diagnostic)).empty();
        });
    }
    return result;
}

EditDiagnostics EditCheck::checkAll(const std::string& text)
{
    EditDiagnostics result;
    result.diagnostics = core::checkSettingsFile(file_, text, session_.tree(), session_.releaseChanges());
    try {
        std::ranges::move(checkLocks(core::SettingsFile(text)), std::back_inserter(result.diagnostics));
    } catch (const core::ParseError&) {
        result.isSettingsFile = false;
    }
    return result;
}

std::vector<Diagnostic> EditCheck::checkLocks(const core::SettingsFile& content)
{
    std::vector<Diagnostic> diagnostics;
    for (const core::JsonMember& member : content.settings()) {
        const core::Node* node = session_.tree().find(member.name);
        const auto lock = node == nullptr ? std::nullopt : lowerLayers_.lockAgainst(file_, *node);
        if (lock) {
            diagnostics.push_back({member.name,
                                   "has no effect: " + lock->path + " is locked by " + lock->file.string(),
                                   content.positions().at(member.offset, file_)});
        }
    }
    return diagnostics;
}

}  // namespace vx::tool
