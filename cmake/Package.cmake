# SPDX-License-Identifier: MIT
# What find_package(Pellarvine) and pkg-config find once the libraries are installed. Both follow the
# prefix when that is moved.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Pellarvine)
configure_package_config_file(cmake/PellarvineConfig.cmake.in
  ${PROJECT_BINARY_DIR}/PellarvineConfig.cmake INSTALL_DESTINATION ${packageDir}
  PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/PellarvineConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/PellarvineConfig.cmake
              ${PROJECT_BINARY_DIR}/PellarvineConfigVersion.cmake
              cmake/PellarvineCheckForms.cmake
        DESTINATION ${packageDir} COMPONENT development)

set(pkgconfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefixFromPackage /prefix/${pkgconfigDir} /prefix)

# pellarvine_pkg_config(name description requires libs) writes name.pc.
function(pellarvine_pkg_config name description requires libs)
  configure_file(cmake/pellarvine.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${pkgconfigDir}
          COMPONENT development)
endfunction()

get_property(components GLOBAL PROPERTY pellarvineComponents)
foreach(component IN LISTS components)
  install(EXPORT Pellarvine${component}Targets NAMESPACE Pellarvine:: DESTINATION ${packageDir}
          COMPONENT development)
  string(TOLOWER ${component} lower)
  get_property(description GLOBAL PROPERTY pellarvineDescription${component})
  # What a component links publicly, pkg-config requires.
  get_target_property(requires Pellarvine${component} INTERFACE_LINK_LIBRARIES)
  list(FILTER requires EXCLUDE REGEX "^\\$")
  list(TRANSFORM requires REPLACE "^Qt6::(.+)" "Qt6\\1 >= 6.4")
  list(TRANSFORM requires TOLOWER REGEX "^Pellarvine::")
  list(TRANSFORM requires REPLACE "^pellarvine::" "pellarvine-")
  list(JOIN requires " " requires)
  set(libs -lpellarvine${lower})
  if(component STREQUAL "Widgets") # as CMake links it
    set(libs -Wl,--push-state,--no-as-needed,-lpellarvinewidgets,--pop-state)
  endif()
  pellarvine_pkg_config(pellarvine-${lower} "${description}" "${requires}" "${libs}")
  list(APPEND all pellarvine-${lower})
endforeach()
list(JOIN all " " all)
pellarvine_pkg_config(pellarvine "${PROJECT_DESCRIPTION}" "${all}" "")
