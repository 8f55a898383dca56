# SPDX-License-Identifier: MIT
# What find_package(Pellarvine) finds once the library is installed.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Pellarvine)
configure_package_config_file(cmake/PellarvineConfig.cmake.in
  ${PROJECT_BINARY_DIR}/PellarvineConfig.cmake INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/PellarvineConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(EXPORT PellarvineTargets NAMESPACE Pellarvine:: DESTINATION ${packageDir})
install(FILES ${PROJECT_BINARY_DIR}/PellarvineConfig.cmake
              ${PROJECT_BINARY_DIR}/PellarvineConfigVersion.cmake
        DESTINATION ${packageDir})
