#include <builder/factory_node.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <stdexcept>
#include <utility>

namespace settings::core {

FactorySettingsLoader::FactorySettingsLoader() = default;

FactorySettingsLoader::~FactorySettingsLoader() = default;

void FactorySettingsLoader::migrateData(const std::u16string& /*settingsFolder*/) {}

}  // namespace settings::core

namespace vx::core {

namespace {

/// Throws std::invalid_argument for a change that no settings file can be migrated by.
void requireUsable(const ::settings::core::ReleaseChangeSet& set)
{
    for (std::size_t row = 0; row < set.changes.size(); ++row) {
        if (const std::string message = describeMalformed(set.changes[row]); !message.empty()) {
            throw std::invalid_argument("release " + set.release + ", change " + std::to_string(row + 1) +
                                        ": " + message);
        }
    }
}

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
    ::settings::core::ReleaseChangeTable table;
    loader.getReleaseChanges(table);
    for (const auto& [index, set] : table) {
        requireUsable(set);
    }
    return table;
}

std::vector<std::string> loadSettingPathList(::settings::core::FactorySettingsLoader& loader)
{
    std::vector<std::string> paths;
    loader.getSettingPathList(paths);
    return paths;
}

}  // namespace vx::core
