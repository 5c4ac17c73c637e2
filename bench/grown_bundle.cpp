// A bundle with the tree and the release changes of the module as often as VX_BENCH_COPIES says, each copy in
// a group of its own: "copy0", "copy1" and so on.

#include <builder/factory_tree.hpp>
#include <component/bundle_context.hpp>
#include <migration/release_changes.hpp>
#include <tree/areas.hpp>

#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/BundleInitialization.h>
#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>

#include <cstdlib>
#include <tuple>

namespace bench {

namespace {

using settings::core::ReleaseChangeSet;
using settings::core::ReleaseChangeTable;

const std::string root = "verdix";

int copies()
{
    const char* number = std::getenv("VX_BENCH_COPIES");
    return number == nullptr ? 1 : std::atoi(number);
}

std::string nameOf(int copy)
{
    return "copy" + std::to_string(copy);
}

/// Returns the paths in a copy.
std::vector<std::string> pathsIn(int copy, std::vector<std::string> paths)
{
    for (std::string& path : paths) {
        path.insert(root.size(), "." + nameOf(copy));
    }
    return paths;
}

}  // namespace

class GrownSettings final : public settings::core::FactorySettingsLoader
{
public:
    [[nodiscard]] std::string getRootGroupName() const override { return root; }
    [[nodiscard]] bool queryFlag() override { return false; }

    void createTree(verdix::settings::FactoryGroup& tree) override
    {
        for (int copy = 0; copy < copies(); ++copy) {
            auto group = addGroup(tree, nameOf(copy));
            verdix::settings::tree::buildRootTree(group);
        }
    }

    void getReleaseChanges(ReleaseChangeTable& table) override
    {
        ReleaseChangeTable original;
        settings::verdix::fillReleaseChanges(original);
        for (const auto& [index, set] : original) {
            ReleaseChangeSet& grown = table[index] = {set.release, set.crossesRootGroups, {}};
            for (int copy = 0; copy < copies(); ++copy) {
                for (const auto& change : set.changes) {
                    grown.changes.emplace_back(change.operation(), pathsIn(copy, change.from()),
                                               pathsIn(copy, change.to()));
                }
            }
        }
    }

    void getSettingPathList(std::vector<std::string>& /*paths*/) override {}
};

}  // namespace bench

using cppmicroservices::service::component::detail::ComponentInstance;
using cppmicroservices::service::component::detail::ComponentInstanceImpl;

extern "C" {

US_ABI_EXPORT ComponentInstance* NewInstance_bench_GrownSettings()
{
    return new ComponentInstanceImpl<bench::GrownSettings,
                                     std::tuple<settings::core::FactorySettingsLoader>>();
}

US_ABI_EXPORT void DeleteInstance_bench_GrownSettings(ComponentInstance* instance)
{
    delete instance;
}
}

CPPMICROSERVICES_INITIALIZE_BUNDLE

namespace settings::verdix {

cppmicroservices::BundleContextPrivate* getBundleContext()
{
    return US_GET_CTX_FUNC(US_BUNDLE_NAME)();
}

}  // namespace settings::verdix
