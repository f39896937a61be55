# Functions that the tests of the installed tree share. TREE is the path of the moved tree, WORK a
# scratch folder for each test.

# Runs a command; prints its output only if it fails.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
                    ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\nleft with ${result}:\n${output}")
    endif()
endfunction()

# Returns the output of a command that must succeed.
function(read_output variable)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    set(${variable} "${output}" PARENT_SCOPE)
endfunction()

function(start_empty folder)
    file(REMOVE_RECURSE ${folder})
    file(MAKE_DIRECTORY ${folder})
endfunction()

# Configures and builds a project against the installed tree.
function(build_against source build)
    file(REMOVE_RECURSE ${build})
    run(${CMAKE_COMMAND} -S ${source} -B ${build} -G Ninja -DCMAKE_PREFIX_PATH=${TREE}
        -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_STANDARD=20 ${ARGN})
    run(${CMAKE_COMMAND} --build ${build})
endfunction()
