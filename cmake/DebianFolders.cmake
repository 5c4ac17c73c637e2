# Run by cpack: moves files to the folders that Debian prescribes.
set(zsh "${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share/zsh")
file(RENAME "${zsh}/site-functions" "${zsh}/vendor-completions")
