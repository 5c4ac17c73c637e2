# `cpack` in the build folder creates verdix-factory-settings_<version>_<architecture>.deb with all components.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME verdix-factory-settings)
set(CPACK_PACKAGE_CONTACT "Verdix settings developers <settings@verdix.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION "\
The module that describes the core preferences of the Verdix environment, an
embedded platform to run it without the environment, the command vxsettings to
look at what it describes, and the headers to do so from other programs.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
# The libraries in the package depend on each other, and other packages may link them.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# Only needed to build against the headers.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libboost1.81-dev, libboost-log1.81-dev")
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/DebianFolders.cmake")
include(CPack)
