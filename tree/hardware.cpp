#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildHardwareArea(FactoryGroup& root)
{
    auto hardware = addGroup(root, "hardware");
    for (const char* device : {"raspi", "webcam"}) {
        auto group = addGroup(hardware, device);
        addLogical(group, "IsOnline", false);
    }
}

}  // namespace verdix::settings::tree
