# cpack: three packages for Debian and Ubuntu, one for each component of the installation.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessel)
set(CPACK_PACKAGE_CONTACT "the tessel authors <tessel@localhost>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development)
if(TARGET tessel_program)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
# What one component needs of another, or of a runtime that goes along, belongs to no package yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

get_target_property(abi tessel SOVERSION)
# tessel_package(COMPONENT NAME SECTION TEXT): all have the project's own line first.
macro(tessel_package component name section text)
  string(TOUPPER ${component} _component)
  set(CPACK_DEBIAN_${_component}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${_component}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${_component}_DESCRIPTION "${text}")
  # Each package wants it in a folder of its own, which a plain installation does without.
  install(FILES packaging/copyright DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component}
    EXCLUDE_FROM_ALL)
endmacro()
tessel_package(library libtessel${abi} libs
  "The library keeps sites, buildings and stories, units, and a catalogue of
property definitions.")
tessel_package(development libtessel-dev libdevel
  "What a program needs to be built with the library: headers, and files for
CMake and pkg-config.")
tessel_package(tools tessel-tools utils
  "The program tessel makes project files, fills them from XML documents, and
shows and copies what is in them.")

set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_COMPONENT_TOOLS_DEPENDS library)
if(own_odb)
  # The files of the runtime are where those of the distribution would be.
  set(runtime "libodb-2.4, libodb-sqlite-2.4")
  list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${own_folder}/odb/lib")
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONFLICTS "${runtime}")
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_REPLACES "${runtime}")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS libsqlite3-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_CONFLICTS "libodb-dev, libodb-sqlite-dev")
else()
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libodb-dev, libodb-sqlite-dev")
endif()

include(CPack)
