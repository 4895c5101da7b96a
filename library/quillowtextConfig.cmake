# find_package(quillowtext) defines the target quillowtext::quillowtext.
include(${CMAKE_CURRENT_LIST_DIR}/quillowtextTargets.cmake)
