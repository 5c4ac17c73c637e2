#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildAppearanceArea(FactoryGroup& root)
{
    // The values of the two themes differ in case on purpose: their readers are case-sensitive.
    auto appearance = addGroup(root, "appearance", Hidden);
    addCharvec(appearance, "VERDIXTheme", "System", Hidden, oneOf({"System", "Light", "Dark"}));
    addUnset(appearance, "CurrentTheme", Hidden, stringScalar);  // set by the desktop when it starts

    auto figure = addGroup(appearance, "figure");
    addCharvec(figure, "GraphicsTheme", "auto", Hidden, oneOf({"auto", "light", "dark"}));
}

}  // namespace verdix::settings::tree
