#pragma once

#include <cppmicroservices/ServiceProperties.h>

#include <bundle_file.hpp>
#include <string>
#include <vector>

namespace cppmicroservices {

/// A component in the scr section of a manifest.
struct ComponentDescription
{
    std::string name;
    std::vector<std::string> interfaces;  // empty: the component offers no service
    ServiceProperties properties;
    bool enabled = true;
    bool immediate = false;

    /// Returns the name of an exported function: prefix, such as "NewInstance_", then the component name with
    /// each "::" replaced by "_".
    std::string FunctionName(const std::string& prefix) const;
};

/// Reads the components of a manifest; none when it has no scr section. Throws std::runtime_error, naming
/// bundle, component and member, when the section is malformed or needs a feature that this framework lacks.
std::vector<ComponentDescription> readComponents(const BundleManifest& manifest);

}  // namespace cppmicroservices
