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

/// Framework properties (BundleContext::GetProperty) that a configuration may set; each has a default.
/// int: the dlopen flags with which a bundle's library is loaded.
US_Framework_EXPORT extern const std::string LIBRARY_LOAD_OPTIONS;
/// The next three are only passed on to bundles: this framework neither logs nor stores files.
US_Framework_EXPORT extern const std::string FRAMEWORK_LOG;
US_Framework_EXPORT extern const std::string FRAMEWORK_STORAGE;
US_Framework_EXPORT extern const std::string FRAMEWORK_WORKING_DIR;

/// Framework properties that the framework sets: a UUID that is new at each start, "multi" for
/// multi-threaded, the name of the implementation, and its version.
US_Framework_EXPORT extern const std::string FRAMEWORK_UUID;
US_Framework_EXPORT extern const std::string FRAMEWORK_THREADING_SUPPORT;
US_Framework_EXPORT extern const std::string FRAMEWORK_VENDOR;
US_Framework_EXPORT extern const std::string FRAMEWORK_VERSION;

/// std::vector<std::string>: the interfaces that a service was registered under.
US_Framework_EXPORT extern const std::string OBJECTCLASS;
/// long: unique, ascending in the order of registration.
US_Framework_EXPORT extern const std::string SERVICE_ID;
/// int, 0 when absent: a lookup returns the services with the highest ranking first.
US_Framework_EXPORT extern const std::string SERVICE_RANKING;
US_Framework_EXPORT extern const std::string SERVICE_SCOPE;
US_Framework_EXPORT extern const std::string SCOPE_SINGLETON;
US_Framework_EXPORT extern const std::string SCOPE_BUNDLE;

}  // namespace cppmicroservices::Constants
