# A compiler call with the flags of pkg-config.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
require_tool(COMPILER ${COMPILER_NAME})
require_tool(PKG_CONFIG pkg-config)

file(REMOVE_RECURSE ${SCRATCH})
build_with_pkg_config(${SCRATCH} ${INSTALLED})
set(ENV{LD_LIBRARY_PATH} ${INSTALLED}/${LIBDIR})
expect_output("holds\n" ${SCRATCH}/boundary)
expect_output("${COLOUR}" ${SCRATCH}/colour)

set(ENV{PKG_CONFIG_PATH} ${INSTALLED}/${LIBDIR}/pkgconfig)
expect_output("${VERSION}\n" ${PKG_CONFIG} --modversion qxcms)
