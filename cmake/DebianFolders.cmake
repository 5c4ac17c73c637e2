# Run by cpack: where Debian wants what belongs elsewhere in other installations.
set(zsh "${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share/zsh")
file(RENAME "${zsh}/site-functions" "${zsh}/vendor-completions")
