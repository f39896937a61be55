# Writes OUTPUT, a C++ source that defines `const std::string_view SYMBOL` as the base64 text of the
# file INPUT. Runs as a script at build time, so that a changed file is embedded again by the next
# build.
execute_process(COMMAND base64 -w 4000 "${INPUT}" OUTPUT_VARIABLE text RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "base64 could not read ${INPUT}")
endif()
string(REGEX REPLACE "([^\n]+)\n?" "    \"\\1\"\n" text "${text}")
get_filename_component(name "${INPUT}" NAME)
file(WRITE "${OUTPUT}" "// ${name} as base64 text.\n#include <string_view>\n
// Longer than a compiler has to stand, which the ones used here do.
#pragma GCC diagnostic ignored \"-Woverlength-strings\"\n
extern const std::string_view ${SYMBOL};
const std::string_view ${SYMBOL} =\n${text}    ;\n")
