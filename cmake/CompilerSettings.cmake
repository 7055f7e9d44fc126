# Settings that hold for every target of this build and for none outside it.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Without it, executables are linked as the compiler does by default.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

add_library(upgradesrv_settings INTERFACE)
target_compile_options(
  upgradesrv_settings
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wshadow
            $<$<BOOL:${UPGRADESRV_WARNINGS_AS_ERRORS}>:-Werror>
            -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
# An undefined symbol is an error of the library that has it, not of the program that loads it; sanitizers resolve
# theirs from the executable. Fortified functions hide from the sanitizers what they look at.
if(UPGRADESRV_SANITIZE)
  target_compile_options(upgradesrv_settings INTERFACE -fsanitize=${UPGRADESRV_SANITIZE} -fno-omit-frame-pointer
                                                       -fno-sanitize-recover=all)
  # The check of virtual calls asks for type information that SOCI's libraries hide; a target that sets USES_SOCI goes
  # without it.
  target_compile_options(upgradesrv_settings INTERFACE $<$<BOOL:$<TARGET_PROPERTY:USES_SOCI>>:-fno-sanitize=vptr>)
  target_link_options(upgradesrv_settings INTERFACE -fsanitize=${UPGRADESRV_SANITIZE})
else()
  target_compile_options(
    upgradesrv_settings INTERFACE $<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
  target_link_options(upgradesrv_settings INTERFACE LINKER:--no-undefined)
endif()
target_compile_options(upgradesrv_settings INTERFACE -fstack-protector-strong)
target_link_options(upgradesrv_settings INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
if(UPGRADESRV_COVERAGE)
  target_compile_options(upgradesrv_settings INTERFACE --coverage)
  target_link_options(upgradesrv_settings INTERFACE --coverage)
endif()
