# The target "reference": pages about every public header, from the comments in them. A comment that names what is not there,
# or a parameter that it does not have, is an error. Whoever installs without having built it installs none.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  get_property(headers GLOBAL PROPERTY UPGRADESRV_PUBLIC_HEADERS)
  set(DOXYGEN_PROJECT_NAME "upgradesrv: writing strategies")
  set(DOXYGEN_PROJECT_NUMBER ${PROJECT_VERSION})
  set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/reference)
  set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR}/host ${PROJECT_SOURCE_DIR}/deploy_tools/upgradesrv/src)
  set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${PROJECT_SOURCE_DIR}/docs/writing-a-strategy.md)
  set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
  # Members whose names say all have no comment.
set(DOXYGEN_EXTRACT_ALL YES)
  set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
  set(DOXYGEN_QUIET YES)
  # Plain pages, which need no scripts.
  set(DOXYGEN_HAVE_DOT NO)
  set(DOXYGEN_SEARCHENGINE NO)
  set(DOXYGEN_HTML_DYNAMIC_MENUS NO)
  doxygen_add_docs(reference ${headers} ${PROJECT_SOURCE_DIR}/docs/writing-a-strategy.md)
  install(
    DIRECTORY ${PROJECT_BINARY_DIR}/reference/html
    DESTINATION share/doc/upgradesrv-dev
    COMPONENT dev OPTIONAL)
endif()
