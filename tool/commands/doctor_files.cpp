#include "doctor_files.hpp"

#include <settings_core/files/file_check.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/releases/release_name.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "host/bundle_file.hpp"
#include "host/file_problems.hpp"

namespace vx::tool {

namespace {

namespace fs = std::filesystem;

std::string count(std::size_t number, const char* noun)
{
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

/// Returns what a file is of: "R2026a, 3 settings, 1 lock".
std::string describeContent(const core::SettingsFile& file)
{
    const core::JsonValue* release = file.release();
    const auto name = release == nullptr ? std::nullopt : core::parseRelease(*release);
    std::string text = name ? core::formatReleaseName(*name) : "no release";
    text += ", " + count(file.settings().size(), "setting");
    return file.locked().empty() ? text : text + ", " + count(file.locked().size(), "lock");
}

/// Whether a diagnostic concerns this tree, and not the settings of another plug-in.
bool isOfTree(const core::Diagnostic& diagnostic, const core::SettingsFile& file, const std::string& root)
{
    return file.find(diagnostic.path) == nullptr || core::isAtOrUnder(diagnostic.path, root);
}

/// Reports what is wrong in a file, but for single values, which are reported for all files together.
void reportContent(const Session& session, const fs::path& path, const std::string& content,
                   const core::SettingsFile& file, Report& report)
{
    const auto diagnostics = core::checkSettingsFile(path, content, session.tree(), session.releaseChanges());
    const std::string root = session.tree().root()->getFullName();
    const auto errors = static_cast<std::size_t>(std::ranges::count_if(
        diagnostics, [&](const core::Diagnostic& diagnostic) { return isOfTree(diagnostic, file, root); }));
    report.add(
        errors == 0, "content",
        describeContent(file) +
            (errors == 0 ? "" : ", " + count(errors, "error") + "; see vxsettings check " + path.string()));
}

/// Reports who else may change the file. Whoever may, decides over the user's settings.
void reportPermissions(const fs::path& path, bool isPersonal, Report& report)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return;
    }
    const bool isForeign = status.st_uid != 0 && status.st_uid != ::geteuid();
    const bool isOpen = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    const bool isUnreadable = !isPersonal && (status.st_mode & S_IROTH) == 0;
    const std::string name = path.string();
    if (isForeign) {
        report.add(false, "permissions",
                   name + " belongs to another user; fix with: chown " +
                       std::to_string(isPersonal ? ::geteuid() : 0) + " " + name);
    }
    if (isOpen) {
        report.add(false, "permissions", name + " can be written by others; fix with: chmod go-w " + name);
    }
    if (isUnreadable) {
        report.add(false, "permissions", name + " cannot be read by all users; fix with: chmod a+r " + name);
    }
}

/// Reports a file that does not exist, which is only wrong if the user's own cannot be created.
void reportMissing(const fs::path& path, core::Origin origin, Report& report)
{
    const std::string what(core::originName(origin));
    fs::path folder = path.parent_path();
    while (!fs::exists(fs::symlink_status(folder)) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    if (origin == core::Origin::personal && ::access((folder / "").c_str(), W_OK | X_OK) != 0) {
        report.add(false, what,
                   path.string() + " cannot be created: cannot write in " + folder.string() + ": " +
                       std::strerror(errno));
    } else {
        report.add(what, path.string() + ", which does not exist");
    }
}

/// Returns whether the file can be read, if it exists.
bool reportFile(const Session& session, const fs::path& path, core::Origin origin, Report& report)
{
    const std::string what(core::originName(origin));
    std::string advice;
    try {
        const std::optional<std::string> content = core::readFile(path);
        if (!content) {
            reportMissing(path, origin, report);
            return true;
        }
        advice = "; fix it by hand, or bring an earlier one back with: vxsettings undo";
        report.add(true, what, path.string());
        reportPermissions(path, origin == core::Origin::personal, report);
        const core::SettingsFile file = core::parseSettingsFile(*content, path);
        reportContent(session, path, *content, file, report);
        return true;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        report.add(false, what, firstLine(error.what()) + advice);
        return false;
    }
}

}  // namespace

void reportFiles(LazySession& lazy, Report& report)
{
    report.begin("settings files");
    const Session& session = lazy.get();
    const core::LayerFiles files = lazy.layerFiles();
    bool areReadable = true;
    for (const fs::path& installation : files.installation) {
        areReadable = reportFile(session, installation, core::Origin::installation, report) && areReadable;
    }
    areReadable = reportFile(session, files.personal, core::Origin::personal, report) && areReadable;
    if (areReadable) {
        for (const auto& [text, command, isError] : findFileProblems(session, lazy.layers())) {
            std::string finding = text;
            finding.append("; see ").append(command);
            if (isError) {
                report.add(false, "no effect", finding);
            } else {
                report.add("locked", finding);
            }
        }
    }
    report.end();
}

}  // namespace vx::tool
