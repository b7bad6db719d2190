# Runs PROGRAM with DATA as its argument in an empty DIRECTORY; it must end with status 0 and print
# exactly what the file EXPECTED holds.
file(REMOVE_RECURSE ${DIRECTORY})
file(MAKE_DIRECTORY ${DIRECTORY})
execute_process(COMMAND ${PROGRAM} ${DATA} WORKING_DIRECTORY ${DIRECTORY}
                OUTPUT_VARIABLE printed ERROR_VARIABLE complaints RESULT_VARIABLE status)
file(READ ${EXPECTED} expected)
if(NOT status EQUAL 0 OR NOT printed STREQUAL expected)
  message(FATAL_ERROR "status ${status}\n${complaints}\nprinted:\n${printed}\nexpected:\n${expected}")
endif()
