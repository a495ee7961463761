# A project that builds the library as a part of itself. By itself the library installs nothing there; asked to, it
# installs everything once.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)

build_project(${SOURCE}/tests/consumer/add_subdirectory ${SCRATCH}/build
    -UQXCMS_INSTALL -DQXCMS_SOURCE=${SOURCE} -DCMAKE_INSTALL_LIBDIR=lib64)
expect_output("holds\n" ${SCRATCH}/build/boundary)
expect_output("${COLOUR}" env -i ${SCRATCH}/build/colour)
file(STRINGS ${SCRATCH}/build/compile_commands.json flags REGEX "-Werror" ENCODING UTF-8)
if(flags)
    message(FATAL_ERROR "A warning in the library would stop the project around it:\n${flags}")
endif()

file(REMOVE_RECURSE ${SCRATCH}/alone ${SCRATCH}/together)
run(${CMAKE_COMMAND} --install ${SCRATCH}/build --prefix ${SCRATCH}/alone)
file(GLOB_RECURSE files RELATIVE ${SCRATCH}/alone ${SCRATCH}/alone/*)
if(NOT files STREQUAL "bin/colour")
    message(FATAL_ERROR "Installed are ${files}")
endif()

run(${CMAKE_COMMAND} -DQXCMS_INSTALL=ON ${SCRATCH}/build)
run(${CMAKE_COMMAND} --install ${SCRATCH}/build --prefix ${SCRATCH}/together)
expect_output("${COLOUR}" env -i ${SCRATCH}/together/bin/colour)
expect_file(${SCRATCH}/together/lib64/libqxcms.so.${VERSION} ${SCRATCH}/together/lib64/cmake/qxcms/qxcmsConfig.cmake)
file(STRINGS ${SCRATCH}/build/install_manifest.txt files ENCODING UTF-8)
set(once ${files})
list(REMOVE_DUPLICATES once)
if(NOT files STREQUAL once)
    message(FATAL_ERROR "Something is installed twice:\n${files}")
endif()
