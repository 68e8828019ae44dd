# The ODB compiler's step: tessel_odb_generate(VARIABLE) makes <build>/generated/tessel/mapping-odb.{hxx,ixx,cxx} out of
# src/persistence/mapping.h and gives the names of the three files back.

# The traits that map text and pointers must be known before the generated code; hence the prologue. The generated header
# includes its input by the bare name, which the regular expression completes.
set(TESSEL_ODB_OPTIONS
  --database sqlite --std c++14 -x -std=c++17
  --at-once --generate-query --generate-prepared
  --default-pointer tessel::TsSmartPtr
  --table-prefix tessel_
  --hxx-prologue "#include \"persistence/traits.h\""
  --include-regex "%^mapping\\.h$%persistence/mapping.h%"
  --guard-prefix TESSEL)

function(tessel_odb_generate variable)
  set(mapping "${PROJECT_SOURCE_DIR}/src/persistence/mapping.h")
  set(folder "${PROJECT_BINARY_DIR}/generated/tessel")
  set(outputs "${folder}/mapping-odb.hxx" "${folder}/mapping-odb.ixx" "${folder}/mapping-odb.cxx")
  set(${variable} "${outputs}" PARENT_SCOPE)

  # A glob, not a plain test: the build then notices by itself that the mapping has come.
  tessel_sources(found "${mapping}")
  if(NOT found)
    message(STATUS "tessel: src/persistence/mapping.h is not there, so the ODB step is left out")
    set(${variable} "" PARENT_SCOPE)
    return()
  endif()

  set(ours -I "${PROJECT_SOURCE_DIR}/include" -I "${PROJECT_SOURCE_DIR}/src")
  set(depfile "${folder}/mapping-odb.d")
  file(MAKE_DIRECTORY "${folder}")
  set_source_files_properties("${folder}/mapping-odb.ixx" PROPERTIES HEADER_FILE_ONLY ON)
  # The ODB compiler does not say what it has read, so the C++ compiler is asked for it.
  add_custom_command(
    OUTPUT ${outputs}
    COMMAND ${CMAKE_CXX_COMPILER} -std=c++17 -MM -DODB_COMPILER ${ours}
      -isystem "${ODB_INCLUDE_DIR}" -isystem "${UTFCPP_INCLUDE_DIR}"
      -x c++ "${mapping}" -MT "${folder}/mapping-odb.hxx" -MF "${depfile}"
    COMMAND ${ODB_EXECUTABLE} ${TESSEL_ODB_OPTIONS} ${ours} -I "${ODB_INCLUDE_DIR}" -I "${UTFCPP_INCLUDE_DIR}"
      --output-dir "${folder}" "${mapping}"
    DEPENDS "${mapping}" "${ODB_EXECUTABLE}"
    DEPFILE "${depfile}"
    COMMENT "ODB: mapping.h"
    VERBATIM)
endfunction()
