# The installed command compares the installed charts.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)

file(MAKE_DIRECTORY ${SCRATCH})
expect_demo(${INSTALLED})
