# SOCI, the database library, with the backends that are linked directly. Defines SOCI::core, SOCI::sqlite3 and
# SOCI::postgresql. Not every distribution's package comes with a configuration file of its own.
find_path(SOCI_INCLUDE_DIR soci/soci.h)
find_library(SOCI_CORE_LIBRARY soci_core)
find_library(SOCI_SQLITE3_LIBRARY soci_sqlite3)
find_library(SOCI_POSTGRESQL_LIBRARY soci_postgresql)
# SOCI's own headers include Boost's where it was built with them.
find_path(SOCI_BOOST_INCLUDE_DIR boost/version.hpp)
find_package(SQLite3 QUIET)
find_package(PostgreSQL QUIET)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(SOCI REQUIRED_VARS SOCI_CORE_LIBRARY SOCI_SQLITE3_LIBRARY SOCI_POSTGRESQL_LIBRARY
                                                     SOCI_INCLUDE_DIR SOCI_BOOST_INCLUDE_DIR SQLite3_FOUND
                                                     PostgreSQL_FOUND)
mark_as_advanced(SOCI_INCLUDE_DIR SOCI_BOOST_INCLUDE_DIR SOCI_CORE_LIBRARY SOCI_SQLITE3_LIBRARY SOCI_POSTGRESQL_LIBRARY)

function(soci_add_target name library)
  if(NOT TARGET SOCI::${name})
    add_library(SOCI::${name} UNKNOWN IMPORTED)
    set_target_properties(SOCI::${name} PROPERTIES IMPORTED_LOCATION "${library}" INTERFACE_INCLUDE_DIRECTORIES
                                                                                  "${SOCI_INCLUDE_DIR};${SOCI_BOOST_INCLUDE_DIR}")
    target_link_libraries(SOCI::${name} INTERFACE ${ARGN})
  endif()
endfunction()

if(SOCI_FOUND)
  soci_add_target(core "${SOCI_CORE_LIBRARY}")
  soci_add_target(sqlite3 "${SOCI_SQLITE3_LIBRARY}" SOCI::core SQLite::SQLite3)
  soci_add_target(postgresql "${SOCI_POSTGRESQL_LIBRARY}" SOCI::core PostgreSQL::PostgreSQL)
endif()
