#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildImageDisplayArea(FactoryGroup& root)
{
    auto imshow = addGroup(root, "imshow");
    addLogical(imshow, "AlwaysUseFitMagnification", false);
    addCharvec(imshow, "BorderStyle", "loose", oneOf({"loose", "tight"}));
    addNumber(imshow, "InitialMagnification", 100);  // percent
    addCharvec(imshow, "InitialMagnificationStyle", "numeric", oneOf({"numeric", "fit"}));
    addLogical(imshow, "ShowAxes", false);
}

}  // namespace verdix::settings::tree
