#include "session.hpp"

#include <settings_core/path_lookup.hpp>

#include "bundle_file.hpp"
#include "failure.hpp"

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
    try {
        return core::nodeAt(tree_, releaseChanges(), path);
    } catch (const core::UnknownPath& error) {
        throw Failure(ExitCode::failed, error.what());
    }
}

}  // namespace vx::tool
