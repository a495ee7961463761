# What the scripts of this folder share. Each is run by CTest as `cmake -D... -P script`.

# What surrounds the test run is none of the installed library's.
foreach(name CMAKE_PREFIX_PATH CPATH CXXFLAGS DESTDIR LDFLAGS LD_LIBRARY_PATH LIBRARY_PATH PKG_CONFIG_PATH QX_CMS
        qxcms_DIR qxcms_ROOT)
    unset(ENV{${name}})
endforeach()

# X, Y, Z of R(w) = 0.1 + 0.002 (w - 380) under D65 for the 2 degree observer, worked out by hand from the published
# tables every 10 nm over 380 to 730 nm: X = 100 sum(S R xbar) / sum(S ybar) = 44.98876, Y = 45.35363, Z = 27.33741.
set(COLOUR "44.989 45.354 27.337\n")

set(WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror)

# Ends the test as skipped (SKIP_REGULAR_EXPRESSION) when a tool is not there.
macro(require_tool tool package)
    if(NOT ${tool})
        message("SKIPPED: ${package} is not installed")
        return()
    endif()
endmacro()

# Runs a command that must end with 0; its standard output is left in `output`.
function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE errors)
    if(NOT result STREQUAL "0")
        list(JOIN ARGV " " command)
        message(FATAL_ERROR "${command}\nended with ${result}\n${out}\n${errors}")
    endif()
    set(output "${out}" PARENT_SCOPE)
endfunction()

# Runs a command that must print a text and nothing else.
function(expect_output text)
    run(${ARGN})
    if(NOT output STREQUAL text)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\nprinted\n${output}\ninstead of\n${text}")
    endif()
endfunction()

function(expect_file)
    foreach(file IN LISTS ARGN)
        if(NOT EXISTS ${file})
            message(FATAL_ERROR "${file} is missing")
        endif()
    endforeach()
endfunction()

# Configures and builds a project; further arguments go to cmake.
function(build_project source folder)
    run(${CMAKE_COMMAND} -S ${source} -B ${folder} -G ${GENERATOR}
        -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
        -DCMAKE_BUILD_TYPE=None ${ARGN})
    run(${CMAKE_COMMAND} --build ${folder} --parallel 2)
endfunction()

# Builds the programs of find_package/ against a prefix.
function(build_consumer folder prefix)
    list(JOIN WARNINGS " " flags)
    build_project(${SOURCE}/tests/consumer/find_package ${folder}
        -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_FLAGS=${flags}
        -DCMAKE_CXX_STANDARD=17 -DCMAKE_CXX_EXTENSIONS=OFF ${ARGN})
    expect_output("holds\n" ${folder}/boundary)
endfunction()

# The same by hand: one compiler call with what pkg-config tells. The words behind `folder` go to pkg-config.
function(build_with_pkg_config folder prefix)
    file(MAKE_DIRECTORY ${folder})
    file(GLOB_RECURSE description ${prefix}/*/qxcms.pc)
    get_filename_component(place "${description}" DIRECTORY)
    set(ENV{PKG_CONFIG_PATH} ${place})
    foreach(program colour boundary)
        run(${PKG_CONFIG} --cflags ${ARGN} qxcms)
        separate_arguments(compile UNIX_COMMAND "${output}")
        run(${PKG_CONFIG} --libs ${ARGN} qxcms)
        separate_arguments(link UNIX_COMMAND "${output}")
        run(${COMPILER} -std=c++17 ${WARNINGS} ${compile}
            ${SOURCE}/tests/consumer/${program}.cpp -o ${folder}/${program} ${link})
    endforeach()
endfunction()

# The demo by the command and with the charts of a prefix, from another folder and without an environment. The figures
# were worked out independently from the published tables: mean 1.002159, maximum 1.715778 (purple).
function(expect_demo prefix)
    set(charts "${prefix}/share/qxcms/charts")
    run(${CMAKE_COMMAND} -E chdir ${SCRATCH} env -i "${prefix}/${BINDIR}/qxcms"
        diff "${charts}/colorchecker_spectral.txt" "${charts}/colorchecker_aims.txt"
        --illuminant "CIE Illuminant C" --observer "2 degree" --formula 76)
    foreach(line "count +24" "mean +1\\.002" "maximum +1\\.716 +row 10, purple")
        if(NOT output MATCHES "\n +${line}\n")
            message(FATAL_ERROR "\"${line}\" is not in\n${output}")
        endif()
    endforeach()
endfunction()
