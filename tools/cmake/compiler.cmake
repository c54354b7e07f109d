# Warnings, sanitizers and the compiler cache, for every target below.

set(warnings -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2)
if(EQREC_WERROR)
  list(APPEND warnings -Werror)
endif()
add_compile_options("$<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:${warnings}>")
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# GCC 12 takes the parts of a variant or an optional that are not in use for uninitialized as soon as it inlines enough:
# at -O3, and with sanitizers. The daily build keeps the warning.
if(EQREC_SANITIZE OR CMAKE_BUILD_TYPE STREQUAL "Release")
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

if(CMAKE_UNITY_BUILD)  # to which all sources are included ones, whose types would be known elsewhere
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

if(EQREC_SANITIZE)
  add_compile_options(-fsanitize=${EQREC_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${EQREC_SANITIZE})
endif()

find_program(EQREC_CCACHE ccache)
if(EQREC_CCACHE)
  # The sloppiness is what the compiler cache needs to work with precompiled headers. The compiler
  # itself says what a source depends on: to preprocess each one for that would make a first build longer.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_DEPEND=1
      ${EQREC_CCACHE})
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()
