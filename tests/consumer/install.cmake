# Installs the build, once for the other tests and once below DESTDIR, where only the place differs.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)

file(REMOVE_RECURSE ${INSTALLED} ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${INSTALLED})

set(ENV{DESTDIR} ${SCRATCH}/staged)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix /opt/qxcms)
file(GLOB_RECURSE staged RELATIVE ${SCRATCH}/staged/opt/qxcms ${SCRATCH}/staged/*)
file(GLOB_RECURSE installed RELATIVE ${INSTALLED} ${INSTALLED}/*)
list(SORT staged)
list(SORT installed)
if(NOT staged STREQUAL installed OR NOT installed)
    message(FATAL_ERROR "DESTDIR holds\n${staged}\ninstead of\n${installed}")
endif()
