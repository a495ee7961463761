# Builds and installs the static library, into a folder for libraries that lies deeper than usual: one archive that
# holds the kernel and the platform layer, and that of the comparison library.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)

file(REMOVE_RECURSE ${STATIC})
build_project(${SOURCE} ${SCRATCH} -DBUILD_SHARED_LIBS=OFF -DCMAKE_INSTALL_LIBDIR=lib/x86_64-linux-gnu
    -DQXCMS_BUILD_TESTS=OFF -DQXCMS_BUILD_COMMAND=OFF)
run(${CMAKE_COMMAND} --install ${SCRATCH} --prefix ${STATIC})

file(GLOB_RECURSE libraries RELATIVE ${STATIC} ${STATIC}/lib*.a ${STATIC}/lib*.so*)
if(NOT libraries STREQUAL "lib/x86_64-linux-gnu/libqxcms.a;lib/x86_64-linux-gnu/libqxcms_qc.a")
    message(FATAL_ERROR "The libraries are ${libraries}")
endif()
