# Runs after a test program is linked: writes the file that declares a CTest test for each of its
# suites.
#
# cmake -DPROGRAM=... -DNAME=... -DFILE=... -DPROPERTIES="NAME VALUE ..." [-DEACH=ON] -P
# AddSuites.cmake
#
# EACH declares a CTest test, and so a process, for each single test instead.
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
# Declares one CTest test that runs the tests matching FILTER.
function(add name filter)
    string(APPEND script "add_test([==[${name}]==] [==[${PROGRAM}]==] [==[--gtest_filter=${filter}]==])\n")
    string(APPEND script "set_tests_properties([==[${name}]==] PROPERTIES SKIP_REGULAR_EXPRESSION "
                         "[==[\\[  SKIPPED \\]]==] ${PROPERTIES})\n")
    set(script "${script}" PARENT_SCOPE)
endfunction()

set(suite "")
foreach(line IN LISTS lines)
    if(line MATCHES "^([^ ]+\\.)( .*)?$")
        set(suite ${CMAKE_MATCH_1})
        if(NOT EACH)
            add("${NAME}.${suite}*" "${suite}*")
        endif()
    elseif(EACH AND line MATCHES "^  ([^ ]+)")
        add("${NAME}.${suite}${CMAKE_MATCH_1}" "${suite}${CMAKE_MATCH_1}")
    endif()
endforeach()
file(WRITE ${FILE} "${script}")
