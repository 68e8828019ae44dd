# How our own sources are compiled, and what their tests run with.

add_library(tessel_warnings INTERFACE)
target_compile_options(tessel_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual
  $<$<BOOL:${TESSEL_WERROR}>:-Werror>)

string(FIND "${CMAKE_CXX_FLAGS}" "-fsanitize=" _sanitized)
if(_sanitized EQUAL -1)
  set(TESSEL_SANITIZED OFF)
  set(TESSEL_TEST_ENVIRONMENT "")
else()
  set(TESSEL_SANITIZED ON)
  # The query parts of ODB 2.4 carry a bool that is copied before it is ever set, and never looked at.
  add_compile_options(-fno-sanitize=bool)
  # Instrumented code makes g++ see uninitialized variables where there are none, as its manual says.
  target_compile_options(tessel_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  set(TESSEL_TEST_ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1" "UBSAN_OPTIONS=print_stacktrace=1")
endif()

# tessel_sources(VARIABLE PATTERN...): all sources that match now; a new file makes the build configure again by itself.
function(tessel_sources variable)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS ${ARGN})
  set(${variable} "${found}" PARENT_SCOPE)
endfunction()
