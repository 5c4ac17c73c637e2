# The platform that the module is linked with: the embedded one, or one that a package brings.
#
# Cache option  VERDIX_PLATFORM  embedded, external (the module is all that is built then)
# Targets       vx::interfaces     the declarations that the module is written against
#               vx::data           data arrays
#               vx::foundation     feature switches, logging, access to the service framework
#               vx::settings_core  the settings core
#
# An external platform is the CMake package VerdixPlatform. It has the imported targets VerdixPlatform::Data,
# VerdixPlatform::Foundation and VerdixPlatform::SettingsCore. Each is a library that defines what the headers of its
# part in interfaces/ declare, and carries the folders of the platform's own headers: these are compiled against, not
# those in interfaces/. Only <builder/factory_node.hpp> is the module's; this project installs it for the platform.

set(VERDIX_PLATFORM embedded CACHE STRING "Platform to build the module for: embedded or external")
set_property(CACHE VERDIX_PLATFORM PROPERTY STRINGS embedded external)

if(VERDIX_PLATFORM STREQUAL "embedded")
    add_subdirectory(interfaces)
    add_subdirectory(platform)
elseif(VERDIX_PLATFORM STREQUAL "external")
    find_package(VerdixPlatform QUIET)
    if(NOT VerdixPlatform_FOUND)
        message(FATAL_ERROR "VERDIX_PLATFORM is \"external\", but CMake found no package VerdixPlatform. Add the "
                            "platform's installation prefix to CMAKE_PREFIX_PATH, or set VERDIX_PLATFORM to embedded. "
                            "${VerdixPlatform_NOT_FOUND_MESSAGE}")
    endif()
    foreach(part Data Foundation SettingsCore)
        if(NOT TARGET VerdixPlatform::${part})
            message(FATAL_ERROR "The package VerdixPlatform in ${VerdixPlatform_DIR} has no target "
                                "VerdixPlatform::${part}; ask its maker for one that has.")
        endif()
    endforeach()
    add_library(vx_interfaces INTERFACE)
    target_link_libraries(vx_interfaces INTERFACE
        VerdixPlatform::SettingsCore VerdixPlatform::Foundation VerdixPlatform::Data Boost::headers)
    add_library(vx::interfaces ALIAS vx_interfaces)
    add_library(vx::data ALIAS VerdixPlatform::Data)
    add_library(vx::foundation ALIAS VerdixPlatform::Foundation)
    add_library(vx::settings_core ALIAS VerdixPlatform::SettingsCore)
else()
    message(FATAL_ERROR "VERDIX_PLATFORM is \"${VERDIX_PLATFORM}\"; set it to embedded or external.")
endif()
