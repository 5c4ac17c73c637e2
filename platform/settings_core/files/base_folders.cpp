#include <settings_core/files/base_folders.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

namespace vx::core {

namespace {

namespace fs = std::filesystem;

std::string_view environment(const char* variable)
{
    const char* value = std::getenv(variable);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

fs::path settingsIn(const fs::path& folder)
{
    return folder / "verdix" / "settings.json";
}

/// The XDG specification says to ignore relative paths.
bool isUsable(std::string_view folder)
{
    return folder.starts_with('/');
}

/// Returns the user's home in the user database, or an empty string.
std::string databaseHome()
{
    std::vector<char> strings(16384);
    passwd entry = {};
    passwd* found = nullptr;
    while (::getpwuid_r(::geteuid(), &entry, strings.data(), strings.size(), &found) == ERANGE) {
        strings.resize(2 * strings.size());
    }
    return found == nullptr ? std::string() : found->pw_dir;
}

/// `wayOut` says what to do without a home.
fs::path homeFolder(const std::string& wayOut)
{
    const std::string_view variable = environment("HOME");
    if (!variable.empty() && !isUsable(variable)) {
        throw std::runtime_error("HOME is not an absolute path: " + std::string(variable) + wayOut);
    }
    std::string home = variable.empty() ? databaseHome() : std::string(variable);
    if (!isUsable(home)) {
        throw std::runtime_error("no folder of your own: HOME is not set, and user " +
                                 std::to_string(::geteuid()) + " has no home in the user database" + wayOut);
    }
    return home;
}

}  // namespace

fs::path defaultPersonalFile()
{
    const std::string_view folder = environment("XDG_CONFIG_HOME");
    return settingsIn(
        isUsable(folder)
            ? fs::path(folder)
            : homeFolder("; set HOME or XDG_CONFIG_HOME, or name the file with --personal FILE") / ".config");
}

fs::path defaultStateFolder()
{
    const std::string_view folder = environment("XDG_STATE_HOME");
    return (isUsable(folder) ? fs::path(folder)
                             : homeFolder("; set HOME or XDG_STATE_HOME") / ".local/state") /
           "verdix";
}

std::vector<fs::path> defaultInstallationFiles()
{
    std::string_view folders = environment("XDG_CONFIG_DIRS");
    std::vector<fs::path> files;
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        if (isUsable(folder) && std::ranges::find(files, settingsIn(folder)) == files.end()) {
            files.push_back(settingsIn(folder));
        }
    }
    if (files.empty()) {
        files.push_back(settingsIn("/etc/xdg"));
    }
    return files;
}

}  // namespace vx::core
