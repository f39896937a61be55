# Installs BUILD and moves the result, so that files with absolute paths fail in the tests that
# follow.
include(${CMAKE_CURRENT_LIST_DIR}/Steps.cmake)
file(REMOVE_RECURSE ${TREE} ${WORK}/first-place)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first-place --strip)
file(RENAME ${WORK}/first-place ${TREE})
