# What qxcms.h and qc/qc.h include is public, every other header is internal.
set(qxcmsPublicHeaders qxcms.h qc/qc.h)
foreach(list IN LISTS qxcmsPublicHeaders)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${list})
    file(STRINGS ${PROJECT_SOURCE_DIR}/${list} headers REGEX "^#include \"")
    list(TRANSFORM headers REPLACE "^#include \"([^\"]+)\"$" "\\1")
    list(APPEND qxcmsPublicHeaders ${headers})
endforeach()

# <spectral/tspectrum.h> and <qxcms/spectral/tspectrum.h> are the same header, here and once installed.
set(qxcmsForwards ${PROJECT_BINARY_DIR}/include)
foreach(header IN LISTS qxcmsPublicHeaders)
    file(CONFIGURE OUTPUT ${qxcmsForwards}/qxcms/${header} CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n")
endforeach()
set(qxcmsIncludes
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${qxcmsForwards}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/qxcms>)

# A shared library exports what is marked and nothing of the standard library's templates. What follows the target is
# where it looks for other libraries.
set(qxcmsExports ${PROJECT_SOURCE_DIR}/cmake/symbols/exports.map)
function(qxcms_shared_library_properties target)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "${ARGN}"
        LINK_DEPENDS ${qxcmsExports})
    target_link_options(${target} PRIVATE "LINKER:--version-script=${qxcmsExports}")
endfunction()

# The bundled platform layer as objects. Resource files are databases of SQLite.
if(NOT QXCMS_PLATFORM_TARGET)
    find_package(SQLite3 3.37 REQUIRED GLOBAL)
    add_library(qxcms_platform_objects OBJECT
        platform/default/directory_search.cpp
        platform/default/file_access.cpp
        platform/default/file_name_encoding.cpp
        platform/default/interpolation.cpp
        platform/default/item_strings.cpp
        platform/default/logical_names.cpp
        platform/default/object_factory.cpp
        platform/default/real_conversion.cpp
        platform/default/reports.cpp
        platform/default/resolved_file.cpp
        platform/default/resource_database.cpp
        platform/default/resource_store.cpp
        platform/default/text_compare.cpp
        platform/default/vectors.cpp)
    qxcms_library_properties(qxcms_platform_objects)
    target_include_directories(qxcms_platform_objects PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(qxcms_platform_objects PRIVATE qxcms_library_flags SQLite::SQLite3)
endif()

# The platform layer: a library of its own, so that a program and the kernel see one report handler; part of the
# kernel's archive in the static build; or a substitute.
if(QXCMS_PLATFORM_TARGET)
    add_library(qxcms_platform INTERFACE)
    target_link_libraries(qxcms_platform INTERFACE ${QXCMS_PLATFORM_TARGET})
elseif(BUILD_SHARED_LIBS)
    add_library(qxcms_platform SHARED $<TARGET_OBJECTS:qxcms_platform_objects> $<TARGET_OBJECTS:qxcms_base>)
    qxcms_shared_library_properties(qxcms_platform)
    target_link_libraries(qxcms_platform PRIVATE $<BUILD_INTERFACE:qxcms_library_flags> ${CMAKE_DL_LIBS}
        SQLite::SQLite3)
else()
    add_library(qxcms_platform INTERFACE)
    target_link_libraries(qxcms_platform INTERFACE qxcms)
endif()
set_target_properties(qxcms_platform PROPERTIES EXPORT_NAME platform)
target_include_directories(qxcms_platform INTERFACE ${qxcmsIncludes})
target_compile_features(qxcms_platform INTERFACE cxx_std_17)
add_library(qxcms::platform ALIAS qxcms_platform)
set(qxcmsPlatform qxcms_platform)

# Number text, used by every floor.
add_library(qxcms_base OBJECT base/fast_number_text.cpp base/instruction_set.cpp base/number_text.cpp)
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
    spectral/matching_spectrum.cpp
    spectral/observer_tables.cpp
    spectral/spectral_density.cpp
    spectral/spectrum_encoding.cpp
    spectral/tilluminant.cpp
    spectral/tilluminantandobserver.cpp
    spectral/tilluminantfactoryholder.cpp
    spectral/tmeasgeom.cpp
    spectral/tobserver.cpp
    spectral/tspectrum.cpp
    colorspace/appearance_formulas.cpp
    colorspace/color_difference.cpp
    colorspace/fast_lab.cpp
    colorspace/fast_lab_avx2.cpp
    colorspace/fast_lab_avx512.cpp
    colorspace/tcolorspace.cpp
    colorspace/tcolorspace_ciecam02.cpp
    colorspace/tcolorspace_ciecam97s.cpp
    colorspace/tcolorspacerepresentation.cpp
    colorspace/tlabspace.cpp
    colorspace/txyzrspace.cpp
    support/file_name_escaping.cpp
    support/qxcms_dp.cpp
    support/qxcms_rdb_err.cpp
    support/stream_helpers.cpp
    support/tcachefile.cpp
    measurement/colorimetric_measurements.cpp
    measurement/spectral_measurements.cpp
    measurement/tonemeasurement.cpp
    cgats/cgats_builder.cpp
    cgats/cgats_copy.cpp
    cgats/cgats_diagnostics.cpp
    cgats/cgats_input.cpp
    cgats/cgats_measurement.cpp
    cgats/cgats_output.cpp
    cgats/cgats_queries.cpp
    cgats/cgats_reader.cpp
    cgats/cgats_vocabulary.cpp
    cgats/cgats_writer.cpp
    cgats/chart_layout.cpp
    cgats/chart_rows.cpp
    cgats/decimal_text.cpp
    cgats/document_outline.cpp
    cgats/field_classification.cpp
    cgats/format_repairs.cpp
    cgats/header_repairs.cpp
    cgats/name_index.cpp
    cgats/outline_rows.cpp
    cgats/row_block_avx2.cpp
    cgats/row_block_common.cpp
    cgats/row_repairs.cpp
    cgats/row_scan.cpp
    cgats/scale_repairs.cpp
    cgats/spectral_name.cpp
    cgats/tcgats.cpp
    cgats/tcgatsfield.cpp
    cgats/tcgatstable.cpp
    cgats/tcgatstableheader.cpp
    cgats/tcgatstag.cpp
    cgats/tcgatsnormalizer.cpp
    cgats/tcgatsvaluelist.cpp
    cgats/text_edits.cpp
    cgats/text_encoding.cpp)
