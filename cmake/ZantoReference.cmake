# zanto-docs: generates the reference of the public headers, which are the installed ones, with
# Doxygen.
find_program(DOXYGEN doxygen)
if(NOT DOXYGEN)
    return()
endif()

set(pages embedding.md conventions.md hot-spots.md platform.md scripts.md)
list(TRANSFORM pages PREPEND ${PROJECT_SOURCE_DIR}/docs/)
foreach(library IN LISTS ZANTO_LIBRARIES)
    list(APPEND pages "$<JOIN:$<TARGET_PROPERTY:${library},HEADER_SET>, >")
endforeach()
list(JOIN pages " " pages)
file(
    GENERATE
    OUTPUT ${PROJECT_BINARY_DIR}/Doxyfile
    CONTENT "@INCLUDE = ${PROJECT_SOURCE_DIR}/docs/Doxyfile
INPUT = ${pages}
OUTPUT_DIRECTORY = ${PROJECT_BINARY_DIR}/docs
")
set(ZANTO_REFERENCE_COMMAND ${CMAKE_COMMAND} -E env ZANTO_SOURCE=${PROJECT_SOURCE_DIR} ${DOXYGEN}
                            ${PROJECT_BINARY_DIR}/Doxyfile)
add_custom_target(
    zanto-docs
    COMMAND ${ZANTO_REFERENCE_COMMAND}
    COMMENT "Writing the reference"
    VERBATIM)
