# A prefix is renamed, to a path with a blank and an accent: what is in it runs on with its data, and projects find it.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
require_tool(COMPILER ${COMPILER_NAME})

file(REMOVE_RECURSE ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/before)
file(RELATIVE_PATH up ${SCRATCH}/before/bin ${SCRATCH}/before/${LIBDIR})
build_consumer(${SCRATCH}/build ${SCRATCH}/before
    -DCMAKE_INSTALL_PREFIX=${SCRATCH}/before "-DCMAKE_INSTALL_RPATH=$ORIGIN/${up}")
run(${CMAKE_COMMAND} --install ${SCRATCH}/build)

string(ASCII 195 169 accent)
set(after "${SCRATCH}/moved pr${accent}fix")
file(RENAME ${SCRATCH}/before "${after}")
expect_output("${COLOUR}" env -i "${after}/bin/colour")
if(WITH_COMMAND)
    expect_demo("${after}")
endif()

build_consumer("${SCRATCH}/build again" "${after}")
expect_output("${COLOUR}" "${SCRATCH}/build again/colour")
if(PKG_CONFIG)
    build_with_pkg_config("${SCRATCH}/by pkg-config" "${after}")
    set(ENV{LD_LIBRARY_PATH} "${after}/${LIBDIR}")
    expect_output("${COLOUR}" "${SCRATCH}/by pkg-config/colour")
endif()
