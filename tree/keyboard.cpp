#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildKeyboardArea(FactoryGroup& root)
{
    const auto platform = oneOf({u"windows", u"linux", u"mac"});

    auto keyboard = addGroup(root, "keyboard", "Hidden", false);

    auto delimiter = addGroup(keyboard, "delimiter", "Hidden", false);
    addLogical(delimiter, "ShowMatchesOnArrowKey", true);
    addLogical(delimiter, "ShowMatchesWhenTyping", true);

    auto shortcuts = addGroup(keyboard, "shortcuts", "Hidden", true);
    addText(shortcuts, "ActiveKeyset", "");
    addText(shortcuts, "ActivePlatform", "", platform);  // none of the words until somebody chooses one
    addText(shortcuts, "ActiveFilePath", "");
    addCell(shortcuts, "CustomFilePath", {}, cellOfTexts());
}

}  // namespace verdix::settings::tree
