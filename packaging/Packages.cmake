# The Debian package, made by `cpack -G DEB` in a build folder. ./package makes it from a build without the update check.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillow)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "convert RTF, RTFD, HTML and PDF documents to plain text")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Quillow turns documents into plain text: RTF, RTFD, HTML and PDF in, UTF-8
text files out, every word, in reading order. Documents are dropped on its
window; a message log says what became of each.
.
The program quillow-convert does the same on the command line, for many
documents and for scripts. Each document is read in a process without access
to files and network.")
set(CPACK_PACKAGE_CONTACT "The Quillow developers <${QUILLOW_SUPPORT_MAIL}>")
set(CPACK_PACKAGE_VENDOR "The Quillow developers")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Only the program: other components, such as files for developers, are not part of this package.
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};quillow;${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME};/")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${QUILLOW_APP_URL})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Libraries that are loaded when they are needed. The tool for dependencies does not see them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS libnettle8)
if(QUILLOW_UPDATE_CHECK AND QUILLOW_UPDATE_KEY)
    string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", libssl3")
endif()
# Without it the window of a Wayland session is a client of Xwayland.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Debian wants man pages and the changelog compressed, without names and times in the archives.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/Compress.cmake)
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${CMAKE_BINARY_DIR}/generated/debian/changelog @ONLY)
set(CPACK_QUILLOW_CHANGELOG ${CMAKE_BINARY_DIR}/generated/debian/changelog)

include(CPack)
