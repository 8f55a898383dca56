# SPDX-License-Identifier: MIT
# What find_package(Pellarvine) and pkg-config find once the library is installed. Both follow the
# prefix when that is moved.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Pellarvine)
configure_package_config_file(cmake/PellarvineConfig.cmake.in
  ${PROJECT_BINARY_DIR}/PellarvineConfig.cmake INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/PellarvineConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(EXPORT PellarvineTargets NAMESPACE Pellarvine:: DESTINATION ${packageDir}
        COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/PellarvineConfig.cmake
              ${PROJECT_BINARY_DIR}/PellarvineConfigVersion.cmake
        DESTINATION ${packageDir} COMPONENT development)

set(pkgconfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefixFromPackage /prefix/${pkgconfigDir} /prefix)
configure_file(cmake/pellarvine.pc.in ${PROJECT_BINARY_DIR}/pellarvine.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/pellarvine.pc DESTINATION ${pkgconfigDir}
        COMPONENT development)
