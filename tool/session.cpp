#include "session.hpp"

#include <settings_core/nearest.hpp>

#include "bundle_file.hpp"
#include "failure.hpp"
#include "release_history.hpp"

namespace vx::tool {

namespace {

core::SettingsTree buildTree(const Host& host)
{
    try {
        return core::loadTree(host.loader());
    } catch (const std::exception& error) {
        throw Failure(ExitCode::notStarted, "bundle " + host.bundle().GetLocation() +
                                                " cannot build its tree: " + firstLine(error.what()));
    }
}

std::string whatBecame(const std::vector<ReleaseStep>& steps)
{
    std::string text;
    for (const ReleaseStep& step : steps) {
        text += text.empty() ? "it was " : ", then ";
        text += step.to.empty() ? "removed" : "moved to " + std::string(step.to);
        text.append(" in ").append(step.release);
    }
    return text;
}

}  // namespace

Session::Session(const std::filesystem::path& bundleFile) : host_(bundleFile), tree_(buildTree(host_)) {}

settings::core::ReleaseChangeTable Session::releaseChanges() const
{
    return core::loadReleaseChanges(host_.loader());
}

std::vector<std::string> Session::settingPathList() const
{
    return core::loadSettingPathList(host_.loader());
}

const core::Node& Session::node(const std::string& path) const
{
    const core::Node& root = *tree_.root();
    if (path == root.fullName()) {
        return root;
    }
    const std::string prefix = root.fullName() + ".";
    const std::string fullPath = path.starts_with(prefix) ? path : prefix + path;
    if (const core::Node* found = tree_.find(fullPath)) {
        return *found;
    }
    throw Failure(ExitCode::failed, "no such path: " + path + "; " + explainMissing(fullPath));
}

std::string Session::explainMissing(const std::string& fullPath) const
{
    const auto table = releaseChanges();
    const auto steps = changesFrom(table, fullPath);
    if (!steps.empty()) {
        return whatBecame(steps);
    }
    const auto near = core::nearestPaths(fullPath, tree_);
    return near.empty() ? "see the paths there are with: vxsettings list" : core::didYouMean(near);
}

}  // namespace vx::tool
