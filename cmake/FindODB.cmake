# The ODB compiler and its runtime for SQLite.
#
# Component `compiler` sets ODB_EXECUTABLE. The runtime is always looked for: targets ODB::libodb and ODB::sqlite.
# The folder that scripts/setup fills is searched first. The module is installed with tessel, for the sake of its hosts.

include(FindPackageHandleStandardArgs)

set(_odb_hints "${CMAKE_CURRENT_LIST_DIR}/../.deps/odb")
find_path(ODB_INCLUDE_DIR odb/database.hxx HINTS ${_odb_hints} PATH_SUFFIXES include)
find_library(ODB_LIBRARY odb HINTS ${_odb_hints} PATH_SUFFIXES lib)
find_library(ODB_SQLITE_LIBRARY odb-sqlite HINTS ${_odb_hints} PATH_SUFFIXES lib)
set(_odb_required ODB_LIBRARY ODB_SQLITE_LIBRARY ODB_INCLUDE_DIR)

if("compiler" IN_LIST ODB_FIND_COMPONENTS)
  find_program(ODB_EXECUTABLE odb)
  if(ODB_EXECUTABLE)
    set(ODB_compiler_FOUND TRUE)
  endif()
endif()

find_package_handle_standard_args(ODB REQUIRED_VARS ${_odb_required} HANDLE_COMPONENTS)
mark_as_advanced(ODB_INCLUDE_DIR ODB_LIBRARY ODB_SQLITE_LIBRARY ODB_EXECUTABLE)

if(ODB_FOUND AND NOT TARGET ODB::libodb)
  add_library(ODB::libodb SHARED IMPORTED)
  set_target_properties(ODB::libodb PROPERTIES
    IMPORTED_LOCATION "${ODB_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${ODB_INCLUDE_DIR}")
  add_library(ODB::sqlite SHARED IMPORTED)
  set_target_properties(ODB::sqlite PROPERTIES
    IMPORTED_LOCATION "${ODB_SQLITE_LIBRARY}"
    INTERFACE_LINK_LIBRARIES ODB::libodb)
endif()
