# How a room of the house, a test of it and the like are declared.

# Of sources that exist once a platform, the ending of their names.
if(WIN32)
  set(EQREC_PLATFORM win32)
else()
  set(EQREC_PLATFORM posix)
endif()

# A target that does nothing but precompile the Qt headers, once for all rooms with windows.
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

# eqrec_room(<name> [WIDGETS] [USES <targets>] SOURCES <files>)
# A room is a static library eqrec_<name>; what it USES is all that it may include and call. A room with WIDGETS has
# forms, resources and Qt Widgets; any other links no Qt unless USES names it.
function(eqrec_room name)
  cmake_parse_arguments(ROOM "WIDGETS" "" "SOURCES;USES" ${ARGN})
  set(target eqrec_${name})
  add_library(${target} STATIC ${ROOM_SOURCES})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/plugin)
  target_link_libraries(${target} PUBLIC ${ROOM_USES})
  if(ROOM_WIDGETS)
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    target_link_libraries(${target} PUBLIC Qt6::Widgets)
    eqrec_precompiled_qt(${target})
  endif()
endfunction()

# eqrec_test(<room> USES <targets> SOURCES <files>)
# One test program a room, test_<room>, run headless.
function(eqrec_test room)
  cmake_parse_arguments(TEST "" "" "SOURCES;USES" ${ARGN})
  set(target test_${room})
  add_executable(${target} ${TEST_SOURCES})
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  target_link_libraries(${target} PRIVATE ${TEST_USES} eqrec_testTools)
  eqrec_precompiled_qt(${target})
  if(WIN32)  # where the usual format is printed for debuggers only
    set(format -o -,tap)
    set(fonts "QT_QPA_FONTDIR=Z:/usr/share/fonts/truetype/dejavu")
  endif()
  add_test(NAME ${room} COMMAND ${target} ${format})
  set_tests_properties(${room} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${fonts}" TIMEOUT 300)
endfunction()
