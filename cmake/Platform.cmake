# The platform that the module is linked with: the embedded platform, or an external one from a CMake package.
#
# Cache option  VERDIX_PLATFORM    embedded, or external (builds the module only)
# Targets       vx::interfaces     the declarations that the module is written against
#               vx::data           data arrays
#               vx::foundation     feature switches, logging, access to the service framework
#               vx::settings_core  the settings core
#
# An external platform is the CMake package VerdixPlatform. Its imported targets VerdixPlatform::Data, ::Foundation and
# ::SettingsCore are libraries that define what the corresponding headers in interfaces/ declare. Their include folders
# have the platform's own versions of these headers, and the module is compiled with those. Only
# <builder/factory_node.hpp> belongs to the module; this project installs it for the platform. A platform that uses the
# embedded service framework also has the target VerdixPlatform::ServiceFramework, so that both use the same library.

set(VERDIX_PLATFORM embedded CACHE STRING "Platform to build the module for: embedded or external")
set_property(CACHE VERDIX_PLATFORM PROPERTY STRINGS embedded external)

function(vx_require_external_platform)
    if(NOT VerdixPlatform_FOUND)
        message(FATAL_ERROR "VERDIX_PLATFORM is \"external\", but CMake found no package VerdixPlatform. Add the "
                            "platform's installation prefix to CMAKE_PREFIX_PATH, or set VERDIX_PLATFORM to embedded. "
                            "${VerdixPlatform_NOT_FOUND_MESSAGE}")
    endif()
    foreach(part Data Foundation SettingsCore)
        if(NOT TARGET VerdixPlatform::${part})
            message(FATAL_ERROR "The package VerdixPlatform in ${VerdixPlatform_DIR} has no target "
                                "VerdixPlatform::${part}; install a version of the platform that has it.")
        endif()
    endforeach()
endfunction()

if(VERDIX_PLATFORM STREQUAL "external")
    find_package(VerdixPlatform QUIET)
    vx_require_external_platform()
    add_library(vx::data ALIAS VerdixPlatform::Data)
    add_library(vx::foundation ALIAS VerdixPlatform::Foundation)
    add_library(vx::settings_core ALIAS VerdixPlatform::SettingsCore)
    add_library(vx_interfaces INTERFACE)
    target_link_libraries(vx_interfaces INTERFACE vx::settings_core vx::foundation vx::data Boost::headers)
    add_library(vx::interfaces ALIAS vx_interfaces)
elseif(NOT VERDIX_PLATFORM STREQUAL "embedded")
    message(FATAL_ERROR "VERDIX_PLATFORM is \"${VERDIX_PLATFORM}\"; set it to embedded or external.")
endif()
