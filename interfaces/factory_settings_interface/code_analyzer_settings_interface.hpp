#pragma once

#include <foundation/export.hpp>

#include <string>

namespace factory_settings_interface {

/// Service that knows the code analyzer's configurations.
class VX_API CodeAnalyzerSettingsInterface
{
public:
    virtual ~CodeAnalyzerSettingsInterface() = default;

    /// Path of the configuration file that is active unless the user chooses another.
    [[nodiscard]] virtual std::u16string getDefaultConfigurationFile() = 0;
};

}  // namespace factory_settings_interface
