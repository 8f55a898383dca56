# SPDX-License-Identifier: MIT
# pellarvine_check_forms(target [PLUGINS library...]) checks the interface files and storyboards of a
# target when it is built, those among its sources and in its .qrc files. A mistake fails the build at
# the file's line. PLUGINS are libraries, by target or by path, that register the classes that the
# files name beside Qt's and the library's: by static initialisation or in a function
# extern "C" void pellarvineRegisterClasses().
function(pellarvine_check_forms target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "PLUGINS")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "pellarvine_check_forms: \"${arg_UNPARSED_ARGUMENTS}\" means nothing here")
  endif()
  get_target_property(sources ${target} SOURCES)
  get_target_property(folder ${target} SOURCE_DIR)
  set(forms)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder} NORMALIZE)
    if(source MATCHES "\\.(ui|storyboard)$")
      list(APPEND forms ${source})
    elseif(source MATCHES "\\.qrc$" AND EXISTS ${source})
      set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
      cmake_path(GET source PARENT_PATH resources)
      file(STRINGS ${source} lines REGEX "\\.(ui|storyboard)</file>")
      foreach(line IN LISTS lines)
        string(REGEX REPLACE ".*>([^<>]+)</file>.*" "\\1" form "${line}")
        cmake_path(ABSOLUTE_PATH form BASE_DIRECTORY ${resources} NORMALIZE)
        list(APPEND forms ${form})
      endforeach()
    endif()
  endforeach()
  list(REMOVE_DUPLICATES forms)
  if(NOT forms)
    message(FATAL_ERROR "pellarvine_check_forms: ${target} has neither .ui nor .storyboard files")
  endif()

  set(program ${PELLARVINE_PROGRAM})
  if(TARGET pellarvine_tool)
    set(program $<TARGET_FILE:pellarvine_tool>)
  elseif(NOT program)
    message(FATAL_ERROR "pellarvine_check_forms: the program \"pellarvine\" is not installed")
  endif()
  set(options)
  set(plugins)
  foreach(plugin IN LISTS arg_PLUGINS)
    if(TARGET ${plugin})
      set(plugin $<TARGET_FILE:${plugin}>)
    endif()
    list(APPEND plugins ${plugin})
    list(APPEND options --plugin ${plugin})
  endforeach()
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${target}_forms.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${program} check ${options} ${forms}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${forms} ${plugins} ${program}
    COMMENT "Checking the forms of ${target}"
    VERBATIM)
  add_custom_target(${target}_forms DEPENDS ${stamp})
  if(TARGET pellarvine_check)
    add_dependencies(${target}_forms pellarvine_tool pellarvine_check)
  endif()
  add_dependencies(${target} ${target}_forms)
endfunction()
