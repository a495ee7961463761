# `runtime` is what programs need to run, `development` what building them takes.
if(NOT QXCMS_INSTALL)
    return()
endif()
include(CMakePackageConfigHelpers)

set(qxcmsConfigDir ${CMAKE_INSTALL_LIBDIR}/cmake/qxcms)
set(qxcmsPkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# Not ${CMAKE_INSTALL_DATADIR}: this is where the library looks, from its own place upwards.
set(qxcmsDataDir share/qxcms)

install(TARGETS qxcms qxcms_platform qxcms_qc EXPORT qxcmsTargets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
if(QXCMS_BUILD_COMMAND)
    install(TARGETS qxcms_command RUNTIME COMPONENT runtime)
endif()
install(DIRECTORY data/r DESTINATION ${qxcmsDataDir} COMPONENT runtime)
install(DIRECTORY data/charts DESTINATION ${qxcmsDataDir} COMPONENT runtime FILES_MATCHING PATTERN "*.txt")

foreach(header IN LISTS qxcmsPublicHeaders)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qxcms/${folder} COMPONENT development)
endforeach()

# find_package(qxcms). Who links the archive needs what is in it.
if(BUILD_SHARED_LIBS OR QXCMS_PLATFORM_TARGET)
    set(qxcmsDependencies "")
else()
    set(qxcmsDependencies "include(CMakeFindDependencyMacro)\nfind_dependency(SQLite3 3.37)\n")
endif()
configure_package_config_file(cmake/qxcmsConfig.cmake.in ${PROJECT_BINARY_DIR}/qxcmsConfig.cmake
    INSTALL_DESTINATION ${qxcmsConfigDir} PATH_VARS qxcmsDataDir)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qxcmsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qxcmsConfig.cmake ${PROJECT_BINARY_DIR}/qxcmsConfigVersion.cmake
    DESTINATION ${qxcmsConfigDir} COMPONENT development)
install(EXPORT qxcmsTargets NAMESPACE qxcms:: DESTINATION ${qxcmsConfigDir} COMPONENT development)

# pkg-config qxcms. Of a substitute platform layer only its own project knows how it is linked.
if(NOT QXCMS_PLATFORM_TARGET)
    # Everything is told from the place of qxcms.pc, so that the prefix can be moved.
    file(RELATIVE_PATH qxcmsPkgConfigToPrefix
        ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
    string(REGEX REPLACE "/$" "" qxcmsPkgConfigToPrefix "${qxcmsPkgConfigToPrefix}")
    file(RELATIVE_PATH qxcmsPrefixToInclude ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
    file(RELATIVE_PATH qxcmsPrefixToLib ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
    if(BUILD_SHARED_LIBS)
        set(qxcmsPkgConfigLibs "-lqxcms -lqxcms_platform")
        set(qxcmsPkgConfigLibsPrivate "")
        set(qxcmsPkgConfigRequiresPrivate "")
    else()
        set(qxcmsPkgConfigLibs "-lqxcms")
        set(qxcmsPkgConfigLibsPrivate "-l${CMAKE_DL_LIBS}")
        set(qxcmsPkgConfigRequiresPrivate "sqlite3")
    endif()
    configure_file(cmake/qxcms.pc.in ${PROJECT_BINARY_DIR}/qxcms.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/qxcms.pc DESTINATION ${qxcmsPkgConfigDir} COMPONENT development)
endif()
