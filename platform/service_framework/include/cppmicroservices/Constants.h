#pragma once

#include <cppmicroservices/FrameworkConfig.h>

#include <string>

/// Keys and values of manifests, framework properties and service properties.
namespace cppmicroservices::Constants {

US_Framework_EXPORT extern const std::string SYSTEM_BUNDLE_LOCATION;
US_Framework_EXPORT extern const std::string SYSTEM_BUNDLE_SYMBOLICNAME;

US_Framework_EXPORT extern const std::string BUNDLE_ACTIVATOR;
US_Framework_EXPORT extern const std::string BUNDLE_SYMBOLICNAME;
US_Framework_EXPORT extern const std::string BUNDLE_VERSION;

/// Framework properties (BundleContext::GetProperty): who made the running framework, and its version.
US_Framework_EXPORT extern const std::string FRAMEWORK_VENDOR;
US_Framework_EXPORT extern const std::string FRAMEWORK_VERSION;

/// std::vector<std::string>: the interfaces that a service was registered under.
US_Framework_EXPORT extern const std::string OBJECTCLASS;
/// long: unique, ascending in order of registration.
US_Framework_EXPORT extern const std::string SERVICE_ID;
/// int, 0 when absent: the higher, the earlier in a look-up.
US_Framework_EXPORT extern const std::string SERVICE_RANKING;
US_Framework_EXPORT extern const std::string SERVICE_SCOPE;
US_Framework_EXPORT extern const std::string SCOPE_SINGLETON;
US_Framework_EXPORT extern const std::string SCOPE_BUNDLE;

}  // namespace cppmicroservices::Constants
