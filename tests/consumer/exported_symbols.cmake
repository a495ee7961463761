# Compares what a shared library exports with the committed list, or writes the list (UPDATE).
execute_process(COMMAND ${NM} -D --defined-only -P ${LIBRARY} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE " [^\n]*" "" exported "${table}")
string(REGEX REPLACE "\n$" "" exported "${exported}")
string(REPLACE "\n" ";" exported "${exported}")
list(SORT exported)

if(UPDATE)
    list(JOIN exported "\n" text)
    file(WRITE ${LIST} "${text}\n")
    return()
endif()

file(STRINGS ${LIST} listed)
set(added ${exported})
list(REMOVE_ITEM added ${listed})
set(lost ${listed})
list(REMOVE_ITEM lost ${exported})
if(added OR lost)
    list(TRANSFORM added PREPEND "\n  + ")
    list(TRANSFORM lost PREPEND "\n  - ")
    string(CONCAT difference ${added} ${lost})
    execute_process(COMMAND ${CMAKE_COMMAND} -E echo "${difference}" COMMAND c++filt OUTPUT_VARIABLE difference)
    message(FATAL_ERROR "${LIBRARY} does not export what ${LIST} lists (+ not in the list, - not in the library):\n"
        "${difference}\n"
        "A symbol that programs may be linked to must not go. One that is added on purpose (QXCMS_API) is added to the "
        "list by\n  cmake --build ${BUILD} --target update_symbol_lists\n"
        "What else is exported by accident is kept inside by cmake/symbols/exports.map.")
endif()
