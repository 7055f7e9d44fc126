# What is installed beside the programs and libraries, whose install rules are where they are built. InstallLayout.cmake has
# the places and the components.

# The CMake package "upgradesrv" for people who write strategies: the host libraries and where modules belong.
include(CMakePackageConfigHelpers)
install(
  EXPORT upgradesrvTargets
  NAMESPACE upgradesrv::
  DESTINATION ${UPGRADESRV_CMAKE_DIR}
  COMPONENT dev)
set(prefix .)
cmake_path(RELATIVE_PATH prefix BASE_DIRECTORY ${UPGRADESRV_CMAKE_DIR} OUTPUT_VARIABLE UPGRADESRV_PREFIX_FROM_CMAKE_DIR)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/upgradesrvConfig.cmake.in ${PROJECT_BINARY_DIR}/upgradesrvConfig.cmake
  INSTALL_DESTINATION ${UPGRADESRV_CMAKE_DIR}
  PATH_VARS UPGRADESRV_MODULE_DIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/upgradesrvConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/upgradesrvConfig.cmake ${PROJECT_BINARY_DIR}/upgradesrvConfigVersion.cmake
  DESTINATION ${UPGRADESRV_CMAKE_DIR}
  COMPONENT dev)

# Examples.
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/examples/upgrade ${PROJECT_SOURCE_DIR}/examples/exporters
  DESTINATION ${UPGRADESRV_EXAMPLE_DIR}
  PATTERN checkMetaError.json EXCLUDE)
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/examples/strategy
  DESTINATION ${UPGRADESRV_EXAMPLE_DIR}
  COMPONENT dev)

# Where Debian looks for them.
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/debian)
file(CREATE_LINK ../../upgradesrv/examples ${PROJECT_BINARY_DIR}/debian/examples SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/debian/examples DESTINATION share/doc/upgradesrv)

# The manual.
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/docs/
  DESTINATION share/doc/upgradesrv
  FILES_MATCHING
  PATTERN *.md
  PATTERN *.json)

# Manual pages and completion of shells. Pages are compressed: upgradesrv_install_compressed(<page> DESTINATION share/man/man1).
include(InstallCompressed)

include(ApiReference)
include(DebianPackages)
