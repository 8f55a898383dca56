# SPDX-License-Identifier: MIT
# Debian packages by CPack, one for each component that is installed: script/package makes them.

set(maintainer "The Pellarvine developers <maintainers@pellarvine.invalid>")
set(documentation ${CMAKE_INSTALL_DATADIR}/doc)
string(TIMESTAMP changelogDate "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(packaging/changelog.in ${PROJECT_BINARY_DIR}/packaging/changelog @ONLY)
configure_file(tools/pellarvine/pellarvine.1 ${PROJECT_BINARY_DIR}/packaging/pellarvine.1 COPYONLY)
execute_process(COMMAND gzip --best --no-name --force --keep changelog pellarvine.1
                WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/packaging COMMAND_ERROR_IS_FATAL ANY)

# pellarvine_debian_package(component name section description): what the component's files and the
# files that every package has to bring are packed as.
function(pellarvine_debian_package component name section description)
  string(TOUPPER ${component} key)
  install(FILES packaging/copyright DESTINATION ${documentation}/${name} COMPONENT ${component}
          EXCLUDE_FROM_ALL)
  install(FILES ${PROJECT_BINARY_DIR}/packaging/changelog.gz DESTINATION ${documentation}/${name}
          COMPONENT ${component} EXCLUDE_FROM_ALL)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_FILE_NAME DEB-DEFAULT PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION ${description} PARENT_SCOPE)
  set(packedComponents ${packedComponents} ${component} PARENT_SCOPE)
endfunction()

set(runtime libpellarvine${PROJECT_VERSION_MAJOR})
pellarvine_debian_package(runtime ${runtime} libs
  "ready-made pieces for Qt programs - shared library
An encrypted container, inline markup, bindings, constraints, windows with a
title bar of their own, views and controls for desktop programs in C++.
.
This package has the library that such programs load.")
pellarvine_debian_package(development libpellarvine-dev libdevel
  "ready-made pieces for Qt programs - headers
An encrypted container, inline markup, bindings, constraints, windows with a
title bar of their own, views and controls for desktop programs in C++.
.
This package has what compiling such programs takes.")
pellarvine_debian_package(tools pellarvine-tools utils
  "seal and open files under a passphrase, digests, markup
The command pellarvine seals files into an encrypted container and opens it,
computes digests, and turns inline markup and colours into other forms.")

if(PELLARVINE_DESIGNER)
  pellarvine_debian_package(designer pellarvine-designer devel
    "ready-made pieces for Qt programs - plugin for Qt Designer
Shows the library's views in Qt Designer's widget box, and lets Qt's loader of
form files make them.")
endif()

set(sameVersion "(= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtime} ${sameVersion}, qt6-base-dev (>= 6.4)")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime} ${sameVersion}")
set(CPACK_DEBIAN_DESIGNER_PACKAGE_DEPENDS "${runtime} ${sameVersion}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)

set(CPACK_GENERATOR DEB)
# Every package's own text begins with its synopsis; a common one would come before that.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${packedComponents})
set(CPACK_PACKAGE_NAME pellarvine)
set(CPACK_PACKAGE_CONTACT ${maintainer})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
include(CPack)
