#pragma once

#include <cppmicroservices/ServiceProperties.h>

#include <bundle_file.hpp>
#include <string>
#include <vector>

namespace cppmicroservices {

/// One component of a manifest's scr section.
struct ComponentDescription
{
    std::string name;
    std::vector<std::string> interfaces;  // empty: the component offers no service
    ServiceProperties properties;
    bool enabled = true;
    bool immediate = false;

    /// prefix, such as "NewInstance_", and the name with an underscore for each "::".
    std::string FunctionName(const std::string& prefix) const;
};

/// The components of a manifest; none when it has no scr section. Throws std::runtime_error, naming bundle,
/// component and member, when the section is malformed or asks for what this framework does not do.
std::vector<ComponentDescription> describeComponents(const BundleManifest& manifest);

}  // namespace cppmicroservices
