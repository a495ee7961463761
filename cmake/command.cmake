if(NOT QXCMS_BUILD_COMMAND)
    return()
endif()

find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)

# What stands behind main, as a library, so that tests reach it.
file(GLOB_RECURSE qxcmsCommandSources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/qxcms/*.cpp)
list(REMOVE_ITEM qxcmsCommandSources ${PROJECT_SOURCE_DIR}/tools/qxcms/main.cpp)
# The recognition of encodings is shared with the kernel, which does not export it.
add_library(qxcms_command_objects OBJECT ${qxcmsCommandSources} ${PROJECT_SOURCE_DIR}/cgats/text_encoding.cpp)
target_include_directories(qxcms_command_objects PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(qxcms_command_objects
    PUBLIC qxcms_qc CLI11::CLI11 nlohmann_json::nlohmann_json PRIVATE qxcms_flags)

add_executable(qxcms_command tools/qxcms/main.cpp)
set_target_properties(qxcms_command PROPERTIES OUTPUT_NAME qxcms)
target_link_libraries(qxcms_command PRIVATE qxcms_command_objects qxcms_flags)
add_dependencies(qxcms_command qxcms_data)
