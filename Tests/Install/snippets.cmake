include(${CMAKE_CURRENT_LIST_DIR}/Steps.cmake)
build_against(${CMAKE_CURRENT_LIST_DIR}/Snippets ${WORK}/snippets -DPAGE=${PAGE})
# The second program of the page renders without a window.
run(${WORK}/snippets/program-2 ${TREE}/share/ZantoPlayerFramework/panorama.jpg ${WORK}/snippets/it.png)
if(NOT EXISTS ${WORK}/snippets/it.png)
    message(FATAL_ERROR "the page's program wrote no picture")
endif()
