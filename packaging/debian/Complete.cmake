# Run by CPack on the folders that become the packages: adds the copyright and the changelog, and compresses the changelog
# and the man pages, without names and times in the archives.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share)
    set(folder ${share}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    file(MAKE_DIRECTORY ${folder})
    file(COPY_FILE ${CPACK_QUILLOW_COPYRIGHT} ${folder}/copyright)
    file(COPY_FILE ${CPACK_QUILLOW_CHANGELOG} ${folder}/changelog)
    file(GLOB_RECURSE pages ${share}/man/*.1)
    execute_process(COMMAND gzip --best --no-name ${pages} ${folder}/changelog COMMAND_ERROR_IS_FATAL ANY)
endforeach()
