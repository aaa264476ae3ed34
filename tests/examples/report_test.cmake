# Runs the small product and compares its reports with the golden file, in whatever way the host
# ends its lines. Without data it prints the words by which the test counts as skipped.
if(NOT EXISTS ${DATA}/locale/control.nls OR NOT EXISTS ${DATA}/examples/report.DE.cat)
    message("no locale data in ${DATA}: build vlx_locale and example_catalogs there, or set VLX_DATA_BUILD")
    return()
endif()

set(ENV{NLS1_LOCALEDIR} ${DATA}/locale)
execute_process(COMMAND ${EMULATOR} ${REPORT} ${EXAMPLES} ${DATA}/examples
    OUTPUT_VARIABLE reports ERROR_VARIABLE errors RESULT_VARIABLE result)
string(REPLACE "\r\n" "\n" reports "${reports}")
file(READ ${GOLDEN} golden)
if(NOT result STREQUAL "0")
    message(FATAL_ERROR "${REPORT} gives ${result}:\n${errors}")
endif()
if(NOT reports STREQUAL golden)
    message(FATAL_ERROR "the reports are not the golden ones:\n${reports}")
endif()
