include(${CMAKE_CURRENT_LIST_DIR}/Steps.cmake)
build_against(${CMAKE_CURRENT_LIST_DIR}/Interfaces ${WORK}/interfaces)
run(${WORK}/interfaces/interfaces)
