# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# What we like best when nobody has said otherwise; a project that takes this one in decides itself.
set(OV_TESTS ${BUILD_TESTING})

# Release, so -O3 with GCC: beside -O2 the parts of the engine (ovbench_micro), a sorted list of
# 200,000 dictations and exports (ovbench_export) take 5 % less time, a search, which waits for the
# kernel, the same. Link-time optimisation gains the parts another 4 % and costs the list 4 %; its
# libraries would fit one compiler only. Whoever wants it has CMAKE_INTERPROCEDURAL_OPTIMIZATION.
get_property(several_configurations GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(NOT CMAKE_BUILD_TYPE AND NOT several_configurations)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()
if(NOT DEFINED CMAKE_CXX_EXTENSIONS)
    set(CMAKE_CXX_EXTENSIONS OFF)
endif()
if(NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(CCACHE ccache)
    mark_as_advanced(CCACHE)
    if(CCACHE)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
    endif()
endif()
