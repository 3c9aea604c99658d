# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# Fails unless a source with the include folders FOLDERS finds the header OWN, and none of ABOVE.

function(finds result header)
    file(WRITE ${WORK}.cpp "#if !__has_include(\"${header}\")\n#error nowhere\n#endif\n")
    list(TRANSFORM FOLDERS PREPEND -I OUTPUT_VARIABLE folders)
    execute_process(COMMAND ${COMPILER} -std=c++20 -E ${folders} ${WORK}.cpp
        RESULT_VARIABLE failed OUTPUT_QUIET ERROR_QUIET)
    if(failed)
        set(${result} FALSE PARENT_SCOPE)
    else()
        set(${result} TRUE PARENT_SCOPE)
    endif()
endfunction()

finds(found ${OWN})
if(NOT found)
    message(FATAL_ERROR "${OWN} is not found: nothing is proved")
endif()
foreach(header IN LISTS ABOVE)
    finds(found ${header})
    if(found)
        message(FATAL_ERROR "${header} can be included from below")
    endif()
endforeach()
