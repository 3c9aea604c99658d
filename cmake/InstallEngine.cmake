# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
include(CMakePackageConfigHelpers)

set(OV_ENGINE_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/ovsearch/engine)

# Installs these layers and ov_engine, and the package by which somebody else's program finds them:
# find_package(OVSearch).
function(ov_install_engine)
    set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OVSearch)
    set(OV_MODULE_DIR ${CMAKE_INSTALL_LIBDIR}/ovsearch)
    set(generated ${PROJECT_BINARY_DIR}/engine-package)
    set(targets ${ARGN} engine)
    foreach(name IN LISTS targets)
        set_target_properties(ov_${name} PROPERTIES EXPORT_NAME ${name})
    endforeach()
    list(TRANSFORM targets PREPEND ov_)
    install(TARGETS ${targets} EXPORT OVSearchTargets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}/ovsearch COMPONENT Development)
    # Not what is for one system or for Qt.
    list(TRANSFORM ARGN PREPEND ${PROJECT_SOURCE_DIR}/src/)
    install(DIRECTORY ${ARGN} DESTINATION ${OV_ENGINE_INCLUDE_DIR} COMPONENT Development
            FILES_MATCHING PATTERN *.h
            PATTERN posix EXCLUDE PATTERN win32 EXCLUDE PATTERN panel EXCLUDE PATTERN print EXCLUDE
            PATTERN module EXCLUDE)
    install(EXPORT OVSearchTargets NAMESPACE OVSearch::
            DESTINATION ${package_dir} COMPONENT Development)

    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OVSearchConfig.cmake.in
        ${generated}/OVSearchConfig.cmake
        INSTALL_DESTINATION ${package_dir}
        PATH_VARS OV_MODULE_DIR)
    write_basic_package_version_file(${generated}/OVSearchConfigVersion.cmake
        COMPATIBILITY SameMajorVersion)
    install(FILES ${generated}/OVSearchConfig.cmake ${generated}/OVSearchConfigVersion.cmake
            DESTINATION ${package_dir} COMPONENT Development)
endfunction()
