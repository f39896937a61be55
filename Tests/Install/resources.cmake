# Edited shaders are loaded from the moved tree. A shader that does not compile shows that it was
# loaded, and that the application can catch the failure by its exception class.
include(${CMAKE_CURRENT_LIST_DIR}/Steps.cmake)
file(REMOVE_RECURSE ${WORK}/edited)
file(COPY ${TREE}/ DESTINATION ${WORK}/edited)
set(resources ${WORK}/edited/share/ZantoPlayerFramework)
file(WRITE ${resources}/FragmentPhotoShader.fsh "no shader")

function(expect_exit code)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE said)
    if(NOT result EQUAL code)
        message(FATAL_ERROR "${ARGN}\nleft with ${result}, not ${code}:\n${said}")
    endif()
endfunction()

build_against(${CMAKE_CURRENT_LIST_DIR}/Host ${WORK}/edited-host)
set(host ${WORK}/edited-host/host ${resources}/panorama.jpg)
expect_exit(0 ${host})
set(ENV{LD_PRELOAD} ${WORK}/edited/${LIBDIR}/libZantoPlayerFramework.so.1)
expect_exit(7 ${host})
# Without installed resources, the library uses its built-in ones.
file(REMOVE_RECURSE ${WORK}/edited/share/ZantoPlayerFramework)
expect_exit(0 ${WORK}/edited-host/host ${TREE}/share/ZantoPlayerFramework/panorama.jpg)
