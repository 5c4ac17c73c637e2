# Installation, and the CMake and pkg-config packages for other projects.
#
# Components  Module       the bundle, and the native libraries that its tree names
#             Platform     the libraries of the embedded platform
#             Tool         vxsettings, with completions, manual page, JSON Schema and catalog
#             Development  headers, the CMake package VerdixFactorySettings with what other projects need to make
#                          bundles, the pkg-config file
#
# Files that the build writes to the data folder in the build folder, such as the manual page and the catalog, are
# installed in the same place of the installation.

include(CMakePackageConfigHelpers)
set(package "${CMAKE_INSTALL_LIBDIR}/cmake/VerdixFactorySettings")
set(components Module)
set(bundle_name com_tarnwick_verdix_factory_settings)
set(bundle_name "${CMAKE_SHARED_LIBRARY_PREFIX}${bundle_name}${CMAKE_SHARED_LIBRARY_SUFFIX}")
set(bundle "${CMAKE_INSTALL_LIBDIR}/verdix/bundles/${bundle_name}")

# Installed as a plain file, because stripping a library removes the archive appended to it.
install(FILES "${PROJECT_BINARY_DIR}/${bundle}" COMPONENT Module
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/verdix/bundles")

function(vx_install_platform)
    set(headers "${CMAKE_INSTALL_INCLUDEDIR}/verdix-factory-settings")
    install(TARGETS vx_interfaces EXPORT Interfaces
        FILE_SET HEADERS DESTINATION "${headers}" COMPONENT Development
        INCLUDES DESTINATION "${headers}")  # for projects with CMake before 3.23, which has no file sets
    install(FILES "${PROJECT_SOURCE_DIR}/builder/factory_node.hpp"
            DESTINATION "${headers}/builder" COMPONENT Development)
    if(VX_FRAMEWORK_EMBEDDED)
        # In a separate folder, which projects that use an installed CppMicroServices must not search.
        set(framework_headers FILE_SET HEADERS DESTINATION "${headers}/service_framework" COMPONENT Development
                              INCLUDES DESTINATION "${headers}/service_framework")
        install(TARGETS vx_append_manifest EXPORT Platform
            RUNTIME DESTINATION "${CMAKE_INSTALL_LIBDIR}/verdix" COMPONENT Development)
    endif()
    install(FILES "${PROJECT_SOURCE_DIR}/cmake/BundleManifest.cmake" DESTINATION "${package}" COMPONENT Development)
    install(TARGETS vx_service_framework EXPORT Platform
        LIBRARY COMPONENT Platform NAMELINK_COMPONENT Development ${framework_headers})
    install(TARGETS vx_data vx_foundation vx_settings_core vx_framework_bundles vx_platform EXPORT Platform
        LIBRARY COMPONENT Platform NAMELINK_COMPONENT Development
        FILE_SET HEADERS DESTINATION "${headers}" COMPONENT Development)
    install(TARGETS vxsavevars vxservices vxgraphics_state
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/verdix/native" COMPONENT Module)
    foreach(component Interfaces Platform)
        install(EXPORT ${component} FILE VerdixFactorySettings${component}.cmake NAMESPACE VerdixFactorySettings::
                DESTINATION "${package}" COMPONENT Development)
    endforeach()
endfunction()

function(vx_install_tool)
    set(data "${CMAKE_INSTALL_DATADIR}")
    install(TARGETS vxsettings COMPONENT Tool)
    install(DIRECTORY "${PROJECT_BINARY_DIR}/${data}/" DESTINATION "${data}" COMPONENT Tool)
    set(scripts "${PROJECT_SOURCE_DIR}/tool/completion/vxsettings")
    install(FILES "${scripts}.bash" DESTINATION "${data}/bash-completion/completions" RENAME vxsettings COMPONENT Tool)
    install(FILES "${scripts}.zsh" DESTINATION "${data}/zsh/site-functions" RENAME _vxsettings COMPONENT Tool)
    install(FILES "${scripts}.fish" DESTINATION "${data}/fish/vendor_completions.d" COMPONENT Tool)
endfunction()

function(vx_install_pkg_config_file)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX OUTPUT_VARIABLE to_prefix
               BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
    if(VX_FRAMEWORK_EMBEDDED)
        set(framework_flags "-I\${includedir}/service_framework")
        set(framework_libraries "-lvxserviceframework")
    else()
        set(framework_flags "-I$<JOIN:$<TARGET_PROPERTY:CppMicroServices,INTERFACE_INCLUDE_DIRECTORIES>, -I>")
        # What vx_framework_bundles links, and with a run path, as CMake adds one.
        list(TRANSFORM VX_FRAMEWORK_LIBRARIES REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE framework_libraries)
        list(JOIN framework_libraries " " framework_libraries)
        if(VX_ELF)
            string(PREPEND framework_libraries "-Wl,--push-state,--no-as-needed ")
            string(APPEND framework_libraries " -Wl,--pop-state,-rpath,$<TARGET_FILE_DIR:CppMicroServices>")
        endif()
    endif()
    configure_file(cmake/verdix-factory-settings.pc.in verdix-factory-settings.pc.in @ONLY)
    file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/verdix-factory-settings.pc"
         INPUT "${PROJECT_BINARY_DIR}/verdix-factory-settings.pc.in")
    install(FILES "${PROJECT_BINARY_DIR}/verdix-factory-settings.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
            COMPONENT Development)
endfunction()

if(VERDIX_PLATFORM STREQUAL "embedded")
    list(APPEND components Interfaces Platform)
    vx_install_platform()
    vx_install_tool()
    vx_install_pkg_config_file()
endif()

configure_package_config_file(cmake/VerdixFactorySettingsConfig.cmake.in VerdixFactorySettingsConfig.cmake
    INSTALL_DESTINATION "${package}" PATH_VARS bundle)
write_basic_package_version_file(VerdixFactorySettingsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/VerdixFactorySettingsConfig.cmake"
              "${PROJECT_BINARY_DIR}/VerdixFactorySettingsConfigVersion.cmake"
        DESTINATION "${package}" COMPONENT Development)
