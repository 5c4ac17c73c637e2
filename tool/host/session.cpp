#include "host/session.hpp"

#include <settings_core/files/base_folders.hpp>

#include <new>

#include "cli/command_error.hpp"
#include "host/bundle_file.hpp"

namespace vx::tool {

namespace {

core::SettingsTree buildTree(const Host& host)
{
    try {
        return core::loadTree(host.loader());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw CommandError(ExitCode::notStarted, "bundle " + host.bundle().GetLocation() +
                                                     " cannot build its tree: " + firstLine(error.what()));
    }
}

}  // namespace

Session::Session(const std::filesystem::path& bundleFile) : host_(bundleFile), tree_(buildTree(host_)) {}

const settings::core::ReleaseChangeTable& Session::releaseChanges() const
{
    if (!releases_) {
        try {
            releases_ = core::loadReleaseChanges(host_.loader());
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            throw CommandError(ExitCode::notStarted,
                               "bundle " + host_.bundle().GetLocation() +
                                   " has no usable release changes: " + firstLine(error.what()));
        }
    }
    return *releases_;
}

std::vector<std::string> Session::settingPathList() const
{
    return core::loadSettingPathList(host_.loader());
}

std::optional<core::ReleaseName> Session::publishedRelease() const
{
    const auto& headers = host_.bundle().GetHeaders();
    const auto named = headers.find("verdix.release");
    if (named != headers.end()) {
        if (auto release = core::parseReleaseName(named->second.ToStringNoExcept())) {
            return release;
        }
    }
    return core::newestRelease(releaseChanges());
}

const core::Node& Session::node(const std::string& path) const
{
    if (const core::Node* found = tree_.find(core::fullPath(tree_, path))) {
        return *found;  // without the bundle having to build its release changes
    }
    if (!unknownPaths_) {
        unknownPaths_.emplace(tree_, releaseChanges());
    }
    try {
        return core::nodeAt(tree_, *unknownPaths_, path);
    } catch (const core::UnknownPath& error) {
        throw CommandError(ExitCode::failed, error.what());
    }
}

const core::Node& Session::setting(const std::string& path) const
{
    const core::Node& found = node(path);
    try {
        return core::resolveSetting(tree_, found);
    } catch (const std::runtime_error& error) {
        throw CommandError(ExitCode::failed, error.what());
    }
}

core::LayerFiles LazySession::layerFiles() const
{
    core::LayerFiles files = namedFiles_;
    if (files.installation.empty()) {
        files.installation = core::defaultInstallationFiles();
    }
    if (files.personal.empty()) {
        files.personal = core::defaultPersonalFile();
    }
    return files;
}

void LazySession::leakTree() const noexcept
{
    if (!session_) {
        return;
    }
    try {
        // Never destroyed, but still reachable, so that leak checkers do not report it.
        static auto& leaked = *new std::vector<core::SettingsTree>;
        leaked.push_back(session_->tree());
    } catch (const std::bad_alloc&) {
        return;  // the tree is destroyed with the session
    }
}

core::Layers& LazySession::layers(bool showsFactoryOnly)
{
    if (!layers_) {
        layers_.emplace(get().tree(), showsFactoryOnly ? core::LayerFiles() : layerFiles());
    }
    return *layers_;
}

}  // namespace vx::tool
