#include "render/effective_value.hpp"

#include <review/tree_json.hpp>

namespace vx::tool {

core::LayerValue shownEffective(core::Layers& layers, const core::Node& setting)
{
    return core::shownValue(setting, layers.effective(setting));
}

std::string fileOf(const core::LayerValue& value)
{
    return value.origin == core::Origin::factory ? std::string() : value.source;
}

std::string originMark(const core::LayerValue& value)
{
    return value.origin == core::Origin::factory ? std::string() : std::string(originName(value.origin));
}

boost::json::object effectiveJson(const core::LayerValue& value)
{
    return {{"value", review::valueJson(value.value)},
            {"origin", core::originName(value.origin)},
            {"file", review::stringOrNull(fileOf(value))}};
}

}  // namespace vx::tool
