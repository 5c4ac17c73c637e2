#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildImageDisplayArea(FactoryGroup& root)
{
    auto imshow = addGroup(root, "imshow");
    addLogical(imshow, "AlwaysUseFitMagnification", false);
    addText(imshow, "BorderStyle", "loose", oneOf({"loose", "tight"}));
    addNumber(imshow, "InitialMagnification", 100);  // percent
    addText(imshow, "InitialMagnificationStyle", "numeric", oneOf({"numeric", "fit"}));
    addLogical(imshow, "ShowAxes", false);
}

}  // namespace verdix::settings::tree
