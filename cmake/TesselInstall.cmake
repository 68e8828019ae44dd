# cmake --install: library, headers, program, and what a host needs to find and to run them. The tree that results can be
# moved as a whole. The components are the packages that TesselPackages.cmake makes of it.

include(CMakePackageConfigHelpers)

set(package "${CMAKE_INSTALL_LIBDIR}/cmake/tessel")
set(own_folder "${PROJECT_SOURCE_DIR}/.deps")

# tessel_strip_installed(COMPONENT FILE...): cmake --install --strip knows targets only, so these libraries are told to it.
function(tessel_strip_installed component)
  foreach(file IN LISTS ARGN)
    cmake_path(GET file FILENAME name)
    install(CODE "if(CMAKE_INSTALL_DO_STRIP)
      execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-unneeded
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/${name}\" COMMAND_ERROR_IS_FATAL ANY)
    endif()" COMPONENT ${component})
  endforeach()
endfunction()

install(TARGETS tessel EXPORT tesselTargets
  LIBRARY COMPONENT library NAMELINK_COMPONENT development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
  FILES_MATCHING PATTERN "*.h")

if(TARGET tessel_program)
  install(TARGETS tessel_program COMPONENT tools)
  file(RELATIVE_PATH to_libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
  set_target_properties(tessel_program PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
  install(FILES man/tessel.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools)
  install(FILES completion/tessel.bash DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME tessel
    COMPONENT tools)
  install(FILES docs/import-document.rng DESTINATION "${CMAKE_INSTALL_DATADIR}/tessel" COMPONENT tools)
endif()

# A runtime that scripts/setup has built goes along; one of the distribution is where hosts find it anyway.
cmake_path(IS_PREFIX own_folder "${ODB_LIBRARY}" own_odb)
if(own_odb)
  set_target_properties(tessel PROPERTIES INSTALL_RPATH "$ORIGIN")
  file(GLOB runtime "${own_folder}/odb/lib/libodb-*[0-9].so" "${own_folder}/odb/lib/libodb-sqlite-*[0-9].so")
  install(FILES ${runtime} DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library)
  tessel_strip_installed(library ${runtime})
  install(DIRECTORY "${own_folder}/odb/lib/" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    FILES_MATCHING PATTERN "libodb.so" PATTERN "libodb-sqlite.so" PATTERN "pkgconfig" EXCLUDE)
  install(DIRECTORY "${own_folder}/odb/include/odb" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)
endif()
# The folder of its own keeps the wide headers apart from a narrow pugixml in the same prefix.
install(DIRECTORY "${PugixmlWide_INCLUDE_DIR}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/pugixml-wide"
  COMPONENT development FILES_MATCHING PATTERN "pugi*.hpp")
install(FILES "${PugixmlWide_LIBRARY}" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
tessel_strip_installed(development "${PugixmlWide_LIBRARY}")

configure_package_config_file(cmake/tesselConfig.cmake.in "${PROJECT_BINARY_DIR}/package/tesselConfig.cmake"
  INSTALL_DESTINATION "${package}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/tesselConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(EXPORT tesselTargets NAMESPACE tessel:: DESTINATION "${package}" COMPONENT development)
install(FILES "${PROJECT_BINARY_DIR}/package/tesselConfig.cmake" "${PROJECT_BINARY_DIR}/package/tesselConfigVersion.cmake"
  cmake/FindODB.cmake cmake/FindPugixmlWide.cmake
  DESTINATION "${package}" COMPONENT development)

cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig"
  OUTPUT_VARIABLE to_prefix)
configure_file(cmake/tessel.pc.in "${PROJECT_BINARY_DIR}/package/tessel.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/tessel.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT development)

include(TesselPackages)
