# Debian packages, for builds with the preset `debian`, whose folders are those that Debian prescribes: `cpack` creates
#
#   libverdix-settings<major>   Platform: the libraries. The number is that of their SONAMEs
#   libverdix-settings-dev      Development: all that is needed to build against them
#   verdix-factory-settings     Module, Tool: the bundle and the command
#
# Files that every package must have, such as copyright and changelog, are added by debian/AddFiles.cmake; what cpack
# does not support is changed in the finished packages by debian/Finish.cmake.

option(VERDIX_DEBIAN_PACKAGES "Let cpack create Debian packages; the preset debian sets all that they need" OFF)
if(NOT VERDIX_DEBIAN_PACKAGES)
    return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_PACKAGE_NAME verdix-factory-settings)
set(CPACK_PACKAGE_CONTACT "Verdix settings developers <settings@verdix.invalid>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE verdix-factory-settings)
# Dependencies on other packages are found by dpkg-shlibdeps, those of the packages on each other are stated.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
# Unless this is the default, cpack puts it before the descriptions, which have a first line of their own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${CMAKE_PROJECT_NAME} built using CMake")
set(about "\
Verdix is an environment with some 950 settings. This project describes them:
names, factory values, constraints and visibility, and what releases moved or
removed.

")

set(libraries "libverdix-settings${VX_ABI_VERSION}")
set(CPACK_COMPONENT_PLATFORM_GROUP libraries)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME ${libraries})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARIES_DESCRIPTION "settings of the Verdix environment - libraries\n${about}\
This package contains the libraries for programs that read, change or observe
settings: the settings core, data arrays, foundation and service framework.")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/debian/triggers")

set(boost "libboost${Boost_VERSION_MAJOR}.${Boost_VERSION_MINOR}-dev")
string(REPLACE boost boost-log boost_log "${boost}")
set(CPACK_COMPONENT_DEVELOPMENT_GROUP development)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libverdix-settings-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${libraries} ${same_version}, verdix-factory-settings ${same_version}, ${boost}, ${boost_log}")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "settings of the Verdix environment - development files\n${about}\
This package contains headers, a CMake package and a pkg-config file, to build
programs that use the libraries, and bundles for the service framework.")

set(CPACK_COMPONENT_MODULE_GROUP command)
set(CPACK_COMPONENT_TOOL_GROUP command)
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME verdix-factory-settings)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION utils)
# The command edit may run sensible-editor.
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${libraries} ${same_version}, sensible-utils")
set(CPACK_DEBIAN_COMMAND_DESCRIPTION "settings of the Verdix environment\n${about}\
This package contains the module with the descriptions, and vxsettings, a
command to look at settings, to change and check settings files, and to
migrate them from release to release.")

# The licence of the project, and that of CLI11, which has to go with programs that contain it.
if(VX_LICENSE STREQUAL "NOASSERTION")
    set(license unstated)
    set(license_text "The owner has not chosen a licence. No one else has permission to copy it.")
else()
    set(license "${VX_LICENSE}")
    file(READ "${PROJECT_SOURCE_DIR}/LICENSE" license_text)
    string(STRIP "${license_text}" license_text)
    string(REGEX REPLACE "\n([ \t]*\n)+" "\n.\n" license_text "${license_text}")
endif()
string(REPLACE "\n" "\n " license_text " ${license_text}")
file(READ /usr/share/doc/libcli11-dev/copyright cli11)
string(REGEX MATCH "Files: [*]\nCopyright: ([^\n]+)" found "${cli11}")
set(cli11_copyright "${CMAKE_MATCH_1}")
string(REGEX MATCH "\nLicense: BSD-3-clause\n( [^\n]*\n)+" cli11_license "${cli11}")
if(NOT cli11_copyright OR NOT cli11_license)
    message(FATAL_ERROR "The copyright file of the package libcli11-dev does not state the BSD-3-clause licence.")
endif()
string(STRIP "${cli11_license}" cli11_license)

# For the scripts, to which cpack passes variables whose names begin with CPACK_.
set(CPACK_VX_FILES "${CMAKE_CURRENT_BINARY_DIR}/debian")
set(CPACK_VX_LIBRARIES ${libraries})
set(CPACK_VX_CHANGELOG "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
foreach(file copyright changelog)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/debian/${file}.in" "${CPACK_VX_FILES}/${file}" @ONLY)
endforeach()
foreach(package libraries development command)
    string(TOUPPER ${package} PACKAGE)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/debian/${package}.overrides"
                   "${CPACK_VX_FILES}/${CPACK_DEBIAN_${PACKAGE}_PACKAGE_NAME}.overrides" COPYONLY)
endforeach()
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/debian/AddFiles.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/debian/Finish.cmake")
include(CPack)
