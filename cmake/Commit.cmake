# UPGRADESRV_COMMIT and UPGRADESRV_COMMIT_DATE: what is built. From git, or, in an archive that "git archive" has made, from
# commit.txt; otherwise "unknown", and the date is that of configuring.
set(UPGRADESRV_COMMIT unknown)
string(TIMESTAMP UPGRADESRV_COMMIT_DATE "%Y-%m-%d" UTC)

file(READ ${CMAKE_CURRENT_LIST_DIR}/commit.txt archived)
if(archived MATCHES "^([0-9a-f]+) ([0-9-]+)")
  set(UPGRADESRV_COMMIT ${CMAKE_MATCH_1})
  set(UPGRADESRV_COMMIT_DATE ${CMAKE_MATCH_2})
  return()
endif()

find_program(GIT git)
mark_as_advanced(GIT)
if(NOT GIT)
  return()
endif()

# Not the repository of somebody else in whose directory the sources have been unpacked.
cmake_path(GET PROJECT_SOURCE_DIR PARENT_PATH above)
set(git ${CMAKE_COMMAND} -E env GIT_CEILING_DIRECTORIES=${above} ${GIT} -C ${PROJECT_SOURCE_DIR})
execute_process(COMMAND ${git} log -1 --format=%cs OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
execute_process(
  COMMAND ${git} describe --always --abbrev=12 --exclude=* --dirty=+changes
  OUTPUT_VARIABLE commit
  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(commit AND date)
  set(UPGRADESRV_COMMIT ${commit})
  set(UPGRADESRV_COMMIT_DATE ${date})
  # Every commit is written down there.
  execute_process(COMMAND ${git} rev-parse --path-format=absolute --git-path logs/HEAD OUTPUT_VARIABLE log
                  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(EXISTS "${log}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${log})
  endif()
endif()
