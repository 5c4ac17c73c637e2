#include "words.hpp"

namespace vx::tool {

std::string_view kindWord(core::NodeKind kind) noexcept
{
    switch (kind) {
    case core::NodeKind::group:
        return "group";
    case core::NodeKind::setting:
        return "setting";
    case core::NodeKind::alias:
        break;
    }
    return "alias";
}

std::string_view visibilityWord(const core::Node& node) noexcept
{
    const auto& visible = node.properties().visible;
    return !visible.isWritten() ? "default" : visible.value() ? "visible" : "hidden";
}

std::string qualifiedName(const ::settings::core::detail::FunctionName& function)
{
    return function.scope() + "." + function.function();
}

}  // namespace vx::tool
