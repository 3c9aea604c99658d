# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# Read with project(): both test programs tell what each test runs, in themselves and in modules,
# each of which counts for itself.
set(counting ${CMAKE_CURRENT_LIST_DIR})
function(count_each_test folder)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target ${targets})
        get_target_property(type ${target} TYPE)
        if(target MATCHES "^ov_(window_)?tests$")
            target_sources(${target} PRIVATE ${counting}/each_test.cpp)
            target_link_libraries(${target} PRIVATE ${CMAKE_DL_LIBS})
            target_link_options(${target} PRIVATE -Wl,--wrap=_exit)
        elseif(type STREQUAL "MODULE_LIBRARY")
            target_sources(${target} PRIVATE ${counting}/each_module.cpp)
        endif()
    endforeach()
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(below ${folders})
        count_each_test(${below})
    endforeach()
endfunction()
cmake_language(DEFER CALL count_each_test ${CMAKE_CURRENT_SOURCE_DIR})
