# SPDX-License-Identifier: MIT
# The translation files (*.ts in translations/) and what the programs load of them (*.qm).
include_guard(DIRECTORY) # what find_package finds is known there and below

find_package(Qt6 6.2 REQUIRED COMPONENTS LinguistTools)

# tadata_release_translations(target NAMES name... [WITH name...] OUTPUT folder)
# With the target, the files NAME_xx.ts become NAME_xx.qm in this folder of the build tree; each also
# holds the texts of the files that are named behind WITH.
function(tadata_release_translations target)
  cmake_parse_arguments(arg "" "OUTPUT" "NAMES;WITH" ${ARGN})
  set(released)
  foreach(name ${arg_NAMES})
    file(GLOB sources CONFIGURE_DEPENDS
      "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../translations/${name}_??.ts")
    foreach(source ${sources})
      get_filename_component(file "${source}" NAME_WE)
      set(qm "${arg_OUTPUT}/${file}.qm")
      get_filename_component(folder "${source}" DIRECTORY)
      foreach(other ${arg_WITH})
        string(REGEX REPLACE "^${name}" "${other}" other_file "${file}")
        list(APPEND source "${folder}/${other_file}.ts")
      endforeach()
      add_custom_command(OUTPUT "${qm}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${arg_OUTPUT}"
        COMMAND Qt6::lrelease -silent ${source} -qm "${qm}"
        DEPENDS ${source} VERBATIM)
      list(APPEND released "${qm}")
    endforeach()
  endforeach()
  add_custom_target(${target}_translations DEPENDS ${released})
  add_dependencies(${target} ${target}_translations)
  set(TADATA_RELEASED_TRANSLATIONS "${released}" PARENT_SCOPE)
endfunction()

# tadata_add_translations(target NAMES name... [WITH name...] OUTPUT folder DESTINATION folder
#   COMPONENT name)
# The same, and installs them to the folder DESTINATION.
function(tadata_add_translations target)
  cmake_parse_arguments(arg "" "OUTPUT;DESTINATION;COMPONENT" "NAMES;WITH" ${ARGN})
  tadata_release_translations(${target}
    NAMES ${arg_NAMES} WITH ${arg_WITH} OUTPUT "${arg_OUTPUT}")
  install(FILES ${TADATA_RELEASED_TRANSLATIONS} DESTINATION "${arg_DESTINATION}"
    COMPONENT ${arg_COMPONENT})
endfunction()
