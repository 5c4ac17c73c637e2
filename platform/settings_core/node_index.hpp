#pragma once

#include <settings_core/node.hpp>

#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::core {

/// What the nodes of one tree share: who is found under which path, and in which order they were made. The
/// keys are views into the nodes' own names.
class NodeIndex
{
public:
    std::unordered_map<std::string_view, const Node*> byPath;
    /// Without the root.
    std::vector<const Node*> inOrder;
};

}  // namespace vx::core
