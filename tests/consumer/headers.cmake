# Every installed header compiles alone, as C++17, with nothing but the installed tree behind it.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
require_tool(COMPILER ${COMPILER_NAME})

set(root ${INSTALLED}/${INCLUDEDIR})
file(GLOB_RECURSE headers RELATIVE ${root}/qxcms ${root}/qxcms/*.h)
if(NOT headers)
    message(FATAL_ERROR "No headers below ${root}")
endif()
foreach(header IN LISTS headers)
    run(${COMPILER} -std=c++17 -fsyntax-only ${WARNINGS} -I${root} -I${root}/qxcms
        -include qxcms/${header} -include ${header} -x c++ /dev/null)
endforeach()
