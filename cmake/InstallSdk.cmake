# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
include(CMakePackageConfigHelpers)

# Installs these headers of the boundary, and the package by which somebody else's host finds
# them and the plug-in: find_package(OVSearchSDK).
function(ov_install_sdk)
    set(OV_SDK_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/ovsearch)
    set(OV_PLUGIN_DIR ${CMAKE_INSTALL_LIBDIR}/ovsearch)
    set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OVSearchSDK)
    set(generated ${PROJECT_BINARY_DIR}/sdk-package)
    configure_package_config_file(
        ${PROJECT_SOURCE_DIR}/cmake/OVSearchSDKConfig.cmake.in
        ${generated}/OVSearchSDKConfig.cmake
        INSTALL_DESTINATION ${package_dir}
        PATH_VARS OV_SDK_INCLUDE_DIR OV_PLUGIN_DIR)
    write_basic_package_version_file(${generated}/OVSearchSDKConfigVersion.cmake
        COMPATIBILITY SameMajorVersion)
    install(FILES ${ARGN} DESTINATION ${OV_SDK_INCLUDE_DIR}/plugin)
    install(FILES ${generated}/OVSearchSDKConfig.cmake ${generated}/OVSearchSDKConfigVersion.cmake
            DESTINATION ${package_dir})
endfunction()
