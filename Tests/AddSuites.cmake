# Runs after a test program is linked: writes the file that declares a CTest test for each of its
# suites.
#
# cmake -DPROGRAM=... -DNAME=... -DFILE=... -DPROPERTIES="NAME VALUE ..." -P AddSuites.cmake
execute_process(
    COMMAND ${PROGRAM} --gtest_list_tests
    OUTPUT_VARIABLE listed
    COMMAND_ERROR_IS_FATAL ANY
    TIMEOUT 60)
string(REPLACE ";" "\\;" listed "${listed}")
# an unmatched bracket in a parameter's text would join list items
string(REPLACE "[" "(" listed "${listed}")
string(REPLACE "]" ")" listed "${listed}")
string(REPLACE "\n" ";" lines "${listed}")

set(script "")
foreach(line IN LISTS lines)
    if(line MATCHES "^([^ ]+\\.)( .*)?$")
        set(suite ${CMAKE_MATCH_1})
        set(test "[==[${NAME}.${suite}*]==]")
        string(APPEND script "add_test(${test} [==[${PROGRAM}]==] [==[--gtest_filter=${suite}*]==])\n"
                             "set_tests_properties(${test} PROPERTIES SKIP_REGULAR_EXPRESSION "
                             "[==[\\[  SKIPPED \\]]==] ${PROPERTIES})\n")
    endif()
endforeach()
file(WRITE ${FILE} "${script}")
