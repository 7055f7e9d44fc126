# upgradesrv_install_compressed(<file> DESTINATION <directory> [RENAME <name>] [COMPONENT <component>])
#
# Installs a file compressed, with .gz behind its name or the new one, the same bytes each time: manual pages and change logs.
# The target `compressed` makes all of them.
find_program(GZIP gzip REQUIRED)
function(upgradesrv_install_compressed file)
  cmake_parse_arguments(ARG "" "DESTINATION;RENAME;COMPONENT" "" ${ARGN})
  cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
  if(NOT ARG_RENAME)
    cmake_path(GET file FILENAME ARG_RENAME)
  endif()
  if(NOT ARG_COMPONENT)
    set(ARG_COMPONENT ${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME})
  endif()
  set(compressed ${PROJECT_BINARY_DIR}/compressed/${ARG_DESTINATION}/${ARG_RENAME}.gz)
  cmake_path(GET compressed PARENT_PATH directory)
  file(MAKE_DIRECTORY ${directory})
  add_custom_command(
    OUTPUT ${compressed}
    COMMAND ${GZIP} -9 -n -c ${file} > ${compressed}
    DEPENDS ${file}
    VERBATIM)
  string(MD5 target ${compressed})
  add_custom_target(compressed_${target} ALL DEPENDS ${compressed})
  if(NOT TARGET compressed)
    add_custom_target(compressed)
  endif()
  add_dependencies(compressed compressed_${target})
  install(
    FILES ${compressed}
    DESTINATION ${ARG_DESTINATION}
    COMPONENT ${ARG_COMPONENT})
endfunction()
