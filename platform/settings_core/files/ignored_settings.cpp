#include <settings_core/files/ignored_settings.hpp>
#include <settings_core/releases/release_history.hpp>

namespace vx::core {

namespace {

void count(Layers& layers, const Layers::FileLayer& layer, const Node& node, IgnoredSettings& ignored)
{
    const bool isSetting = node.kind() == NodeKind::setting;
    if (isSetting && layers.lockAgainst(layer.path, node)) {
        ++ignored.locked;
    } else if (!isSetting || !layers.valueIn(layer, node)->isValid()) {
        ++ignored.invalid;
    }
}

}  // namespace

std::vector<IgnoredSettings> ignoredSettings(Layers& layers, const SettingsTree& tree)
{
    std::vector<IgnoredSettings> all;
    for (const Layers::FileLayer& layer : layers.files()) {
        IgnoredSettings& ignored = all.emplace_back(IgnoredSettings{layer.path});
        if (!layer.content) {
            continue;
        }
        for (const JsonMember& setting : layer.content->settings()) {
            const Node* node = tree.find(setting.name);
            if (layer.content->find(setting.name) != &setting) {
                continue;  // of duplicates, the last one applies
            }
            if (node != nullptr) {
                count(layers, layer, *node, ignored);
            } else if (isAtOrUnder(setting.name, tree.root()->fullName())) {
                ignored.unknownPaths.push_back(setting.name);
            }
        }
    }
    return all;
}

}  // namespace vx::core
