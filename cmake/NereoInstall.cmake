# What lets others find the installed libraries, a CMake package and pkg-config files, and what tells them of these. All
# of it can be moved together with the libraries.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/NereoFileIO")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/NereoFileIOConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/NereoFileIOConfig.cmake" INSTALL_DESTINATION "${package_dir}")
# The first number is the year of a release, and a new year's may change what callers build on; within a year it only
# grows. SOVERSION, in turn, counts the changes that need callers to be compiled again.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/NereoFileIOConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(EXPORT NereoFileIOTargets NAMESPACE Nereo:: DESTINATION "${package_dir}")
install(FILES
    "${PROJECT_BINARY_DIR}/NereoFileIOConfig.cmake"
    "${PROJECT_BINARY_DIR}/NereoFileIOConfigVersion.cmake"
    DESTINATION "${package_dir}")

set(pkgconfig_dir "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH NEREO_PREFIX_FROM_PKGCONFIG "${pkgconfig_dir}" "${CMAKE_INSTALL_PREFIX}")
foreach(dir INCLUDEDIR LIBDIR)
    set(NEREO_PC_${dir} "${CMAKE_INSTALL_${dir}}")
    if(NOT IS_ABSOLUTE "${NEREO_PC_${dir}}")
        string(PREPEND NEREO_PC_${dir} "\${prefix}/")
    endif()
endforeach()
# A Qt with reduced relocations refuses callers without -fPIC, others don't.
get_target_property(qt_demands Qt5::Core INTERFACE_COMPILE_OPTIONS)
if(NOT qt_demands)
    set(qt_demands)
endif()
list(JOIN qt_demands " " NEREO_PC_QT_DEMANDS)
foreach(package NereoFileIO NereoInspection)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/${package}.pc.in" "${PROJECT_BINARY_DIR}/${package}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${package}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endforeach()

# The pages lie as they do in the sources, since they link to each other.
install(FILES
    "${PROJECT_SOURCE_DIR}/README.md"
    "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
    "${PROJECT_SOURCE_DIR}/CONTRIBUTING.md"
    "${PROJECT_SOURCE_DIR}/SECURITY.md"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY
    "${PROJECT_SOURCE_DIR}/docs"
    "${PROJECT_SOURCE_DIR}/examples"
    "${PROJECT_SOURCE_DIR}/samples"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    PATTERN doxygen EXCLUDE
    PATTERN docs/site EXCLUDE)
