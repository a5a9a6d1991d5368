# Runs PROGRAM and compares what it prints, byte by byte, with the file PRINTED.
execute_process(
    COMMAND "${PROGRAM}" "${DATA}"
    OUTPUT_VARIABLE output
    ERROR_VARIABLE error
    RESULT_VARIABLE result)
file(READ "${PRINTED}" expected)
if(NOT result EQUAL 0 OR NOT error STREQUAL "")
    message(FATAL_ERROR "${PROGRAM} ended with ${result}:\n${error}")
endif()
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "${PROGRAM} printed\n${output}\nbut ${PRINTED} says\n${expected}")
endif()
