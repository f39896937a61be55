# Installs BUILD and moves what was installed: whatever knows where it was put fails in what follows.
include(${CMAKE_CURRENT_LIST_DIR}/Steps.cmake)
file(REMOVE_RECURSE ${TREE} ${WORK}/first-place)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first-place --strip)
file(RENAME ${WORK}/first-place ${TREE})
