#include "render/effective_value.hpp"

#include <settings_core/values/value_format.hpp>

#include <utility>

namespace vx::tool {

core::LayerValue shownEffective(core::Layers& layers, const core::Node& setting)
{
    return core::shownValue(setting, layers.effective(setting));
}

std::optional<core::LayerValue> modifiedValue(core::Layers& layers, const core::Node& setting)
{
    if (!layers.hasOverride(setting)) {
        return std::nullopt;
    }
    core::LayerValue effective = layers.effective(setting);
    const bool isModified =
        effective.origin != core::Origin::factory && effective.value != setting.properties().factoryValue;
    return isModified ? std::optional(std::move(effective)) : std::nullopt;
}

std::string valueOnOneLine(const core::LayerValue& value, std::size_t width)
{
    return value.value.isAssigned() ? core::formatValueOnOneLine(value.value, width) : "(no value)";
}

std::string_view originMark(const core::LayerValue& value)
{
    if (value.origin != core::Origin::factory) {
        return core::originName(value.origin);
    }
    return value.computedBy.empty() ? "" : "computed";
}

void addValueCells(Table::Row& row, const core::LayerValue& value, const Output& out)
{
    constexpr std::size_t cellWidth = 60;  // in characters
    row.emplace_back(valueOnOneLine(value, out.valueWidth(cellWidth)), Style::value);
    row.emplace_back(originMark(value), Style::note);
}

void addLock(boost::json::object& document, const std::optional<core::SettingLock>& lock)
{
    if (lock) {
        document.emplace("lockedBy",
                         boost::json::object{{"file", lock->file.string()}, {"path", lock->path}});
    } else {
        document.emplace("lockedBy", nullptr);
    }
}

}  // namespace vx::tool
