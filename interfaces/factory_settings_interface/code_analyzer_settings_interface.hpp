#pragma once

#include <foundation/export.hpp>

#include <string>

namespace factory_settings_interface {

/// Service with the configurations of the code analyzer.
class VX_API CodeAnalyzerSettingsInterface
{
public:
    virtual ~CodeAnalyzerSettingsInterface() = default;

    /// Returns the path of the default configuration file.
    [[nodiscard]] virtual std::u16string getDefaultConfigurationFile() = 0;
};

}  // namespace factory_settings_interface
