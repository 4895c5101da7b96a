# Run by CPack on the folder that becomes the package: adds the changelog and compresses it and the man pages.
set(usr ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
file(COPY_FILE ${CPACK_QUILLOW_CHANGELOG} ${usr}/share/doc/quillow/changelog)
file(GLOB_RECURSE pages ${usr}/share/man/*.1)
execute_process(COMMAND gzip --best --no-name ${pages} ${usr}/share/doc/quillow/changelog COMMAND_ERROR_IS_FATAL ANY)
