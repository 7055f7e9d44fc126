# What Debian wants of each package. The Debian change log says of each version where its changes are told.
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md heading REGEX "^## ${PROJECT_VERSION} \\([0-9-]+\\)$")
if(NOT heading)
  message(FATAL_ERROR "CHANGELOG.md has no heading \"## ${PROJECT_VERSION} (YYYY-MM-DD)\"; write one, or mend the version in CMakeLists.txt")
endif()
string(REGEX MATCH "[0-9]+-[0-9]+-[0-9]+" date "${heading}")
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date -u -R -d ${date}
  OUTPUT_VARIABLE UPGRADESRV_RELEASE_DATE
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(UPGRADESRV_DEBIAN_REVISION 1)
set(UPGRADESRV_DEBIAN_VERSION ${PROJECT_VERSION}-${UPGRADESRV_DEBIAN_REVISION})
set(UPGRADESRV_MAINTAINER "The maintainers of upgradesrv <maintainers@upgradesrv.invalid>"
    CACHE STRING "Who the Debian packages say maintains them: NAME <ADDRESS>")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
configure_file(${PROJECT_SOURCE_DIR}/deploy/debian/changelog.in ${PROJECT_BINARY_DIR}/debian/changelog @ONLY)
foreach(package upgradesrv upgradesrv-dev)
  set(component ${package})
  if(package STREQUAL upgradesrv-dev)
    set(component dev)
  endif()
  install(
    FILES ${PROJECT_SOURCE_DIR}/deploy/debian/copyright
    DESTINATION share/doc/${package}
    COMPONENT ${component})
  upgradesrv_install_compressed(${PROJECT_BINARY_DIR}/debian/changelog DESTINATION share/doc/${package} RENAME changelog.Debian
                                COMPONENT ${component})
endforeach()
upgradesrv_install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION share/doc/upgradesrv RENAME changelog)

# scripts/build-packages makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME upgradesrv)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "metamodel check for upgrades of a product-lifecycle platform")
set(CPACK_PACKAGE_CONTACT ${UPGRADESRV_MAINTAINER})
set(CPACK_COMPONENTS_ALL upgradesrv dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${UPGRADESRV_DEBIAN_REVISION})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_UPGRADESRV_PACKAGE_NAME upgradesrv)
set(CPACK_DEBIAN_UPGRADESRV_PACKAGE_SECTION database)
set(CPACK_DEBIAN_UPGRADESRV_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_UPGRADESRV_DESCRIPTION
    "Before an installation of a product-lifecycle platform is upgraded, somebody
has to decide whether the upgrade may go ahead. upgradesrv compares the
metamodel that the new version ships with the one that the installation has,
judges every difference and records what has been decided about it.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME upgradesrv-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "upgradesrv (= ${UPGRADESRV_DEBIAN_VERSION}), rapidjson-dev")
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS "cmake, g++, make")
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "Headers, a CMake package, a reference and a sample for whoever writes a
strategy: a step of an upgrade that upgradesrv runs from a module.")
include(CPack)
