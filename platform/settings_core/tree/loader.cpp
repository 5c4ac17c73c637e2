#include <builder/factory_node.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <stdexcept>

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
    SettingsTree tree(loader.getRootGroupName());
    loadTree(loader, tree);
    return tree;
}

void loadTree(::settings::core::FactorySettingsLoader& loader, SettingsTree& tree)
{
    std::string rootName = loader.getRootGroupName();
    if (rootName != tree.root()->fullName()) {
        throw std::invalid_argument("The provider's root group is \"" + rootName +
                                    "\", that of the tree is \"" + tree.root()->getFullName() +
                                    "\": pass a tree with the provider's root.");
    }
    verdix::settings::FactoryGroup root(boost::make_shared<TreeContext>(), nullptr, tree.root(),
                                        std::move(rootName));
    loader.createTree(root);
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
