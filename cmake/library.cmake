set(qxcmsIncludes
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/qxcms>)

# The bundled platform layer, or a substitute.
if(QXCMS_PLATFORM_TARGET)
    set(qxcmsPlatform ${QXCMS_PLATFORM_TARGET})
else()
    add_library(qxcms_platform
        platform/default/directory_search.cpp
        platform/default/file_access.cpp
        platform/default/interpolation.cpp
        platform/default/logical_names.cpp
        platform/default/object_factory.cpp
        platform/default/reports.cpp
        platform/default/resolved_file.cpp
        platform/default/text_compare.cpp
        platform/default/vectors.cpp)
    qxcms_library_properties(qxcms_platform)
    set_target_properties(qxcms_platform PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION 0 EXPORT_NAME platform)
    target_include_directories(qxcms_platform PUBLIC ${qxcmsIncludes})
    target_compile_features(qxcms_platform PUBLIC cxx_std_17)
    target_link_libraries(qxcms_platform PRIVATE $<BUILD_INTERFACE:qxcms_library_flags> ${CMAKE_DL_LIBS})
    add_library(qxcms::platform ALIAS qxcms_platform)
    set(qxcmsPlatform qxcms_platform)
endif()

# Number text, used by every floor.
add_library(qxcms_base OBJECT base/number_text.cpp)
qxcms_library_properties(qxcms_base)
target_include_directories(qxcms_base PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(qxcms_base PRIVATE qxcms_library_flags)

add_custom_target(qxcms_data)
