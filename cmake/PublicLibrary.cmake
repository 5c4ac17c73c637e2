# vx_set_public_library(TARGET FILE EXPORT_NAME): makes TARGET a library that other projects link: with a file name, a
# SONAME and the name of its installed target. It exports what VX_API marks, with the version VERDIX_<major>.
#
# The major version of the project is the version of the binary interface of all these libraries; docs/releasing.md says
# when to increase it. platform/symbols has the symbols that each library exports.

set(VX_ABI_VERSION ${PROJECT_VERSION_MAJOR})
set(VX_PUBLIC_EXPORTS "${PROJECT_BINARY_DIR}/public_exports.map")
configure_file("${CMAKE_CURRENT_LIST_DIR}/public_exports.map.in" "${VX_PUBLIC_EXPORTS}" @ONLY)

function(vx_set_public_library target file export_name)
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${file} EXPORT_NAME ${export_name} DEFINE_SYMBOL VX_EXPORTS
        VERSION ${PROJECT_VERSION} SOVERSION ${VX_ABI_VERSION})
    if(VX_LIBSTDCXX)  # libc++ compares types by the addresses of their names, which must therefore not be hidden
        vx_export_only(${target} "${VX_PUBLIC_EXPORTS}")
    endif()
endfunction()
