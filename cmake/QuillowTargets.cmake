# The project's compiler settings and the few functions with which every folder declares its targets.
include(GNUInstallDirs)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

find_program(QUILLOW_CCACHE ccache)
if(QUILLOW_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${QUILLOW_CCACHE})
endif()

# Where the helper programs (quillow-worker, quillow-fetch) are installed, and that folder seen from the programs that start them.
set(QUILLOW_LIBEXECDIR ${CMAKE_INSTALL_LIBEXECDIR}/quillow)
file(RELATIVE_PATH QUILLOW_LIBEXEC_FROM_BIN ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBEXECDIR}/quillow)

add_compile_options(-Wall -Wextra -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # False reports of this compiler when it optimises: bug 105651, "literal" + std::string; bug 105562 and similar ones,
    # an empty std::optional of a std::variant.
    add_compile_options(-Wno-restrict -Wno-maybe-uninitialized)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")
    add_compile_options(-fno-plt)
endif()
if(QUILLOW_SANITIZE)
    add_compile_options(-fsanitize=${QUILLOW_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUILLOW_SANITIZE})
endif()
if(QUILLOW_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(QUILLOW_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# quillow_library(NAME SOURCES... [LINK targets...]): a folder's static library. Project includes start at the root.
function(quillow_library name)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    if(ARG_UNPARSED_ARGUMENTS)
        add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
        target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
        target_link_libraries(${name} PUBLIC ${ARG_LINK})
    else()
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR})
        target_link_libraries(${name} INTERFACE ${ARG_LINK})
    endif()
endfunction()

# quillow_qt_library(...): the same for folders that use Qt, without Qt's unsafe conveniences.
function(quillow_qt_library name)
    quillow_library(${name} ${ARGN})
    get_target_property(type ${name} TYPE)
    if(NOT type STREQUAL "INTERFACE_LIBRARY")
        target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
        # Small rather than quick: the workers do what takes time, and -O3 makes the window's code 1.7 times as large.
        target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-Os>)
    endif()
endfunction()

# quillow_run_quickly(PROGRAM): for programs that read documents, many of them for a few milliseconds. Loading the shared C++
# library takes a fifth of such a run; malloc and free for small blocks take a tenth of a long one. Sanitizers need their own.
function(quillow_run_quickly program)
    if(NOT QUILLOW_SANITIZE AND NOT QUILLOW_COVERAGE)
        target_link_options(${program} PRIVATE -static-libstdc++ -static-libgcc)
        target_link_libraries(${program} PRIVATE quillow_allocation)
    endif()
endfunction()

# quillow_test(NAME SOURCES... LINK targets... [LABELS labels...]): a GoogleTest program with one ctest case for each test.
function(quillow_test name)
    cmake_parse_arguments(ARG "" "" "LINK;LABELS" ${ARGN})
    include(GoogleTest)
    add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE QUILLOW_SOURCE_DIR="${CMAKE_SOURCE_DIR}" QUILLOW_BINARY_DIR="${CMAKE_BINARY_DIR}")
    # A parameter is not part of a case's name: many are printed as bytes, with addresses that are others in each run.
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS "${ARG_LABELS}")
endfunction()

# quillow_fuzzer(NAME SOURCE LINK targets...): with QUILLOW_FUZZ a libFuzzer program. Otherwise a ctest case: the same target
# with a main that replays every file of fuzz/seeds/NAME.
function(quillow_fuzzer name source)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    if(QUILLOW_FUZZ)
        add_executable(${name} ${source})
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    else()
        add_executable(${name} ${source} ${CMAKE_SOURCE_DIR}/fuzz/ReplayMain.cpp)
        add_test(NAME replay.${name} COMMAND ${name} ${CMAKE_SOURCE_DIR}/fuzz/seeds/${name})
        set_tests_properties(replay.${name} PROPERTIES TIMEOUT 120 LABELS fuzz)
    endif()
    target_link_libraries(${name} PRIVATE ${ARG_LINK})
endfunction()
