enable_testing()
find_package(GTest REQUIRED)
find_package(SQLite3 3.37 REQUIRED GLOBAL)
include(GoogleTest)

# Tests are many and their macros large: what is under test is optimised, they themselves hardly, and not at all where
# every access is checked, too.
add_library(qxcms_test_flags INTERFACE)
target_link_libraries(qxcms_test_flags INTERFACE qxcms_flags)
target_compile_options(qxcms_test_flags INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:$<IF:$<BOOL:${QXCMS_SANITIZE}>,-O0,-O1>>)

# Half the time of compiling a test goes into these. For programs of many files.
function(qxcms_precompile_test_headers target)
    target_precompile_headers(${target} PRIVATE
        <algorithm> <cmath> <string> <vector> <gmock/gmock.h> <gtest/gtest.h>)
    # g++ 12 takes the short form of std::string for all of it where operator+ moves a string, and says so as soon as
    # <string> comes precompiled.
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds>
        $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>)
endfunction()

# Every test of a program by its name; of a slow build the program as a whole, in parts that run beside each other.
function(qxcms_register_tests target)
    cmake_parse_arguments(PARSE_ARGV 1 given "" "PREFIX;TIMEOUT" "")
    set(timeout 120)
    if(given_TIMEOUT)
        set(timeout ${given_TIMEOUT})
    endif()
    if(NOT QXCMS_SANITIZE)
        gtest_discover_tests(${target}
            TEST_PREFIX "${given_PREFIX}" DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${timeout})
        return()
    endif()
    set(parts 4)
    math(EXPR last "${parts} - 1")
    foreach(part RANGE ${last})
        add_test(NAME ${target}.part${part} COMMAND ${target})
        set_tests_properties(${target}.part${part} PROPERTIES TIMEOUT 1200
            ENVIRONMENT "GTEST_TOTAL_SHARDS=${parts};GTEST_SHARD_INDEX=${part}")
    endforeach()
endfunction()

# The suites of the library; every test reaches inside through the object libraries.
file(GLOB qxcmsTestSources CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/tests/base/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/platform/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/spectral/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/colorspace/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/measurement/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/cgats/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/chain/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/house/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/data/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/support_services/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/support/*.cpp)
add_executable(qxcms_tests ${qxcmsTestSources})
target_link_libraries(qxcms_tests PRIVATE
    qxcms_objects qxcms_base qxcms_test_flags GTest::gmock GTest::gtest ${CMAKE_DL_LIBS} SQLite::SQLite3)
target_compile_definitions(qxcms_tests PRIVATE QXCMS_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
qxcms_precompile_test_headers(qxcms_tests)
add_dependencies(qxcms_tests qxcms_data)
qxcms_register_tests(qxcms_tests)

# The conversions of many colours with less than the processor can. EXPECTED_INSTRUCTION_SET lets the tests know what
# must have come of the variable that the library reads.
foreach(set common avx2 avx512)
    add_test(NAME fastLab.withNoMoreThan_${set}
        COMMAND qxcms_tests --gtest_filter=fastLab.*:labBatch.*:instructionSet.*)
    set_tests_properties(fastLab.withNoMoreThan_${set} PROPERTIES
        ENVIRONMENT "QXCMS_INSTRUCTION_SET=${set};EXPECTED_INSTRUCTION_SET=${set}")
endforeach()

foreach(suite exhaustive failing_platform hostile fuzz_corpus round_trips independent_reader peer digest headers
        examples consumer qc mixups cli surroundings)
    if(suite MATCHES "^(cli|mixups)$" AND NOT QXCMS_BUILD_COMMAND)
        continue()
    endif()
    if(EXISTS ${PROJECT_SOURCE_DIR}/tests/${suite}/CMakeLists.txt)
        add_subdirectory(tests/${suite})
    endif()
endforeach()
