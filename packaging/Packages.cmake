# The Debian packages, made by `cpack -G DEB` in a build folder: one for each install component that the build has.
# ./package makes them from a build without the update check.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillow)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Quillow developers <${QUILLOW_SUPPORT_MAIL}>")
set(CPACK_PACKAGE_VENDOR "The Quillow developers")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL quillow)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${QUILLOW_APP_URL})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The engines load it for the first encrypted PDF. The tool for dependencies does not see that.
set(loaded libnettle8)
set(control ${CMAKE_CURRENT_LIST_DIR}/debian)

# The first line of each description is the summary.
set(CPACK_DEBIAN_QUILLOW_PACKAGE_NAME quillow)
set(CPACK_DEBIAN_QUILLOW_DESCRIPTION
    "convert RTF, RTFD, HTML and PDF documents to plain text
Quillow turns documents into plain text: RTF, RTFD, HTML and PDF in, UTF-8
text files out, every word, in reading order. Documents are dropped on its
window; a message log says what became of each.
.
The program quillow-convert does the same on the command line, for many
documents and for scripts. Each document is read in a process without access
to files and network.")
set(CPACK_DEBIAN_QUILLOW_PACKAGE_SECTION text)
set(CPACK_DEBIAN_QUILLOW_PACKAGE_DEPENDS ${loaded})
if(QUILLOW_UPDATE_CHECK AND QUILLOW_UPDATE_KEY)
    string(APPEND CPACK_DEBIAN_QUILLOW_PACKAGE_DEPENDS ", libssl3")
endif()
# Without it the window of a Wayland session is a client of Xwayland.
set(CPACK_DEBIAN_QUILLOW_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")

if(QUILLOW_LIBRARY)
    list(APPEND CPACK_COMPONENTS_ALL library library-development)
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libquillowtext1)
    set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
        "plain text of RTF, RTFD, HTML and PDF documents, for programs in C
The library takes the bytes of a document and gives its text in UTF-8, every
word, in reading order. It reads the document in the calling process.")
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_SOURCE quillow)
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS ${loaded})
    # The trigger runs ldconfig. CPack would add scripts that run it, too, if the list did not name such scripts; it leaves
    # out files that do not exist.
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${control}/library/shlibs ${control}/library/symbols
        ${control}/library/triggers ${control}/library/no/postinst ${control}/library/no/postrm)

    set(CPACK_DEBIAN_LIBRARY-DEVELOPMENT_PACKAGE_NAME libquillowtext-dev)
    set(CPACK_DEBIAN_LIBRARY-DEVELOPMENT_DESCRIPTION
        "plain text of RTF, RTFD, HTML and PDF documents, development files
What programs that use libquillowtext are built with: the header, and the
files for pkg-config and CMake.")
    set(CPACK_DEBIAN_LIBRARY-DEVELOPMENT_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_LIBRARY-DEVELOPMENT_PACKAGE_SOURCE quillow)
    set(CPACK_DEBIAN_LIBRARY-DEVELOPMENT_PACKAGE_DEPENDS "libquillowtext1 (= ${PROJECT_VERSION})")
endif()

if(QUILLOW_PYTHON)
    list(APPEND CPACK_COMPONENTS_ALL python)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-quillow)
    set(CPACK_DEBIAN_PYTHON_DESCRIPTION
        "plain text of RTF, RTFD, HTML and PDF documents, Python module
The module gives the text of a document, every word, in reading order:
quillow.extract in this process, quillow.Pool in processes without access to
files and network.")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SOURCE quillow)
    # The extension is for one minor version of Python. quillow.Pool starts the worker of the same version of Quillow.
    foreach(part IN ITEMS MAJOR MINOR)
        get_directory_property(${part} DIRECTORY ${CMAKE_SOURCE_DIR}/python DEFINITION Python_VERSION_${part})
    endforeach()
    math(EXPR next "${MINOR} + 1")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
        "python3 (>= ${MAJOR}.${MINOR}~), python3 (<< ${MAJOR}.${next}), quillow (= ${PROJECT_VERSION}), ${loaded}")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${control}/python/postinst ${control}/python/prerm)
endif()

# What Debian wants in every package.
set(CPACK_PRE_BUILD_SCRIPTS ${control}/Complete.cmake)
configure_file(${control}/changelog.in ${CMAKE_BINARY_DIR}/generated/debian/changelog @ONLY)
set(CPACK_QUILLOW_CHANGELOG ${CMAKE_BINARY_DIR}/generated/debian/changelog)
set(CPACK_QUILLOW_COPYRIGHT ${control}/copyright)

include(CPack)
