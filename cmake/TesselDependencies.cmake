# Everything from outside. All that is missing is told in one message, not one by one.

set(_missing "")

macro(tessel_need description)
  find_package(${ARGN} QUIET)
  if(NOT ${ARGV1}_FOUND)
    list(APPEND _missing "${description}")
  endif()
endmacro()

tessel_need("ODB 2.4 (compiler and runtime)" ODB COMPONENTS compiler)
tessel_need("pugixml in wide-character mode" PugixmlWide)
tessel_need("SQLite 3" SQLite3)
tessel_need("Boost headers" Boost CONFIG)
tessel_need("threads" Threads)

# The name of the package's own target differs between its versions.
find_path(UTFCPP_INCLUDE_DIR utf8.h PATH_SUFFIXES utf8cpp)
mark_as_advanced(UTFCPP_INCLUDE_DIR)
if(UTFCPP_INCLUDE_DIR)
  add_library(tessel_utfcpp INTERFACE)
  target_include_directories(tessel_utfcpp SYSTEM INTERFACE "${UTFCPP_INCLUDE_DIR}")
else()
  list(APPEND _missing "utfcpp")
endif()

if(TESSEL_BUILD_TESTS)
  tessel_need("GoogleTest" GTest)
endif()
if(TESSEL_BUILD_BENCHMARKS)
  tessel_need("Google Benchmark" benchmark)
endif()

if(_missing)
  list(JOIN _missing ", " _missing)
  message(FATAL_ERROR "Not found: ${_missing}. Run scripts/setup, then configure again.")
endif()