qxcms_library_properties(qxcms_objects)
target_include_directories(qxcms_objects PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(qxcms_objects PRIVATE qxcms_library_flags)
if(BUILD_SHARED_LIBS OR QXCMS_PLATFORM_TARGET)
    target_link_libraries(qxcms_objects PUBLIC ${qxcmsPlatform})
else()
    target_link_libraries(qxcms_objects INTERFACE $<TARGET_OBJECTS:qxcms_platform_objects> ${CMAKE_DL_LIBS}
        SQLite::SQLite3)
endif()

# What is used only on processors that can.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64" AND CMAKE_SIZEOF_VOID_P EQUAL 8)
    set_source_files_properties(cgats/row_block_avx2.cpp PROPERTIES COMPILE_OPTIONS "-mavx2;-mbmi2;-mpopcnt")
    set_source_files_properties(colorspace/fast_lab_avx2.cpp PROPERTIES COMPILE_OPTIONS "-mavx2;-mfma")
    set_source_files_properties(colorspace/fast_lab_avx512.cpp PROPERTIES COMPILE_OPTIONS
        "-mavx512f;-mavx512dq;-mavx512vl")
endif()

add_library(qxcms $<TARGET_OBJECTS:qxcms_objects> $<TARGET_OBJECTS:qxcms_base>)
target_include_directories(qxcms PUBLIC ${qxcmsIncludes})
target_compile_features(qxcms PUBLIC cxx_std_17)
target_link_libraries(qxcms PRIVATE $<BUILD_INTERFACE:qxcms_library_flags>)
if(BUILD_SHARED_LIBS)
    qxcms_shared_library_properties(qxcms "$ORIGIN")
endif()
if(BUILD_SHARED_LIBS OR QXCMS_PLATFORM_TARGET)
    target_link_libraries(qxcms PUBLIC ${qxcmsPlatform})
else()
    target_sources(qxcms PRIVATE $<TARGET_OBJECTS:qxcms_platform_objects>)
    target_link_libraries(qxcms PRIVATE ${CMAKE_DL_LIBS} SQLite::SQLite3)
endif()
add_library(qxcms::qxcms ALIAS qxcms)

# Comparing charts, above the kernel. An archive in either build: its interface is of standard library types.
file(GLOB qxcmsQcSources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/qc/*.cpp)
add_library(qxcms_qc STATIC ${qxcmsQcSources} $<TARGET_OBJECTS:qxcms_base>)
qxcms_library_properties(qxcms_qc)
set_target_properties(qxcms_qc PROPERTIES EXPORT_NAME qc)
target_include_directories(qxcms_qc PUBLIC ${qxcmsIncludes})
target_compile_features(qxcms_qc PUBLIC cxx_std_17)
target_link_libraries(qxcms_qc PUBLIC qxcms PRIVATE $<BUILD_INTERFACE:qxcms_library_flags>)
add_library(qxcms::qc ALIAS qxcms_qc)

# The data stand beside the libraries as they do once installed.
add_custom_target(qxcms_data ALL
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/share/qxcms
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/data/r ${CMAKE_BINARY_DIR}/share/qxcms/r
    COMMENT "Putting the data beside the libraries" VERBATIM)
add_dependencies(qxcms qxcms_data)
