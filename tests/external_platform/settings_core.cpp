// The settings core beside OutsideCore, which records the nodes.

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>
#include <settings/core/factory_settings_loader.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>

namespace settings::core {

FactorySettingsLoader::FactorySettingsLoader() = default;
FactorySettingsLoader::~FactorySettingsLoader() = default;
void FactorySettingsLoader::migrateData(const std::u16string&) {}

}  // namespace settings::core

namespace verdix::settings::internal {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayFactory;
using foundation::verdixdata::toUtf16;

Array charvec(std::u16string&& text)
{
    auto row = ArrayFactory().createArray<char16_t>({1, text.size()});
    text.copy(row.begin(), text.size());
    return row;
}

Array charvec(std::string&& text)
{
    return charvec(toUtf16(text));
}

Array cellstr(std::vector<std::string>&& texts)
{
    auto cells = ArrayFactory().createArray<Array>({1, texts.size()});
    std::ranges::transform(texts, cells.begin(), [](std::string& text) { return charvec(std::move(text)); });
    return cells;
}

Array cell(const foundation::verdixdata::ArrayDimensions& dimensions)
{
    return ArrayFactory().createArray<Array>(dimensions);
}

}  // namespace verdix::settings::internal
