if(PROJECT_IS_TOP_LEVEL)
    option(BUILD_SHARED_LIBS "Build the libraries as shared ones" ON)
elseif(NOT DEFINED BUILD_SHARED_LIBS)
    # The libraries of the project around this one stay what they are.
    set(BUILD_SHARED_LIBS ON)
endif()
option(QXCMS_BUILD_COMMAND "Build the qxcms command (needs CLI11 and nlohmann-json)" ${PROJECT_IS_TOP_LEVEL})
option(QXCMS_BUILD_TESTS "Build the tests (needs GoogleTest)" ${PROJECT_IS_TOP_LEVEL})
option(QXCMS_BUILD_BENCHMARKS "Build the benchmarks (needs Google Benchmark)" OFF)
option(QXCMS_BUILD_FUZZERS "Build the fuzzers (needs clang and its runtime libraries)" OFF)
option(QXCMS_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(QXCMS_WARNINGS_AS_ERRORS "Let every warning stop the build" ${PROJECT_IS_TOP_LEVEL})
option(QXCMS_INSTALL "Install the library, the command and the data" ${PROJECT_IS_TOP_LEVEL})
set(QXCMS_PLATFORM_TARGET "" CACHE STRING
    "A target that implements platform/*.h instead of the bundled platform layer")

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

include(GNUInstallDirs)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# One place for every product, so that the build tree looks like an installed one and the platform layer finds
# the data the same way in both.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# An installed program finds the libraries wherever the prefix is moved to.
file(RELATIVE_PATH qxcmsBinToLib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH "$ORIGIN/${qxcmsBinToLib}")

# What every target of the project is compiled with.
add_library(qxcms_flags INTERFACE)
target_compile_features(qxcms_flags INTERFACE cxx_std_20)
target_compile_options(qxcms_flags INTERFACE
    -ffp-contract=off
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
    # g++ 12 sees an overlap in "text" + std::string that is not there.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<BOOL:${QXCMS_WARNINGS_AS_ERRORS}>:-Werror>)
if(QXCMS_SANITIZE)
    target_compile_options(qxcms_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
        # Instrumented code makes g++ 12 see uninitialised members inside the standard library.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(qxcms_flags INTERFACE -fsanitize=address,undefined)
endif()

# Flags of the libraries alone: nothing is exported by accident, nothing runs before main or after it.
add_library(qxcms_library_flags INTERFACE)
target_link_libraries(qxcms_library_flags INTERFACE qxcms_flags)
target_compile_options(qxcms_library_flags INTERFACE
    $<$<CXX_COMPILER_ID:Clang>:-Wglobal-constructors -Wexit-time-destructors>)

# Objects go into shared libraries whatever the libraries are, and hide what is not marked.
function(qxcms_library_properties target)
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
endfunction()
