# A project that gives the library a platform layer of its own.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)

build_project(${SOURCE}/tests/consumer/substitute ${SCRATCH} -DQXCMS_SOURCE=${SOURCE})
expect_output("${COLOUR}" env -i ${SCRATCH}/colour)
expect_output("own platform: tmeasgeom: Unkown Geometry\nown platform: report: a report of the program\n"
    env -i ${SCRATCH}/report)
file(GLOB_RECURSE bundled ${SCRATCH}/libqxcms_platform*)
if(bundled)
    message(FATAL_ERROR "The bundled platform layer was built all the same: ${bundled}")
endif()
