include(${CMAKE_CURRENT_LIST_DIR}/Steps.cmake)
start_empty(${WORK}/pkg-config-host)
set(ENV{PKG_CONFIG_PATH} ${TREE}/${LIBDIR}/pkgconfig)
read_output(flags pkg-config --cflags --libs ZantoHostHeadless)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${COMPILER} -std=c++20 ${CMAKE_CURRENT_LIST_DIR}/Host/main.cpp -o ${WORK}/pkg-config-host/host
    ${flags} -Wl,-rpath,${TREE}/${LIBDIR})
run(${WORK}/pkg-config-host/host ${TREE}/share/ZantoPlayerFramework/panorama.jpg)

read_output(version pkg-config --modversion ZantoPlayerFramework)
if(NOT version MATCHES "^1\\.0")
    message(FATAL_ERROR "pkg-config says version ${version}")
endif()
