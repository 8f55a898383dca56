# SPDX-License-Identifier: MIT
# The four libraries. Each folder adds its sources with pellarvine_sources() and names its public
# headers with pellarvine_public_headers(); nothing else is installed.
#
# pellarvine_component(Name DESCRIPTION text LIBRARIES ... PRIVATE_LIBRARIES ... PRECOMPILE headers...)
# makes Pellarvine::Name, a component of that name in the package Pellarvine.
function(pellarvine_component name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION" "LIBRARIES;PRIVATE_LIBRARIES;PRECOMPILE")
  string(TOLOWER ${name} lower)
  set(target Pellarvine${name})
  add_library(${target} SHARED)
  add_library(Pellarvine::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME pellarvine${lower}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    EXPORT_NAME ${name}
    INSTALL_RPATH $ORIGIN) # the others lie beside it, in whatever prefix
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_compile_definitions(${target} PRIVATE PELLARVINE_BUILDING)
  # Programs reach the public headers alone; the library's own sources reach all, by folder.
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
           $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/Platform)
  target_link_libraries(${target} PUBLIC ${arg_LIBRARIES} PRIVATE ${arg_PRIVATE_LIBRARIES})
  # Calls from a library to itself need no look-up and can be inlined, as Qt's own; programs against
  # Qt are position independent, so addresses of functions stay the same everywhere.
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  target_precompile_headers(${target} PRIVATE ${arg_PRECOMPILE})
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  if(pellarvineExportsInternals)
    target_compile_definitions(${target} PUBLIC $<BUILD_INTERFACE:PELLARVINE_EXPORT_INTERNALS>)
  endif()
  set_property(GLOBAL APPEND PROPERTY pellarvineComponents ${name})

  set_property(GLOBAL PROPERTY pellarvineDescription${name} ${arg_DESCRIPTION})
  if(PELLARVINE_INSTALL)
    install(TARGETS ${target} EXPORT Pellarvine${name}Targets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${lower}
                    NAMELINK_COMPONENT development)
  endif()
endfunction()

# Tests, benchmarks and fuzz targets reach a few internals.
if(PELLARVINE_TESTS OR PELLARVINE_BENCHMARKS OR PELLARVINE_FUZZ)
  set(pellarvineExportsInternals ON)
endif()

pellarvine_component(Core
  DESCRIPTION "Encrypted container, digests, key paths, observation and bindings"
  LIBRARIES Qt6::Core
  PRIVATE_LIBRARIES OpenSSL::Crypto
  PRECOMPILE <QObject> <QMetaProperty> <QStringList> <QVariant> <functional> <map> <memory> <vector>)
pellarvine_component(Gui
  DESCRIPTION "Colours, fonts, paths, images, attributed strings and markup"
  LIBRARIES Pellarvine::Core Qt6::Gui
  PRIVATE_LIBRARIES Fontconfig::Fontconfig ICU::i18n ICU::uc
  PRECOMPILE <QFont> <QImage> <QPainter> <QVariant> <functional> <map> <memory> <vector>)
pellarvine_component(Widgets
  DESCRIPTION "Views, layout, windows, popovers, controllers and forms"
  LIBRARIES Pellarvine::Gui Qt6::Widgets
  PRIVATE_LIBRARIES Qt6::DBus Qt6::UiTools PkgConfig::xcb
  PRECOMPILE <QAccessibleWidget> <QApplication> <QPainter> <QWidget> <functional> <map> <memory>)
# It tells the bindings in Core about widgets, in programs too that call none of its functions. A
# linker with --as-needed would leave it out of them.
target_link_options(PellarvineWidgets INTERFACE
  "LINKER:--push-state,--no-as-needed,$<TARGET_FILE:Pellarvine::Widgets>,--pop-state")
pellarvine_component(Network
  DESCRIPTION "Tickets filed with an issue tracker"
  LIBRARIES Pellarvine::Core
  PRIVATE_LIBRARIES Qt6::Network)

# All of them, by one name.
add_library(Pellarvine INTERFACE)
add_library(Pellarvine::Pellarvine ALIAS Pellarvine)
target_link_libraries(Pellarvine INTERFACE
  Pellarvine::Core Pellarvine::Gui Pellarvine::Widgets Pellarvine::Network)

# What tests, benchmarks and fuzz targets link for the internal headers, by folder.
add_library(PellarvineInternals INTERFACE)
target_include_directories(PellarvineInternals INTERFACE
  ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/Platform)
target_link_libraries(PellarvineInternals INTERFACE Pellarvine)

# Adds sources of the calling folder to a component. A build with CMAKE_UNITY_BUILD compiles those of
# one folder as one source.
function(pellarvine_sources component)
  target_sources(Pellarvine${component} PRIVATE ${ARGN})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  string(MAKE_C_IDENTIFIER ${folder} folder)
  set_source_files_properties(${ARGN} TARGET_DIRECTORY Pellarvine${component}
    PROPERTIES UNITY_GROUP ${folder})
endfunction()

# Adds headers of the calling folder to a component and makes them public: programs include them as
# <pellarvine/Room/Name.h>, whatever folder of the room they are in.
function(pellarvine_public_headers component)
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  string(REGEX REPLACE "/.*" "" room ${folder})
  target_sources(Pellarvine${component} PRIVATE ${ARGN})
  set(public ${PROJECT_BINARY_DIR}/include/pellarvine/${room})
  file(RELATIVE_PATH toSources ${public} ${CMAKE_CURRENT_SOURCE_DIR})
  foreach(header IN LISTS ARGN)
    cmake_path(GET header FILENAME name)
    file(CONFIGURE OUTPUT ${public}/${name} CONTENT "#include \"@toSources@/@header@\"\n" @ONLY)
    set_property(GLOBAL APPEND PROPERTY pellarvinePublicHeaders ${room}/${name})
    set_property(GLOBAL APPEND PROPERTY pellarvinePublicHeaderFiles ${folder}/${header})
  endforeach()
  if(PELLARVINE_INSTALL)
    install(FILES ${ARGN} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/pellarvine/${room}
            COMPONENT development)
  endif()
endfunction()
