# Compiles and runs the C++ of a document, so that it cannot go stale.

# tessel_document_blocks(VARIABLE LANGUAGE FILE): the fenced blocks of one language, one after the other.
function(tessel_document_blocks variable language file)
  file(READ "${file}" rest)
  set(text "")
  set(fence "\n```${language}\n")
  string(LENGTH "${fence}" fence_length)
  while(TRUE)
    string(FIND "${rest}" "${fence}" begin)
    if(begin EQUAL -1)
      break()
    endif()
    math(EXPR begin "${begin} + ${fence_length}")
    string(SUBSTRING "${rest}" ${begin} -1 rest)
    string(FIND "${rest}" "\n```" end)
    string(SUBSTRING "${rest}" 0 ${end} block)
    string(SUBSTRING "${rest}" ${end} -1 rest)
    string(APPEND text "${block}\n")
  endwhile()
  set(${variable} "${text}" PARENT_SCOPE)
endfunction()

# tessel_add_document(NAME FILE): its blocks in "cpp" are one program, which must print its blocks in "text".
function(tessel_add_document name file)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
  tessel_document_blocks(code cpp "${file}")
  tessel_document_blocks(output text "${file}")
  set(source "${CMAKE_CURRENT_BINARY_DIR}/documents/${name}.cpp")
  file(GENERATE OUTPUT "${source}" CONTENT "${code}")
  file(GENERATE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/documents/${name}.expected" CONTENT "${output}")

  add_executable(document_${name} "${source}")
  target_link_libraries(document_${name} PRIVATE tessel::tessel tessel_warnings)
  tessel_add_run(document.${name} document_${name} "${source}")
endfunction()

# tessel_add_run(TEST TARGET SOURCE): the program must end well, and print exactly what stands in SOURCE's name.expected.
function(tessel_add_run test target source)
  add_test(NAME ${test}
    COMMAND ${CMAKE_COMMAND} -D "PROGRAM=$<TARGET_FILE:${target}>" -D "SOURCE=${source}"
      -D "FOLDER=${CMAKE_CURRENT_BINARY_DIR}/run/${target}" -P "${PROJECT_SOURCE_DIR}/cmake/RunExample.cmake")
  set_tests_properties(${test} PROPERTIES TIMEOUT 120 ENVIRONMENT "${TESSEL_TEST_ENVIRONMENT}")
endfunction()
