find_package(benchmark REQUIRED)
find_library(QXCMS_LCMS2_LIBRARY lcms2)
find_path(QXCMS_LCMS2_INCLUDE lcms2.h)

file(GLOB qxcmsBenchSources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/*.cpp)
add_executable(qxcms_bench ${qxcmsBenchSources})
# Each instruction set is measured, which reaches inside.
target_link_libraries(qxcms_bench PRIVATE
    qxcms_objects qxcms_base qxcms_flags benchmark::benchmark ${CMAKE_DL_LIBS})
target_include_directories(qxcms_bench PRIVATE ${PROJECT_SOURCE_DIR})
if(QXCMS_LCMS2_LIBRARY AND QXCMS_LCMS2_INCLUDE)
    # The same document read by an independent library, in the same run.
    target_link_libraries(qxcms_bench PRIVATE ${QXCMS_LCMS2_LIBRARY})
    target_compile_definitions(qxcms_bench PRIVATE QXCMS_HAVE_LCMS2)
endif()
add_dependencies(qxcms_bench qxcms_data)
