# Run by cpack on the finished packages: lets the libraries of several architectures be installed side by side, and
# replaces the scripts that cpack adds, which only run ldconfig, by the trigger that does so once for many packages.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    if(package MATCHES "/${CPACK_VX_LIBRARIES}_")
        set(content "${package}.content")
        execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${content}" COMMAND_ERROR_IS_FATAL ANY)
        file(REMOVE "${content}/DEBIAN/postinst" "${content}/DEBIAN/postrm")
        file(READ "${content}/DEBIAN/control" control)
        file(WRITE "${content}/DEBIAN/control" "Multi-Arch: same\n${control}")
        execute_process(COMMAND dpkg-deb --root-owner-group --build "${content}" "${package}" OUTPUT_QUIET
                        COMMAND_ERROR_IS_FATAL ANY)
        file(REMOVE_RECURSE "${content}")
    endif()
endforeach()
