# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# Read with project(): both test programs tell what each test runs.
set(each_test ${CMAKE_CURRENT_LIST_DIR}/each_test.cpp)
foreach(program ov_tests ov_window_tests)
    cmake_language(EVAL CODE
        "cmake_language(DEFER CALL target_sources ${program} PRIVATE \"${each_test}\")")
endforeach()
