# Checks that whatever is installed is hardened: the executable, each shared library and the module.
#
#   cmake -D READELF=… -D BUILD_DIR=… -D SOURCE_DIR=… -D WORK_DIR=… -D FORTIFIED=a,b,… -P HardeningTest.cmake
#
# WORK_DIR is removed and installed into. FORTIFIED is empty in a build without fortified functions; else it names files
# that call some. The others call no function that has a fortified form.
cmake_minimum_required(VERSION 3.25)
set(ENV{LC_ALL} C)

file(REMOVE_RECURSE ${WORK_DIR})
execute_process(
  COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

# require(<regular expression> <what is missing without it>): about the ELF file of the loop below.
function(require expression problem)
  if(NOT elf MATCHES "${expression}")
    message(SEND_ERROR "${name}: ${problem}")
  endif()
endfunction()

set(executables "")
set(libraries "")
set(fortified "")
file(GLOB_RECURSE files LIST_DIRECTORIES false ${WORK_DIR}/*)
foreach(file IN LISTS files)
  file(READ ${file} magic LIMIT 4 HEX)
  if(IS_SYMLINK ${file} OR NOT magic STREQUAL "7f454c46")
    continue()
  endif()
  get_filename_component(name ${file} NAME)
  execute_process(
    COMMAND ${READELF} --wide --file-header --program-headers --dynamic --dyn-syms ${file}
    OUTPUT_VARIABLE elf COMMAND_ERROR_IS_FATAL ANY)

  require("\n +GNU_RELRO " "the relocated data stays writable, -z relro is missing")
  require("\\(FLAGS\\)[^\n]* BIND_NOW|\\(FLAGS_1\\)[^\n]* NOW" "symbols are bound late, -z now is missing")
  require("\n +GNU_STACK( +0x[0-9a-f]+)+ +RW +0x" "the stack is executable, or nothing says that it is not")
  require(" __stack_chk_fail@" "no function is protected against overflows of the stack")
  if(elf MATCHES "\n +INTERP ")
    list(APPEND executables ${name})
    require("\n +Type: +DYN " "the executable is not position-independent")
    require("\\(FLAGS_1\\)[^\n]* PIE" "the executable is not linked as position-independent")
  else()
    list(APPEND libraries ${name})
  endif()
  string(REGEX REPLACE " __stack_chk_[a-z]+@" "" elf "${elf}")
  if(elf MATCHES " __[a-z_]+_chk@")
    list(APPEND fortified ${name})
  endif()
endforeach()
file(REMOVE_RECURSE ${WORK_DIR})

# Guards the checks above against looking at nothing.
if(NOT executables STREQUAL "upgradesrv")
  message(SEND_ERROR "The one installed executable must be upgradesrv; found: ${executables}")
endif()
if(NOT libraries MATCHES "libcheckmeta2024\\.so" OR NOT libraries MATCHES "libkvxsptjson\\.so")
  message(SEND_ERROR "The module or a host library is not among what is installed: ${libraries}")
endif()

string(REPLACE "," ";" fortified_expected "${FORTIFIED}")
foreach(expected IN LISTS fortified_expected)
  if(NOT fortified MATCHES "(^|;)${expected}(\\.|;|$)")
    message(SEND_ERROR "${expected} calls no fortified function; those that do: ${fortified}")
  endif()
endforeach()
if(FORTIFIED)
  file(READ ${BUILD_DIR}/compile_commands.json commands)
  string(JSON count LENGTH "${commands}")
  math(EXPR last "${count} - 1")
  set(checked 0)
  foreach(index RANGE ${last})
    string(JSON source GET "${commands}" ${index} file)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${SOURCE_DIR} OUTPUT_VARIABLE relative)
    if(relative MATCHES "^(host|deploy_tools)/")
      string(JSON command GET "${commands}" ${index} command)
      math(EXPR checked "${checked} + 1")
      if(NOT command MATCHES " -O[1-3s].* -D_FORTIFY_SOURCE=[23]( |$)"
         OR command MATCHES "_FORTIFY_SOURCE=.* -[UD]_FORTIFY_")
        message(SEND_ERROR "${relative} is compiled without fortified functions: ${command}")
      endif()
    endif()
  endforeach()
  if(checked EQUAL 0)
    message(SEND_ERROR "${BUILD_DIR}/compile_commands.json has no source of the libraries or the tool")
  endif()
endif()
