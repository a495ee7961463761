# One program per kind of untrusted bytes; tools/checks/run_fuzzers.sh runs them.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "The fuzzers need clang++: cmake --preset fuzz")
endif()

# The libraries tell a fuzzer which way they went; the questions it asks do not. A double that does not fit its
# integer is no concern of the undefined-behaviour sanitizer unless it is named.
target_compile_options(qxcms_library_flags INTERFACE
    -fsanitize=fuzzer-no-link -fsanitize=float-cast-overflow -fno-sanitize-recover=all)

add_library(qxcms_fuzz_questions OBJECT
    fuzz/document_questions.cpp
    fuzz/memory_meter.cpp
    fuzz/spectrum_questions.cpp)
target_link_libraries(qxcms_fuzz_questions PUBLIC qxcms_objects PRIVATE qxcms_flags)

file(GLOB qxcmsFuzzers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*_fuzzer.cpp)
foreach(source IN LISTS qxcmsFuzzers)
    get_filename_component(fuzzer ${source} NAME_WE)
    add_executable(${fuzzer} ${source})
    target_link_libraries(${fuzzer} PRIVATE qxcms_fuzz_questions qxcms_objects qxcms_base qxcms_flags)
    target_compile_options(${fuzzer} PRIVATE -fsanitize=fuzzer)
    target_link_options(${fuzzer} PRIVATE -fsanitize=fuzzer)
endforeach()
