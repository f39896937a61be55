include(${CMAKE_CURRENT_LIST_DIR}/Steps.cmake)
build_against(${CMAKE_CURRENT_LIST_DIR}/Host ${WORK}/cmake-host)
run(${WORK}/cmake-host/host ${TREE}/share/ZantoPlayerFramework/panorama.jpg)
