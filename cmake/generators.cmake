# The programs that make the table sources, the illuminant files and the demo charts from the CSV files in data/.
# Each takes the root that it reads from and the root that it writes to.
add_executable(generate_tables EXCLUDE_FROM_ALL tools/generators/generate_tables.cpp)
add_executable(generate_illuminants EXCLUDE_FROM_ALL tools/generators/generate_illuminants.cpp)
add_executable(generate_charts EXCLUDE_FROM_ALL tools/generators/generate_charts.cpp $<TARGET_OBJECTS:qxcms_base>)
target_link_libraries(generate_charts PRIVATE qxcms)

set(qxcmsGenerators generate_tables generate_illuminants generate_charts)
foreach(generator IN LISTS qxcmsGenerators)
    target_include_directories(${generator} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${generator} PRIVATE qxcms_flags)
endforeach()

# Rewrites every generated file in the source tree.
add_custom_target(regenerate_data
    COMMAND generate_tables ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}
    COMMAND generate_illuminants ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}
    COMMAND generate_charts ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}
    COMMENT "Rewriting the generated files from data/" VERBATIM)

# The tests run the generators.
if(TARGET qxcms_tests)
    add_dependencies(qxcms_tests ${qxcmsGenerators})
endif()
