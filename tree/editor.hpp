#pragma once

#include <builder/factory_node.hpp>

namespace verdix::settings::tree {

// The pieces of the editor area that have a source of their own, in the order in which the area calls them.

/// The group "language": one group for each language that the editor highlights and indents.
void buildEditorLanguages(FactoryGroup& editor);

/// Code folding, the aids to writing and presenting, and the tool panels.
void buildEditorTools(FactoryGroup& editor);

}  // namespace verdix::settings::tree
