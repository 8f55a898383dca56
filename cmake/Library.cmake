# SPDX-License-Identifier: MIT
# The one library. Each room adds its sources with pellarvine_sources() and names its public
# headers with pellarvine_public_headers(); nothing else is installed.

add_library(Pellarvine SHARED)
add_library(Pellarvine::Pellarvine ALIAS Pellarvine)
set_target_properties(Pellarvine PROPERTIES
  OUTPUT_NAME pellarvine
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  EXPORT_NAME Pellarvine)
target_compile_features(Pellarvine PUBLIC cxx_std_20)
target_compile_definitions(Pellarvine PRIVATE PELLARVINE_BUILDING)
target_include_directories(Pellarvine PUBLIC
  $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(Pellarvine PUBLIC Qt6::Core Qt6::Gui Qt6::Widgets
                      PRIVATE Fontconfig::Fontconfig ICU::i18n ICU::uc OpenSSL::Crypto
                              PkgConfig::xcb Qt6::UiTools)
# Calls from the library to itself need no look-up, as Qt's own do not; programs against Qt are
# position independent, so addresses of functions stay the same everywhere.
target_link_options(Pellarvine PRIVATE -Wl,-Bsymbolic-functions)
if(BUILD_TESTING OR PELLARVINE_BENCHMARKS OR PELLARVINE_FUZZ)
  # Tests, benchmarks and fuzz targets reach a few internals.
  target_compile_definitions(Pellarvine PUBLIC $<BUILD_INTERFACE:PELLARVINE_EXPORT_INTERNALS>)
endif()

install(TARGETS Pellarvine EXPORT PellarvineTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)

# Adds sources of the calling room to the library.
function(pellarvine_sources)
  target_sources(Pellarvine PRIVATE ${ARGN})
endfunction()

# Adds headers of the calling room to the library and installs them under their room.
function(pellarvine_public_headers)
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME room)
  target_sources(Pellarvine PRIVATE ${ARGN})
  install(FILES ${ARGN} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/pellarvine/${room}
          COMPONENT development)
  list(TRANSFORM ARGN PREPEND ${room}/)
  set_property(GLOBAL APPEND PROPERTY pellarvinePublicHeaders ${ARGN})
endfunction()
