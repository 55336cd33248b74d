# SPDX-License-Identifier: MIT
# What every target of the project shares: the language level, warnings, sanitizers and output
# folders. Used by host/ and by the plug-in alike, whether host/ is built here or on its own.
include_guard(GLOBAL)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
# The target "autogen": the code that is generated for all of them, without a compiler.
set(CMAKE_GLOBAL_AUTOGEN_TARGET ON)
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)

# Programs and plug-ins lie side by side as they do after installation, so that the terminal
# finds "plugins/" next to itself when it is started from the build folder.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
# From a library, from a program in its folder below the libraries, and from a plug-in below that.
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/..;$ORIGIN/../..")

set(TADATA_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them: address,undefined or thread")
option(TADATA_COVERAGE "Instrument for gcov" OFF)
# On where we look at them; elsewhere other compilers and options have warnings of their own.
option(TADATA_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)

# With precompiled headers it caches only what it may judge by the content alone.
find_program(TADATA_CCACHE ccache)
if(TADATA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
    env CCACHE_SLOPPINESS=include_file_ctime,include_file_mtime,pch_defines,time_macros
    "${TADATA_CCACHE}")
endif()

add_library(tadata_options INTERFACE)
target_compile_definitions(tadata_options INTERFACE
  QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060200
  QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)
target_compile_options(tadata_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
  -Wconversion -Wno-sign-conversion -Wformat=2
  $<$<BOOL:${TADATA_WARNINGS_AS_ERRORS}>:-Werror>)
if(TADATA_SANITIZE)
  target_compile_options(tadata_options INTERFACE
    -fsanitize=${TADATA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tadata_options INTERFACE -fsanitize=${TADATA_SANITIZE})
endif()
if(TADATA_COVERAGE)
  # Threads count as well: without atomic counters they lose counts, and gcov gets negative numbers.
  target_compile_options(tadata_options INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(tadata_options INTERFACE --coverage)
endif()

# tadata_install_program(target COMPONENT name): into the terminal's folder, with a link to it in the
# folder for programs.
function(tadata_install_program target)
  cmake_parse_arguments(arg "" "COMPONENT" "" ${ARGN})
  install(TARGETS ${target} RUNTIME DESTINATION "${VEXDESK_PROGRAM_DIR}" COMPONENT ${arg_COMPONENT})
  file(RELATIVE_PATH path "/${CMAKE_INSTALL_BINDIR}" "/${VEXDESK_PROGRAM_DIR}/${target}")
  set(link "${CMAKE_CURRENT_BINARY_DIR}/links/${target}")
  file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/links")
  file(CREATE_LINK "${path}" "${link}" SYMBOLIC)
  install(FILES "${link}" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT ${arg_COMPONENT})
endfunction()
