#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildAppearanceArea(FactoryGroup& root)
{
    // The words differ in case on purpose: capitals for the desktop's theme, none for that of figures.
    auto appearance = addGroup(root, "appearance", Hidden);
    addText(appearance, "VERDIXTheme", "System", Hidden, oneOf({"System", "Light", "Dark"}));
    addUnset(appearance, "CurrentTheme", Hidden, stringScalar);  // known once the desktop runs

    auto figure = addGroup(appearance, "figure");
    addText(figure, "GraphicsTheme", "auto", Hidden, oneOf({"auto", "light", "dark"}));
}

}  // namespace verdix::settings::tree
