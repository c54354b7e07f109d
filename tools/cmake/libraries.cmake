# How a library of plugin/, its test program and the like are declared.

# Of sources that exist once a platform, the ending of their names.
if(WIN32)
  set(EQREC_PLATFORM win32)
else()
  set(EQREC_PLATFORM posix)
endif()

# A target that does nothing but precompile the Qt headers, once for all libraries with windows.
function(eqrec_precompiled_qt target)
  if(NOT TARGET eqrec_precompiled)
    file(WRITE ${CMAKE_BINARY_DIR}/precompiled.cpp "")
    add_library(eqrec_precompiled STATIC ${CMAKE_BINARY_DIR}/precompiled.cpp)
    target_link_libraries(eqrec_precompiled PRIVATE Qt6::Widgets)
    # What many include, and no more: each source pays for the size of the whole.
    target_precompile_headers(eqrec_precompiled PRIVATE
      <QApplication> <QByteArrayList> <QCheckBox> <QComboBox> <QDialog> <QDir> <QElapsedTimer> <QFile> <QGridLayout>
      <QHeaderView> <QKeyEvent> <QLabel> <QLineEdit> <QMessageBox> <QPainter> <QPointer> <QPushButton> <QRadioButton>
      <QTableView> <QTimer> <QVBoxLayout>
      <algorithm> <filesystem> <functional> <memory> <optional> <string> <string_view> <vector>)
  endif()
  target_precompile_headers(${target} REUSE_FROM eqrec_precompiled)
endfunction()

# eqrec_library(<name> [WIDGETS] [USES <targets>] SOURCES <files>)
# Declares the static library eqrec_<name>. It may include and call only what it USES. With WIDGETS it has forms,
# resources and Qt Widgets; otherwise it links no Qt unless USES names it.
function(eqrec_library name)
  cmake_parse_arguments(LIBRARY "WIDGETS" "" "SOURCES;USES" ${ARGN})
  set(target eqrec_${name})
  add_library(${target} STATIC ${LIBRARY_SOURCES})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/plugin)
  target_link_libraries(${target} PUBLIC ${LIBRARY_USES})
  if(LIBRARY_WIDGETS)
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    target_link_libraries(${target} PUBLIC Qt6::Widgets)
    eqrec_precompiled_qt(${target})
  endif()
endfunction()

# Tests write to memory where there is room: on the disk of a busy machine they would mostly wait for each flush.
if(NOT WIN32)
  execute_process(COMMAND df --output=avail -B1M /dev/shm OUTPUT_VARIABLE EQREC_MEMORY_FREE ERROR_QUIET)
  string(REGEX MATCH "[0-9]+" EQREC_MEMORY_FREE "${EQREC_MEMORY_FREE}")
endif()

# eqrec_test(<library> USES <targets> SOURCES <files>)
# One test program a library, test_<library>, run headless.
function(eqrec_test library)
  cmake_parse_arguments(TEST "" "" "SOURCES;USES" ${ARGN})
  set(target test_${library})
  add_executable(${target} ${TEST_SOURCES})
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  target_link_libraries(${target} PRIVATE ${TEST_USES} eqrec_testTools)
  eqrec_precompiled_qt(${target})
  if(WIN32)  # where the usual format is printed for debuggers only
    set(format -o -,tap)
    set(place "QT_QPA_FONTDIR=Z:/usr/share/fonts/truetype/dejavu")
  elseif(EQREC_MEMORY_FREE GREATER 1000)
    set(place "TMPDIR=/dev/shm")
  endif()
  add_test(NAME ${library} COMMAND ${target} ${format})
  set_tests_properties(${library} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${place}" TIMEOUT 300)
endfunction()
