# Programs of the static library hold all they need but the data: these are found from the program's place when it is
# installed in the same prefix, and by the environment elsewhere.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
require_tool(COMPILER ${COMPILER_NAME})

file(REMOVE_RECURSE ${SCRATCH})
build_consumer(${SCRATCH}/build ${STATIC} -DCMAKE_INSTALL_PREFIX=${STATIC}/${COMPILER_NAME})
expect_output("${COLOUR}" env -i QX_CMS=${STATIC}/share/qxcms ${SCRATCH}/build/colour)
run(${CMAKE_COMMAND} --install ${SCRATCH}/build)
expect_output("${COLOUR}" env -i ${STATIC}/${COMPILER_NAME}/bin/colour)

if(PKG_CONFIG)
    build_with_pkg_config(${SCRATCH}/by_pkg_config ${STATIC} --static)
    expect_output("holds\n" ${SCRATCH}/by_pkg_config/boundary)
    expect_output("${COLOUR}" env -i QX_CMS=${STATIC}/share/qxcms ${SCRATCH}/by_pkg_config/colour)
endif()
