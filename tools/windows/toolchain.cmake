# What the project is built with for Windows: the cross compiler, and Qt as tools/windows/build-qt leaves it.
include(${CMAKE_CURRENT_LIST_DIR}/cross-compiler.cmake)

get_filename_component(eqrec_root ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
set(EQREC_WINDOWS_QT ${eqrec_root}/build/qt6-mingw64)
list(APPEND CMAKE_FIND_ROOT_PATH ${EQREC_WINDOWS_QT})
set(CMAKE_PREFIX_PATH ${EQREC_WINDOWS_QT})

# Qt's tools that run while building are those of this machine.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

# Boost, spdlog and fmt are headers only. A folder of their own holds links to them: the cross compiler must not see the
# rest of this machine's include folder.
set(eqrec_headers ${eqrec_root}/build/windows-headers)
file(MAKE_DIRECTORY ${eqrec_headers})
foreach(library boost spdlog fmt)
  if(NOT EXISTS ${eqrec_headers}/${library})
    file(CREATE_LINK /usr/include/${library} ${eqrec_headers}/${library} SYMBOLIC)
  endif()
endforeach()
set(Boost_NO_BOOST_CMAKE ON)
set(Boost_INCLUDE_DIR ${eqrec_headers})
set(EQREC_SPDLOG_INCLUDE_DIR ${eqrec_headers})

# The checksum is not worth a library beside the module.
set(ZLIB_LIBRARY /usr/x86_64-w64-mingw32/lib/libz.a)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine)
