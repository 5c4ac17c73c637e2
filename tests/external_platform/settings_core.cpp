// A settings core whose loader and nodes are OutsideCore's.

#include <settings/core/factory_settings_loader.hpp>

namespace settings::core {

FactorySettingsLoader::FactorySettingsLoader() = default;
FactorySettingsLoader::~FactorySettingsLoader() = default;
void FactorySettingsLoader::migrateData(const std::u16string&) {}

}  // namespace settings::core
