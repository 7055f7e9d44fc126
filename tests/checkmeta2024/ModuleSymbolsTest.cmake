# Checks the dynamic symbols of the built module: what it exports undecorated, and what it takes from the host.
#
#   cmake -D NM=… -D MODULE=… -D HOST_LIBRARIES=a.so,b.so,… -D ALLOWED=HostSymbols.txt -P ModuleSymbolsTest.cmake
cmake_minimum_required(VERSION 3.25)

# symbols(<variable> <library> <option of nm>...): the names of a library's dynamic symbols, the standard library's
# written as in sources.
function(symbols variable library)
  execute_process(
    COMMAND ${NM} -D --format=posix ${ARGN} ${library}
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  # Each line is "NAME TYPE VALUE SIZE"; only the name may hold spaces, and undefined symbols have no value.
  string(REPLACE "\n" ";" lines "${output}")
  list(TRANSFORM lines REPLACE " [A-Za-z]( +[0-9a-f]+)* *$" "")
  list(TRANSFORM lines REPLACE "@[A-Za-z0-9_.@]+$" "")
  list(REMOVE_ITEM lines "")
  string(REPLACE "[abi:cxx11]" "" lines "${lines}")
  string(REPLACE "std::__cxx11::" "std::" lines "${lines}")
  string(REPLACE "std::basic_string<char, std::char_traits<char>, std::allocator<char> >" "std::string" lines "${lines}")
  string(REGEX REPLACE ", std::allocator<([^<>]|<[^<>]*>)*> *>" ">" lines "${lines}")
  list(REMOVE_DUPLICATES lines)
  set(${variable} "${lines}" PARENT_SCOPE)
endfunction()

function(refuse_each problem)
  foreach(name IN LISTS ARGN)
    message(SEND_ERROR "${problem}: ${name}")
  endforeach()
endfunction()

symbols(exported ${MODULE} --defined-only)
# Names that begin with an underscore are decorated, or belong to the compiler and its sanitizers; mangle_path is of the
# coverage runtime.
list(FILTER exported EXCLUDE REGEX "^_|^mangle_path$")
if(NOT exported STREQUAL "CreateReflectionClassObject")
  message(SEND_ERROR "The one undecorated export must be CreateReflectionClassObject; found: ${exported}")
endif()

set(host "")
string(REPLACE "," ";" libraries "${HOST_LIBRARIES}")
foreach(library IN LISTS libraries)
  symbols(defined ${library} --defined-only --demangle)
  list(APPEND host ${defined})
endforeach()
symbols(undefined ${MODULE} --undefined-only --demangle)
file(STRINGS ${ALLOWED} allowed REGEX "^[^#]")

set(used "")
foreach(name IN LISTS undefined)
  if(name IN_LIST host)
    list(APPEND used "${name}")
  endif()
endforeach()
set(log "CLog::Print(char const*, int, char const*, std::string const&, int, std::string const&)")
if(NOT log IN_LIST used)
  message(SEND_ERROR "${log} is not among what the module takes from the host; has nm's output changed? Found: ${used}")
endif()
list(REMOVE_ITEM used ${allowed})
refuse_each("The module uses what ${ALLOWED} does not list" ${used})
list(REMOVE_ITEM allowed ${host})
refuse_each("${ALLOWED} lists what no host library defines" ${allowed})

symbols(all ${MODULE} --demangle)
list(FILTER all INCLUDE REGEX "(rapidjson|log4cplus|simdjson|soci)::")
refuse_each("Only the host may use this library" ${all})
