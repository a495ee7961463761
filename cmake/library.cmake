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

# The kernel as objects: the library is made of them, and tests see everything inside.
add_library(qxcms_objects OBJECT
    spectral/astm_tables.cpp
    spectral/color_temperature.cpp
    spectral/density_filter_tables.cpp
    spectral/illuminant_file.cpp
    spectral/isotemperature_lines.cpp
    spectral/observer_tables.cpp
    spectral/spectral_density.cpp
    spectral/spectrum_encoding.cpp
    spectral/tilluminant.cpp
    spectral/tilluminantandobserver.cpp
    spectral/tilluminantfactoryholder.cpp
    spectral/tmeasgeom.cpp
    spectral/tobserver.cpp
    spectral/tspectrum.cpp
    colorspace/color_difference.cpp
    colorspace/tcolorspacerepresentation.cpp
    colorspace/tlabspace.cpp
    measurement/colorimetric_measurements.cpp
    measurement/spectral_measurements.cpp
    measurement/tonemeasurement.cpp
    cgats/cgats_diagnostics.cpp
    cgats/cgats_input.cpp
    cgats/cgats_measurement.cpp
    cgats/cgats_queries.cpp
    cgats/cgats_reader.cpp
    cgats/cgats_vocabulary.cpp
    cgats/field_classification.cpp
    cgats/name_index.cpp
    cgats/tcgats.cpp
    cgats/tcgatsfield.cpp
    cgats/tcgatstable.cpp
    cgats/tcgatstableheader.cpp
    cgats/tcgatstag.cpp
    cgats/tcgatsvaluelist.cpp)
qxcms_library_properties(qxcms_objects)
target_include_directories(qxcms_objects PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(qxcms_objects PUBLIC ${qxcmsPlatform} PRIVATE qxcms_library_flags)

add_library(qxcms $<TARGET_OBJECTS:qxcms_objects> $<TARGET_OBJECTS:qxcms_base>)
qxcms_library_properties(qxcms)
set_target_properties(qxcms PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0)
target_include_directories(qxcms PUBLIC ${qxcmsIncludes})
target_compile_features(qxcms PUBLIC cxx_std_17)
target_link_libraries(qxcms PUBLIC ${qxcmsPlatform} PRIVATE $<BUILD_INTERFACE:qxcms_library_flags>)
add_library(qxcms::qxcms ALIAS qxcms)

# The data stand beside the libraries as they do once installed.
add_custom_target(qxcms_data ALL
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/share/qxcms
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/data/r ${CMAKE_BINARY_DIR}/share/qxcms/r
    COMMENT "Putting the data beside the libraries" VERBATIM)
