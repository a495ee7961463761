if(NOT QXCMS_PLATFORM_TARGET)
    install(TARGETS qxcms_platform EXPORT qxcmsTargets LIBRARY NAMELINK_COMPONENT development)
endif()

set(qxcmsInternalHeaders
    byte_reader.h guarded.h number_text.h owned_text.h color_temperature.h isotemperature_lines.h lab_formulas.h cgats_reader.h cgats_vocabulary.h)
foreach(folder base platform spectral colorspace measurement cgats)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    foreach(internal IN LISTS qxcmsInternalHeaders)
        list(REMOVE_ITEM headers ${PROJECT_SOURCE_DIR}/${folder}/${internal})
    endforeach()
    install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qxcms/${folder})
endforeach()
install(FILES platform/default/host.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qxcms/platform/default)
