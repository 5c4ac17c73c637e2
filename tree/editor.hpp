#pragma once

#include <builder/factory_node.hpp>

namespace verdix::settings::tree {

// Parts of the editor area, in the order in which buildEditorArea calls them.

/// Builds the group "language", with a group for each language that the editor supports.
void buildEditorLanguages(FactoryGroup& editor);

/// Builds the groups for code folding, writing aids, presentations and tool panels.
void buildEditorTools(FactoryGroup& editor);

}  // namespace verdix::settings::tree
