#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildStartupPluginsArea(FactoryGroup& root)
{
    auto startupPlugins = addGroup(root, "startup_plugins");

    auto prewarming = addGroup(startupPlugins, "prewarming");
    for (const char* plugin : {"GraphicsInit", "MConnectorAutoStart", "PerformanceStartupInitializer"}) {
        addValue(prewarming, plugin, internal::makeScalar<unsigned int>(0));
    }
}

}  // namespace verdix::settings::tree
