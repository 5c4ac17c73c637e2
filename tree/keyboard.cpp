#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildKeyboardArea(FactoryGroup& root)
{
    const auto platform = oneOf({"windows", "linux", "mac"});

    auto keyboard = addGroup(root, "keyboard", Visible);

    auto delimiter = addGroup(keyboard, "delimiter", Visible);
    addLogical(delimiter, "ShowMatchesOnArrowKey", true);
    addLogical(delimiter, "ShowMatchesWhenTyping", true);

    auto shortcuts = addGroup(keyboard, "shortcuts", Hidden);
    addCharvec(shortcuts, "ActiveKeyset", "");
    addCharvec(shortcuts, "ActivePlatform", "", platform);  // empty until the user selects one of them
    addCharvec(shortcuts, "ActiveFilePath", "");
    addCell(shortcuts, "CustomFilePath", {}, cellOfStrings());
}

}  // namespace verdix::settings::tree
