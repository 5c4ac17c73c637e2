#include <builder/factory_node.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <utility>

namespace settings::core {

FactorySettingsLoader::FactorySettingsLoader() = default;

FactorySettingsLoader::~FactorySettingsLoader() = default;

void FactorySettingsLoader::migrateData(const std::u16string& /*settingsFolder*/) {}

}  // namespace settings::core

namespace vx::core {

namespace {

/// Opaque context that the builder passes from group to group.
struct TreeContext
{};

}  // namespace

SettingsTree loadTree(::settings::core::FactorySettingsLoader& loader)
{
    std::string rootName = loader.getRootGroupName();
    SettingsTree tree(rootName);
    verdix::settings::FactoryGroup root(boost::make_shared<TreeContext>(), nullptr, tree.root(),
                                        std::move(rootName));
    loader.createTree(root);
    return tree;
}

::settings::core::ReleaseChangeTable loadReleaseChanges(::settings::core::FactorySettingsLoader& loader)
{
    ::settings::core::ReleaseChangeTable changes;
    loader.getReleaseChanges(changes);
    return changes;
}

std::vector<std::string> loadSettingPathList(::settings::core::FactorySettingsLoader& loader)
{
    std::vector<std::string> paths;
    loader.getSettingPathList(paths);
    return paths;
}

}  // namespace vx::core
