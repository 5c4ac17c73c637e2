#include "host/file_problems.hpp"

#include <settings_core/files/ignored_settings.hpp>
#include <settings_core/releases/release_history.hpp>

#include <algorithm>
#include <string_view>

namespace vx::tool {

namespace {

std::string countSettings(std::size_t count, const std::string& file)
{
    return std::to_string(count) + (count == 1 ? " setting" : " settings") + " in " + file;
}

/// Returns how many of the paths a release moved or removed.
std::size_t countOutdated(const Session& session, const std::vector<std::string_view>& unknownPaths)
{
    if (unknownPaths.empty()) {
        return 0;  // without the bundle having to build its release changes
    }
    const core::ReleaseHistory history(session.releaseChanges());
    return static_cast<std::size_t>(std::ranges::count_if(
        unknownPaths, [&history](std::string_view path) { return !history.changesFrom(path).empty(); }));
}

void addProblems(const Session& session, const core::IgnoredSettings& ignored,
                 std::vector<FileProblem>& problems)
{
    const std::string file = ignored.file.string();
    const auto add = [&](std::size_t count, const char* one, const char* several, const std::string& command,
                         bool isError) {
        if (count != 0) {
            problems.push_back({countSettings(count, file) + (count == 1 ? one : several), command, isError});
        }
    };
    const std::size_t outdated = countOutdated(session, ignored.unknownPaths);
    add(outdated, " was moved or removed by a later release, and has no effect",
        " were moved or removed by later releases, and have no effect",
        "vxsettings migrate " + file + " --write", true);
    add(ignored.invalid + ignored.unknownPaths.size() - outdated,
        " has an unknown path or an invalid value, and is ignored",
        " have unknown paths or invalid values, and are ignored", "vxsettings check " + file, true);
    add(ignored.locked, " is locked by the installation, and has no effect",
        " are locked by the installation, and have no effect", "vxsettings list --locked", false);
}

}  // namespace

std::vector<FileProblem> findFileProblems(const Session& session, core::Layers& layers)
{
    std::vector<FileProblem> problems;
    for (const core::IgnoredSettings& ignored : core::ignoredSettings(layers, session.tree())) {
        addProblems(session, ignored, problems);
    }
    return problems;
}

}  // namespace vx::tool
