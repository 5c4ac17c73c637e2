# vx_add_bundle_manifest(TARGET MANIFEST SYMBOLIC_NAME name): makes the shared library TARGET a bundle file with that
# manifest, in the form that the service framework of the build reads. This file is also a part of the installed CMake
# package, for bundles of other projects.
#
# Strip a bundle file before the manifest is appended, if at all (linker option -s), and install it as a plain file, by
# install(FILES $<TARGET_FILE:TARGET> ...): stripping removes the manifest.

function(vx_add_bundle_manifest target manifest)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "SYMBOLIC_NAME" "")
    if(NOT arg_SYMBOLIC_NAME OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "Call vx_add_bundle_manifest(<target> <manifest> SYMBOLIC_NAME <name>).")
    endif()
    cmake_path(ABSOLUTE_PATH manifest BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
    target_compile_definitions(${target} PRIVATE "US_BUNDLE_NAME=${arg_SYMBOLIC_NAME}")
    # A changed manifest must cause relinking, because the archive is appended after linking.
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${manifest}")
    foreach(appender vx_append_manifest VerdixFactorySettings::AppendManifest)
        if(TARGET ${appender})
            vx_append_embedded_manifest(${target} "${manifest}" "${arg_SYMBOLIC_NAME}" ${appender})
            return()
        endif()
    endforeach()
    vx_append_system_manifest(${target} "${manifest}" "${arg_SYMBOLIC_NAME}")
endfunction()

# For the embedded framework.
function(vx_append_embedded_manifest target manifest symbolic_name appender)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "$<TARGET_FILE:${appender}>")
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${appender} "$<TARGET_FILE:${target}>" "${symbolic_name}" "${manifest}"
        COMMENT "Appending the bundle manifest to ${target}"
        VERBATIM)
endfunction()

# For an installed CppMicroServices.
function(vx_append_system_manifest target manifest symbolic_name)
    # The resource compiler names files relative to its working folder, so the manifest needs a separate folder.
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/${target}.bundle")
    configure_file("${manifest}" "${folder}/manifest.json" COPYONLY)
    usFunctionEmbedResources(TARGET ${target} BUNDLE_NAME "${symbolic_name}" WORKING_DIRECTORY "${folder}"
                             FILES manifest.json APPEND)
    usFunctionGetResourceSource(TARGET ${target} OUT resource_source APPEND)
    target_sources(${target} PRIVATE "${resource_source}")
endfunction()
