// The module as its environment meets it: a bundle file, started by the service framework, whose loader
// service is called by a loader and a settings core that share no code with the module.

#include <settings_core/tree/settings_tree.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>
#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/servicecomponent/detail/ComponentInstance.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <dlfcn.h>
#include <optional>
#include <sstream>
#include <string>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/files.hpp>
#include <tests/support/outside_core.hpp>
#include <tests/support/outside_nodes.hpp>
#include <tests/support/running_framework.hpp>
#include <tests/support/soak.hpp>
#include <variant>
#include <vector>

namespace {

using settings::core::FactorySettingsLoader;
using tests::CreatedNode;
using tests::factoryLoader;
using tests::OutsideCore;
using verdix::settings::FactoryGroup;
using verdix::settings::detail::FactorySettingNode;

/// What a settings core is asked for while this tree is built: the name of the parent of each group and of
/// each setting that is no alias, then the node.
std::vector<std::string> requestsFor(const vx::core::SettingsTree& tree)
{
    using vx::core::NodeKind;
    std::vector<std::string> requests;
    for (const vx::core::Node* node : tree.nodes()) {
        if (node->kind() != NodeKind::alias) {
            requests.push_back("name " + node->parent()->getFullName());
        }
        requests.push_back((node->kind() == NodeKind::group ? "group " : "setting ") + node->getFullName());
    }
    return requests;
}

bool isChildOfRoot(const CreatedNode& node)
{
    return std::ranges::count(node.path, '.') == 1;
}

long childCount(const FactoryGroup& group)
{
    return std::ssize(group.groups) + std::ssize(group.settings);
}

TEST(Bundle, BuildsItsTreeForALoaderOfAnotherMake)
{
    std::optional<OutsideCore> core;
    {
        tests::RunningFramework framework;
        framework.start(VX_BUNDLE_FILE);
        const auto loader = factoryLoader(framework.context());
        ASSERT_NE(loader, nullptr);
        const auto requests = requestsFor(vx::core::loadTree(*loader));
        core.emplace(*loader);
        EXPECT_TRUE(core->isIntactAroundRoot());
        EXPECT_EQ(core->requests.size(), requests.size());
        for (std::size_t i = 0; i < requests.size(); ++i) {
            ASSERT_EQ(core->requests.at(i), requests[i]) << "request " << i;
        }

        const FactoryGroup copy = core->root;
        const auto expectChild = [&](const auto& children, const CreatedNode& node) {
            const FactorySettingNode& child = children.at(node.path.substr(node.path.rfind('.') + 1));
            EXPECT_EQ(child.isSetting(), node.isSetting);
            EXPECT_EQ("verdix." + child.name, node.path);
            EXPECT_EQ(child.annotation, "");
            EXPECT_EQ(child.settingsNode, node.handle);
            EXPECT_EQ(child.parentSettingsNode, core->root.settingsNode);
            EXPECT_EQ(child.treeContext, core->root.treeContext);
        };
        for (const CreatedNode& node : core->nodes) {
            SCOPED_TRACE(node.path);
            EXPECT_EQ(node.properties.additionalFileContext, nullptr);
            EXPECT_EQ(node.handle.use_count(), isChildOfRoot(node) ? 3 : 1) << "core, root and its copy";
            if (isChildOfRoot(node)) {
                node.isSetting ? expectChild(core->root.settings, node)
                               : expectChild(core->root.groups, node);
            }
        }
        const auto children = std::ranges::count_if(core->nodes, isChildOfRoot);
        EXPECT_EQ(childCount(core->root), children);
        EXPECT_EQ(core->root.treeContext.use_count(), 2 + 2 * children) << "the context is kept elsewhere";
        for (const auto& [name, group] : core->root.groups) {
            EXPECT_EQ(childCount(group), 0) << name << " is kept as it was when it was made";
        }
    }
}

TEST(Bundle, ARefusalAnywhereLeavesTheNodesMadeBefore)
{
    tests::RunningFramework framework;
    framework.start(VX_BUNDLE_FILE);
    const auto loader = factoryLoader(framework.context());
    const OutsideCore whole(*loader);
    const std::size_t step = tests::runsInFull() ? 1 : 3;
    for (std::size_t refuseAt = 0; refuseAt < whole.requests.size(); refuseAt += step) {
        OutsideCore core("verdix");
        core.refuseAt = refuseAt;
        try {
            loader->createTree(core.root);
            FAIL() << "nothing was thrown, though it was refused: " << whole.requests[refuseAt];
        } catch (const tests::Refused& refusal) {
            ASSERT_EQ(refusal.request, refuseAt);
        }
        ASSERT_EQ(core.requests.size(), refuseAt) << "nothing is asked for after a refusal";
        ASSERT_EQ(childCount(core.root), std::ranges::count_if(core.nodes, isChildOfRoot));
    }
}

bool holdsCallable(const CreatedNode& node)
{
    return std::holds_alternative<settings::core::CPPValidator>(node.properties.validator) ||
           node.properties.errorHandler;
}

/// All strings and values of the records.
std::string read(const std::vector<CreatedNode>& nodes, const settings::core::ReleaseChangeTable& releases)
{
    std::ostringstream out;
    const auto writeName = [&](const auto& function) {
        if constexpr (!std::is_same_v<decltype(function), const std::monostate&>) {
            out << ' ' << function.scope() << ' ' << function.function();
        }
    };
    for (const auto& [path, isSetting, properties, handle] : nodes) {
        out << path << ' ' << properties.aliasName() << ' '
            << vx::core::formatClassAndSize(properties.factoryValue) << ' '
            << vx::core::formatValue(properties.factoryValue);
        std::visit(writeName, properties.validator);
        std::visit(writeName, properties.runTimeDefault);
        for (const auto& validator : properties.valueValidators) {
            for (const std::u16string& value : validator.allowedValues) {
                out << ' ' << foundation::verdixdata::toUtf8(value);
            }
        }
        out << '\n';
    }
    for (const auto& [index, release] : releases) {
        out << release.release;
        for (const auto& change : release.changes) {
            out << ' ' << change.operation() << ' ' << change.from().at(0) << ' ' << change.to().size();
        }
    }
    return out.str();
}

TEST(Bundle, RecordsWithoutCallablesOutliveTheLibrary)
{
    using cppmicroservices::service::component::detail::ComponentInstance;
    const tests::RunningFramework framework;  // which the tree asks for services
    const tests::BundleCopy bundle(VX_BUNDLE_FILE);
    const auto isMapped = [&] {
        return tests::readFile("/proc/self/maps").find(bundle.file()) != std::string::npos;
    };
    void* const library = dlopen(bundle.file().c_str(), RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();
    ASSERT_TRUE(isMapped());
    const auto newInstance = reinterpret_cast<ComponentInstance* (*)()>(
        dlsym(library, "NewInstance_settings_verdix_FactorySettingsVerdix"));
    const auto deleteInstance = reinterpret_cast<void (*)(ComponentInstance*)>(
        dlsym(library, "DeleteInstance_settings_verdix_FactorySettingsVerdix"));

    OutsideCore core("verdix");
    settings::core::ReleaseChangeTable changes;
    ComponentInstance* const instance = newInstance();
    instance->CreateInstance(nullptr);
    instance->Activate();
    {
        const auto loader =
            cppmicroservices::ExtractInterface<FactorySettingsLoader>(instance->GetInterfaceMap());
        loader->createTree(core.root);
        loader->getReleaseChanges(changes);
    }
    instance->Deactivate();
    deleteInstance(instance);
    std::erase_if(core.nodes, holdsCallable);
    const std::string before = read(core.nodes, changes);

    ASSERT_EQ(dlclose(library), 0);
    ASSERT_FALSE(isMapped());
    const std::vector<CreatedNode> copies = core.nodes;
    core.nodes.clear();
    EXPECT_EQ(read(copies, settings::core::ReleaseChangeTable(changes)), before);
    const FactoryGroup root = core.root;
    EXPECT_EQ(childCount(root), childCount(core.root));
}

}  // namespace
