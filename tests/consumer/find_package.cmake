# A CMake project that finds the installed library.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
require_tool(COMPILER ${COMPILER_NAME})

file(REMOVE_RECURSE ${SCRATCH})
build_consumer(${SCRATCH} ${INSTALLED})
expect_output("${COLOUR}" ${SCRATCH}/colour)
