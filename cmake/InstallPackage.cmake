# The CMake package "upgradesrv" for people who write strategies: the host libraries and where modules belong.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/upgradesrv)
install(
  EXPORT upgradesrvTargets
  NAMESPACE upgradesrv::
  DESTINATION ${package_dir})
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/upgradesrvConfig.cmake.in ${PROJECT_BINARY_DIR}/upgradesrvConfig.cmake
  INSTALL_DESTINATION ${package_dir}
  PATH_VARS UPGRADESRV_MODULE_SUBDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/upgradesrvConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/upgradesrvConfig.cmake ${PROJECT_BINARY_DIR}/upgradesrvConfigVersion.cmake
        DESTINATION ${package_dir})
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/examples
  DESTINATION ${CMAKE_INSTALL_DATADIR}/upgradesrv
  PATTERN checkMetaError.json EXCLUDE)
