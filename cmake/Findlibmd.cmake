# libmd, message digests. Defines libmd::libmd.
find_path(LIBMD_INCLUDE_DIR sha2.h)
find_library(LIBMD_LIBRARY md)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(libmd REQUIRED_VARS LIBMD_LIBRARY LIBMD_INCLUDE_DIR)
mark_as_advanced(LIBMD_INCLUDE_DIR LIBMD_LIBRARY)

if(libmd_FOUND AND NOT TARGET libmd::libmd)
  add_library(libmd::libmd UNKNOWN IMPORTED)
  set_target_properties(libmd::libmd PROPERTIES IMPORTED_LOCATION "${LIBMD_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES
                                                                                     "${LIBMD_INCLUDE_DIR}")
endif()
