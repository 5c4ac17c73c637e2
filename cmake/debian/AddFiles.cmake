# Run by cpack on the folders from which packages are made: adds the files that Debian demands of each package,
# compresses and moves others, and makes them all readable by every user, which the umask may have prevented.

# compress(FROM TO): without time and name, so that packages of equal builds are equal
function(compress from to)
    execute_process(COMMAND gzip --best --no-name --stdout "${from}" OUTPUT_FILE "${to}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(group libraries development command)
    string(TOUPPER ${group} GROUP)
    set(name "${CPACK_DEBIAN_${GROUP}_PACKAGE_NAME}")
    set(data "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${group}${CPACK_PACKAGING_INSTALL_PREFIX}/share")
    set(documents "${data}/doc/${name}")
    file(MAKE_DIRECTORY "${documents}")
    file(COPY "${CPACK_VX_FILES}/copyright" DESTINATION "${documents}")
    compress("${CPACK_VX_CHANGELOG}" "${documents}/changelog.gz")
    compress("${CPACK_VX_FILES}/changelog" "${documents}/changelog.Debian.gz")
    file(MAKE_DIRECTORY "${data}/lintian/overrides")
    file(COPY_FILE "${CPACK_VX_FILES}/${name}.overrides" "${data}/lintian/overrides/${name}")
endforeach()

set(data "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/command${CPACK_PACKAGING_INSTALL_PREFIX}/share")
file(RENAME "${data}/zsh/site-functions" "${data}/zsh/vendor-completions")
compress("${data}/man/man1/vxsettings.1" "${data}/man/man1/vxsettings.1.gz")
file(REMOVE "${data}/man/man1/vxsettings.1")

execute_process(COMMAND chmod --recursive u=rwX,go=rX "${CPACK_TEMPORARY_INSTALL_DIRECTORY}"
                COMMAND_ERROR_IS_FATAL ANY)
