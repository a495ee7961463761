# The program tells why it compares nothing as the command does: 2 usage, 3 unreadable, 4 not comparable.
file(WRITE ${SCRATCH}/device_values.txt "CGATS.17
BEGIN_DATA_FORMAT
SAMPLE_ID CMYK_C
END_DATA_FORMAT
NUMBER_OF_SETS 1
BEGIN_DATA
1 50
END_DATA
")
function(expect_code code)
    execute_process(COMMAND ${PROGRAM} ${ARGN} WORKING_DIRECTORY ${CHARTS}
        OUTPUT_VARIABLE output ERROR_VARIABLE told RESULT_VARIABLE result)
    if(NOT result EQUAL ${code} OR output)
        message(FATAL_ERROR "${ARGN}: ended with ${result} instead of ${code}: ${output}${told}")
    endif()
endfunction()
expect_code(2)
expect_code(3 colorchecker_aims.txt ${SCRATCH}/there_is_none.txt)
expect_code(4 ${SCRATCH}/device_values.txt colorchecker_aims.txt)
