# The service framework: an installed CppMicroServices 3.8 if CMake finds one, else the embedded framework.
#
# Cache option  VERDIX_SERVICE_FRAMEWORK  auto (installed if found, else embedded), embedded, system
# Targets       vx::service_framework     headers and libraries of the framework and of the component runtime's
#                                         interface
#               vx::framework_bundles     <framework_bundles.hpp>: the framework's name and version, and the bundles
#                                         that a host must install and start before any other
# Function      vx_add_bundle_manifest    see BundleManifest.cmake
# Variables     VX_FRAMEWORK_EMBEDDED     true when the embedded framework is used
#               VX_FRAMEWORK_LIBRARIES    targets of an installed framework that hosts must link

set(VERDIX_SERVICE_FRAMEWORK auto CACHE STRING "Service framework: auto, embedded or system")
set_property(CACHE VERDIX_SERVICE_FRAMEWORK PROPERTY STRINGS auto embedded system)

if(NOT VERDIX_SERVICE_FRAMEWORK MATCHES "^(auto|embedded|system)$")
    message(FATAL_ERROR "VERDIX_SERVICE_FRAMEWORK is \"${VERDIX_SERVICE_FRAMEWORK}\"; "
                        "set it to auto, embedded or system.")
endif()
if(NOT VERDIX_SERVICE_FRAMEWORK STREQUAL "embedded")
    # The order matters: the package of the component runtime uses the other targets without searching for them.
    set(components Framework ServiceComponent usAsyncWorkService DeclarativeServices)
    find_package(CppMicroServices 3.8 QUIET COMPONENTS ${components})
    if(NOT CppMicroServices_FOUND AND CppMicroServices_CONSIDERED_CONFIGS)
        # An unusable package was found: repeat without QUIET, so that CMake prints the reason.
        find_package(CppMicroServices 3.8 COMPONENTS ${components})
        string(CONCAT unusable "the CppMicroServices ${CppMicroServices_CONSIDERED_VERSIONS} that CMake found cannot be "
                               "used, for the reason above (${CppMicroServices_CONSIDERED_CONFIGS}).")
    endif()
endif()
if(VERDIX_SERVICE_FRAMEWORK STREQUAL "system" AND NOT CppMicroServices_FOUND)
    if(unusable)
        message(FATAL_ERROR "VERDIX_SERVICE_FRAMEWORK is \"system\", but ${unusable} Fix that installation, or set "
                            "VERDIX_SERVICE_FRAMEWORK to embedded.")
    endif()
    message(FATAL_ERROR "VERDIX_SERVICE_FRAMEWORK is \"system\", but CMake found no CppMicroServices 3.8. Add its "
                        "installation prefix to CMAKE_PREFIX_PATH, or set VERDIX_SERVICE_FRAMEWORK to embedded.")
elseif(unusable)
    message(WARNING "Using the embedded service framework: ${unusable} Set VERDIX_SERVICE_FRAMEWORK to embedded to "
                    "suppress this warning.")
endif()

# Uses the two libraries that declare the interface, with their headers as system headers.
function(vx_use_system_framework)
    add_library(vx_service_framework INTERFACE)
    set_target_properties(vx_service_framework PROPERTIES EXPORT_NAME ServiceFramework)
    get_target_property(includes CppMicroServices INTERFACE_INCLUDE_DIRECTORIES)
    target_include_directories(vx_service_framework SYSTEM INTERFACE "$<BUILD_INTERFACE:${includes}>")
    target_link_libraries(vx_service_framework INTERFACE CppMicroServices usServiceComponent Threads::Threads)
endfunction()

if(CppMicroServices_FOUND)
    set(VX_FRAMEWORK_EMBEDDED FALSE)
    set(VX_FRAMEWORK_NAME "CppMicroServices")
    set(VX_FRAMEWORK_VERSION "${CppMicroServices_VERSION}")
    set(VX_FRAMEWORK_BUNDLES "$<TARGET_FILE:DeclarativeServices>")
    vx_use_system_framework()
    vx_record_dependency(CppMicroServices VERSION "${CppMicroServices_VERSION}" LICENSE Apache-2.0
                         HOMEPAGE "https://github.com/CppMicroServices/CppMicroServices"
                         LIBRARIES libCppMicroServices.so* libus*.so*)
else()
    set(VX_FRAMEWORK_EMBEDDED TRUE)
    set(VX_FRAMEWORK_NAME "Verdix embedded service framework")
    set(VX_FRAMEWORK_VERSION "${PROJECT_VERSION}")
    set(VX_FRAMEWORK_BUNDLES "")
    add_subdirectory("${CMAKE_CURRENT_LIST_DIR}/../platform/service_framework"
                     "${CMAKE_CURRENT_BINARY_DIR}/platform/service_framework")
endif()
if(VX_FRAMEWORK_EMBEDDED AND TARGET VerdixPlatform::ServiceFramework)
    add_library(vx::service_framework ALIAS VerdixPlatform::ServiceFramework)
    set_target_properties(vx_service_framework PROPERTIES EXCLUDE_FROM_ALL TRUE)
else()
    add_library(vx::service_framework ALIAS vx_service_framework)
endif()
message(STATUS "Service framework: ${VX_FRAMEWORK_NAME} ${VX_FRAMEWORK_VERSION}")

set(VX_FRAMEWORK_BUNDLES_HEADER "${PROJECT_BINARY_DIR}/generated/framework_bundles.hpp")
file(GENERATE OUTPUT "${VX_FRAMEWORK_BUNDLES_HEADER}" CONTENT "\
#pragma once

#include <array>
#include <string_view>

namespace vx {

/// Name and version of the service framework, as in its framework properties.
inline constexpr std::string_view frameworkName = \"${VX_FRAMEWORK_NAME}\";
inline constexpr std::string_view frameworkVersion = \"${VX_FRAMEWORK_VERSION}\";

/// Bundle files that a host installs and starts, in this order, before any other.
inline constexpr std::array<std::string_view, $<IF:$<BOOL:${VX_FRAMEWORK_BUNDLES}>,1,0>> frameworkBundles = {\
$<$<BOOL:${VX_FRAMEWORK_BUNDLES}>:\"${VX_FRAMEWORK_BUNDLES}\">};

}  // namespace vx
")
add_library(vx_framework_bundles INTERFACE)
set_target_properties(vx_framework_bundles PROPERTIES EXPORT_NAME FrameworkBundles)
target_sources(vx_framework_bundles INTERFACE
    FILE_SET HEADERS BASE_DIRS "${PROJECT_BINARY_DIR}/generated" FILES "${VX_FRAMEWORK_BUNDLES_HEADER}")
target_link_libraries(vx_framework_bundles INTERFACE vx::service_framework)
if(NOT VX_FRAMEWORK_EMBEDDED)
    # The component runtime needs these libraries, but has no run path to them, so hosts must link them.
    set(VX_FRAMEWORK_LIBRARIES CppMicroServices usServiceComponent usAsyncWorkService)
    target_link_libraries(vx_framework_bundles INTERFACE ${VX_FRAMEWORK_LIBRARIES})
    if(VX_ELF)
        target_link_options(vx_framework_bundles INTERFACE LINKER:--no-as-needed)
    endif()
endif()
add_library(vx::framework_bundles ALIAS vx_framework_bundles)
include(BundleManifest)
