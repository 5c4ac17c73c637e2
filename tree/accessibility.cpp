#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildAccessibilityArea(FactoryGroup& root)
{
    auto accessibility = addGroup(root, "accessibility", Visible);
    addLogical(accessibility, "AccessKeysEnabled", true, Hidden);

    auto screenReader = addGroup(accessibility, "screenreader", Visible);
    addLogical(screenReader, "AnnounceActionCompletion", true, Visible);
}

}  // namespace verdix::settings::tree
