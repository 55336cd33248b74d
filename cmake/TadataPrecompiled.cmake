# SPDX-License-Identifier: MIT
# Qt's headers, read by the compiler once and not by every source: half of the time of a build without
# a compiler cache. A target takes those of the Qt libraries that it is linked with; the compiler
# refuses them where its options differ.
include_guard(GLOBAL)

option(TADATA_PRECOMPILED_HEADERS "Read Qt's headers once for all sources" OFF)

set(TADATA_PRECOMPILED_Core
  <algorithm> <array> <functional> <memory> <optional> <vector>
  <QtCore/QBitArray> <QtCore/QCborMap> <QtCore/QCoreApplication> <QtCore/QDateTime> <QtCore/QDir>
  <QtCore/QFile> <QtCore/QFileInfo> <QtCore/QList> <QtCore/QLocale> <QtCore/QObject> <QtCore/QPointer>
  <QtCore/QProcess> <QtCore/QRandomGenerator> <QtCore/QRegularExpression> <QtCore/QScopeGuard>
  <QtCore/QSequentialIterable> <QtCore/QSet> <QtCore/QSharedPointer> <QtCore/QStringList>
  <QtCore/QTemporaryDir> <QtCore/QTextStream> <QtCore/QThread> <QtCore/QTimer> <QtCore/QUrl>
  <QtCore/QUuid> <QtCore/QVariant>)
set(TADATA_PRECOMPILED_Widgets
  <QtGui/QKeyEvent> <QtGui/QPainter> <QtGui/QStandardItemModel> <QtWidgets/QApplication>
  <QtWidgets/QComboBox> <QtWidgets/QDialog> <QtWidgets/QHeaderView> <QtWidgets/QLabel>
  <QtWidgets/QMenu> <QtWidgets/QMessageBox> <QtWidgets/QPushButton> <QtWidgets/QTableWidget>
  <QtWidgets/QTreeView> <QtWidgets/QVBoxLayout> <QtWidgets/QWizard>)
# Those of Qt Test cannot be shared: they know the folder of the test. What they include can.

# Everything that the targets are linked with, at any distance.
function(tadata_linked_with targets result)
  set(found)
  while(targets)
    list(POP_FRONT targets target)
    string(REGEX REPLACE "^\\$<BUILD_INTERFACE:(.*)>$" "\\1" target "${target}")
    if(NOT TARGET "${target}")
      continue()
    endif()
    get_target_property(real "${target}" ALIASED_TARGET)
    if(real)
      set(target "${real}")
    endif()
    if(target IN_LIST found)
      continue()
    endif()
    list(APPEND found "${target}")
    get_target_property(libraries "${target}" INTERFACE_LINK_LIBRARIES)
    if(libraries)
      list(APPEND targets ${libraries})
    endif()
  endwhile()
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

# The target whose precompiled headers fit one with these libraries; empty: none.
function(tadata_precompiled_for libraries result)
  set(${result} "" PARENT_SCOPE)
  if(NOT "Qt6::Core" IN_LIST libraries OR NOT "tadata_options" IN_LIST libraries)
    return()
  endif()
  set(parts Core)
  if("Qt6::Widgets" IN_LIST libraries)
    list(APPEND parts Widgets)
  elseif("Qt6::Gui" IN_LIST libraries)
    return()
  endif()
  list(JOIN parts "_" name)
  set(name "tadata_precompiled_${name}")
  if(NOT TARGET ${name})
    set(source "${CMAKE_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "")
    add_library(${name} OBJECT "${source}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    foreach(part ${parts})
      target_link_libraries(${name} PRIVATE Qt6::${part})
      target_precompile_headers(${name} PRIVATE ${TADATA_PRECOMPILED_${part}})
    endforeach()
    target_link_libraries(${name} PRIVATE tadata_options)
  endif()
  set(${result} ${name} PARENT_SCOPE)
endfunction()

# For every library and program in the folder and below it.
function(tadata_precompile_headers folder)
  get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    if(type MATCHES "EXECUTABLE|(STATIC|SHARED|MODULE)_LIBRARY")
      get_target_property(libraries ${target} LINK_LIBRARIES)
      tadata_linked_with("${libraries}" libraries)
      tadata_precompiled_for("${libraries}" precompiled)
      if(precompiled)
        target_precompile_headers(${target} REUSE_FROM ${precompiled})
        # A compiler cache asks for it.
        target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
        # A program's classes stand in its sources: in what is generated for its headers there is mostly
        # nothing, and to load them is all that it costs.
        if(type STREQUAL EXECUTABLE)
          get_target_property(binary_dir ${target} BINARY_DIR)
          set_source_files_properties("${binary_dir}/${target}_autogen/mocs_compilation.cpp"
            TARGET_DIRECTORY ${target} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
        endif()
      endif()
    endif()
  endforeach()
  get_property(folders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
  foreach(below ${folders})
    tadata_precompile_headers("${below}")
  endforeach()
endfunction()
