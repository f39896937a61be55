# Installs BUILD into a fresh folder, builds the consumer against it, and runs both programs.
set(prefix ${BUILD}/install-test/prefix)
set(consumer ${BUILD}/install-test/consumer)
file(REMOVE_RECURSE ${BUILD}/install-test)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/Consumer -B ${consumer} -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER})
run(${CMAKE_COMMAND} --build ${consumer})
run(${consumer}/consumer ${prefix}/share/ZantoPlayerFramework/panorama.jpg)
run(${prefix}/bin/zanto-player render --size 64x64 --output ${prefix}/picture.png)
if(NOT EXISTS ${prefix}/picture.png)
    message(FATAL_ERROR "the installed program wrote no picture")
endif()
