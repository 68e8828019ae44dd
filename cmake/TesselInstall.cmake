# cmake --install: library, headers, program, and what a host needs to find and to run them. The tree that results can be
# moved as a whole.

include(CMakePackageConfigHelpers)

set(package "${CMAKE_INSTALL_LIBDIR}/cmake/tessel")
set(own_folder "${PROJECT_SOURCE_DIR}/.deps")

install(TARGETS tessel EXPORT tesselTargets)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
if(TARGET tessel_program)
  install(TARGETS tessel_program)
  file(RELATIVE_PATH to_libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
  set_target_properties(tessel_program PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
endif()

# A runtime that scripts/setup has built goes along; one of the distribution is where hosts find it anyway.
cmake_path(IS_PREFIX own_folder "${ODB_LIBRARY}" own_odb)
if(own_odb)
  set_target_properties(tessel PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(DIRECTORY "${own_folder}/odb/lib/" DESTINATION "${CMAKE_INSTALL_LIBDIR}" FILES_MATCHING PATTERN "libodb*.so*")
  install(DIRECTORY "${own_folder}/odb/include/odb" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
endif()
# The folder of its own keeps the wide headers apart from a narrow pugixml in the same prefix.
install(DIRECTORY "${PugixmlWide_INCLUDE_DIR}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/pugixml-wide"
  FILES_MATCHING PATTERN "pugi*")
install(FILES "${PugixmlWide_LIBRARY}" DESTINATION "${CMAKE_INSTALL_LIBDIR}")

configure_package_config_file(cmake/tesselConfig.cmake.in "${PROJECT_BINARY_DIR}/package/tesselConfig.cmake"
  INSTALL_DESTINATION "${package}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/tesselConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(EXPORT tesselTargets NAMESPACE tessel:: DESTINATION "${package}")
install(FILES "${PROJECT_BINARY_DIR}/package/tesselConfig.cmake" "${PROJECT_BINARY_DIR}/package/tesselConfigVersion.cmake"
  cmake/FindODB.cmake cmake/FindPugixmlWide.cmake
  DESTINATION "${package}")

file(RELATIVE_PATH to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/tessel.pc.in "${PROJECT_BINARY_DIR}/package/tessel.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/tessel.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
