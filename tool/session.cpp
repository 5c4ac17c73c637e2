#include "session.hpp"

#include <settings_core/path_lookup.hpp>

#include <new>

#include "bundle_file.hpp"
#include "failure.hpp"

namespace vx::tool {

namespace {

core::SettingsTree buildTree(const Host& host)
{
    try {
        return core::loadTree(host.loader());
    } catch (const std::bad_alloc&) {
        throw;
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
    if (const core::Node* found = tree_.find(core::fullPath(tree_, path))) {
        return *found;
    }
    // Only an unknown path is worth the table of release changes, which the bundle builds on each request.
    try {
        return core::nodeAt(tree_, releaseChanges(), path);
    } catch (const core::UnknownPath& error) {
        throw Failure(ExitCode::failed, error.what());
    }
}

const core::Node& Session::setting(const std::string& path) const
{
    const core::Node& found = node(path);
    try {
        return core::resolveSetting(tree_, found);
    } catch (const std::runtime_error& error) {
        throw Failure(ExitCode::failed, error.what());
    }
}

core::LayerFiles LazySession::layerFiles() const
{
    core::LayerFiles files = namedFiles_;
    if (files.installation.empty() || files.personal.empty()) {
        core::LayerFiles usual = core::defaultLayerFiles();
        files.installation = files.installation.empty() ? std::move(usual.installation) : files.installation;
        files.personal = files.personal.empty() ? std::move(usual.personal) : files.personal;
    }
    return files;
}

void LazySession::leaveTree() const noexcept
{
    if (!session_) {
        return;
    }
    try {
        // Never destroyed, and still reachable where leaks are looked for.
        static auto& left = *new std::vector<core::SettingsTree>;
        left.push_back(session_->tree());
    } catch (const std::bad_alloc&) {
        return;  // the tree is destroyed with the session
    }
}

core::Layers& LazySession::layers()
{
    return layers_ ? *layers_ : layers_.emplace(get().tree(), layerFiles());
}

}  // namespace vx::tool
