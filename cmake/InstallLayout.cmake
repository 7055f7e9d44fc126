# Where things are below the root of a tree: the installed tree, wherever it is moved to, the build tree, which has the same
# layout so that both run the same way, and /usr of the Debian packages. Nothing else names these places.
include(GNUInstallDirs)

# The host libraries belong to this project alone: no other program finds them by accident, and no linker's cache needs to
# know them.
set(UPGRADESRV_LIBRARY_DIR lib/upgradesrv/host)
set(UPGRADESRV_MODULE_DIR lib/upgradesrv/modules)
set(UPGRADESRV_CMAKE_DIR lib/cmake/upgradesrv)
set(UPGRADESRV_HEADER_DIR include/upgradesrv)
# Not below share/doc, which small systems leave out when they install packages.
set(UPGRADESRV_EXAMPLE_DIR share/upgradesrv/examples)

# The executable finds modules, and modules find libraries, by the way from one directory to the other.
cmake_path(RELATIVE_PATH UPGRADESRV_LIBRARY_DIR BASE_DIRECTORY bin OUTPUT_VARIABLE UPGRADESRV_LIBRARIES_FROM_EXECUTABLE)
cmake_path(RELATIVE_PATH UPGRADESRV_MODULE_DIR BASE_DIRECTORY bin OUTPUT_VARIABLE UPGRADESRV_MODULES_FROM_EXECUTABLE)
cmake_path(RELATIVE_PATH UPGRADESRV_LIBRARY_DIR BASE_DIRECTORY ${UPGRADESRV_MODULE_DIR} OUTPUT_VARIABLE
           UPGRADESRV_LIBRARIES_FROM_MODULE)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${UPGRADESRV_LIBRARY_DIR})
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# Each component is a Debian package: "upgradesrv" is what runs, and whatever names no component; "dev" is what builds
# strategies.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME upgradesrv)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
