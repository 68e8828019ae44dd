# Runs PROGRAM, built from SOURCE, in the empty folder FOLDER and compares what it prints with the file beside SOURCE.

file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
execute_process(COMMAND "${PROGRAM}" WORKING_DIRECTORY "${FOLDER}" OUTPUT_VARIABLE printed RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${printed}\nended with ${result}")
endif()

cmake_path(REPLACE_EXTENSION SOURCE LAST_ONLY expected OUTPUT_VARIABLE expected)
if(EXISTS "${expected}")
  file(READ "${expected}" wanted)
  if(NOT printed STREQUAL wanted)
    file(WRITE "${FOLDER}/printed" "${printed}")
    execute_process(COMMAND diff -u "${expected}" "${FOLDER}/printed")
    message(FATAL_ERROR "the output is not that of ${expected}")
  endif()
endif()
