# SPDX-License-Identifier: MIT
# What every target shares: language level, warnings, sanitizers, folders, the include root.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
if(NOT CMAKE_BUILD_TYPE AND PROJECT_IS_TOP_LEVEL)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
  # For ccache to see through precompiled headers.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Wcast-align -Wconversion -Wno-sign-conversion)
if(CMAKE_UNITY_BUILD)
  # Sources that are compiled as one see each other's local names, and gcc takes them for headers.
  add_compile_options(-Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
if(PELLARVINE_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
                        QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(PELLARVINE_SANITIZE)
  add_compile_options(-fsanitize=${PELLARVINE_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${PELLARVINE_SANITIZE})
else()
  # Not with sanitizers: clang leaves their runtime to the executable.
  add_link_options(-Wl,--no-undefined)
endif()
if(PELLARVINE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
