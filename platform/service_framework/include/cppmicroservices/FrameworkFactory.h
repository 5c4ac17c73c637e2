#pragma once

#include <cppmicroservices/Any.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <string>
#include <unordered_map>

namespace cppmicroservices {

class Framework;

/// The properties of a framework, which BundleContext::GetProperty returns.
using FrameworkConfiguration = std::unordered_map<std::string, Any>;

class US_Framework_EXPORT FrameworkFactory
{
public:
    Framework NewFramework(const FrameworkConfiguration& configuration);
    Framework NewFramework();
};

}  // namespace cppmicroservices
