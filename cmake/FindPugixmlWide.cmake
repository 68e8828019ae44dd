# pugixml built in wide-character mode: target pugixml::wide.
#
# Distributions build pugixml narrow. A narrow archive must never pass for a wide one, hence the name of its own.

include(FindPackageHandleStandardArgs)

set(_pugixml_hints "${CMAKE_CURRENT_LIST_DIR}/../.deps/pugixml")
find_library(PugixmlWide_LIBRARY pugixml-wide HINTS ${_pugixml_hints} PATH_SUFFIXES lib)
if(PugixmlWide_LIBRARY)
  # The header must be the archive's own: another pugixml on the system would be found otherwise.
  cmake_path(GET PugixmlWide_LIBRARY PARENT_PATH _pugixml_lib)
  find_path(PugixmlWide_INCLUDE_DIR pugixml.hpp
    PATHS "${_pugixml_lib}/.." "${_pugixml_lib}/../.." PATH_SUFFIXES include/pugixml-wide include NO_DEFAULT_PATH)
endif()

find_package_handle_standard_args(PugixmlWide REQUIRED_VARS PugixmlWide_LIBRARY PugixmlWide_INCLUDE_DIR)
mark_as_advanced(PugixmlWide_LIBRARY PugixmlWide_INCLUDE_DIR)

if(PugixmlWide_FOUND AND NOT TARGET pugixml::wide)
  add_library(pugixml::wide STATIC IMPORTED)
  set_target_properties(pugixml::wide PROPERTIES
    IMPORTED_LOCATION "${PugixmlWide_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${PugixmlWide_INCLUDE_DIR}"
    INTERFACE_COMPILE_DEFINITIONS PUGIXML_WCHAR_MODE)
endif()
