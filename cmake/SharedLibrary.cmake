include(GenerateExportHeader)

# upgradesrv_add_library(<name> SOURCES <file>... HEADERS <file>... [PUBLIC <target>...] [PRIVATE <target>...])
#
# One shared library for other programs, in the current directory, which has the library's name. Headers lie beside the
# sources and are included as <name>/Header.h; the export header <name>/<name>_export.h is generated. HEADERS are the
# public ones, which are installed; all others are the library's own. Files are relative to the current directory.
function(upgradesrv_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  add_library(upgradesrv::${name} ALIAS ${name})
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR PARENT_PATH include_dir)
  set(export_dir ${PROJECT_BINARY_DIR}/export)
  generate_export_header(${name} EXPORT_FILE_NAME ${export_dir}/${name}/${name}_export.h)
  target_include_directories(
    ${name} PUBLIC $<BUILD_INTERFACE:${include_dir}> $<BUILD_INTERFACE:${export_dir}>
                   $<INSTALL_INTERFACE:${UPGRADESRV_HEADER_DIR}>)
  target_compile_features(${name} PUBLIC cxx_std_17)
  target_link_libraries(
    ${name}
    PUBLIC ${ARG_PUBLIC}
    PRIVATE ${ARG_PRIVATE} $<BUILD_INTERFACE:upgradesrv_settings>)
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
                                           INSTALL_RPATH "$ORIGIN")

  install(
    TARGETS ${name}
    EXPORT upgradesrvTargets
    LIBRARY DESTINATION ${UPGRADESRV_LIBRARY_DIR} NAMELINK_COMPONENT dev)
  set(header_dir ${UPGRADESRV_HEADER_DIR}/${name})
  install(
    FILES ${export_dir}/${name}/${name}_export.h
    DESTINATION ${header_dir}
    COMPONENT dev)
  foreach(header ${ARG_HEADERS})
    set_property(GLOBAL APPEND PROPERTY UPGRADESRV_PUBLIC_HEADERS ${CMAKE_CURRENT_SOURCE_DIR}/${header})
    cmake_path(GET header PARENT_PATH folder)
    install(
      FILES ${header}
      DESTINATION ${header_dir}/${folder}
      COMPONENT dev)
  endforeach()
endfunction()
