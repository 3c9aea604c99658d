# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# Optimised programs of ours read names and files that anybody may have made: a fault in them shall
# end the program, not be of use to an attacker. .ci/check-hardening looks at what came out. The
# sanitizers bring their own checks, and fortified calls would hide faults from them.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)
include(CheckPIESupported)

check_pie_supported(LANGUAGES CXX)
if(NOT DEFINED CMAKE_POSITION_INDEPENDENT_CODE)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()

add_library(ov_hardening INTERFACE)
if(NOT OVSEARCH_SANITIZE)
    set(optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
    # Distributions may set the level themselves; ours shall not be a redefinition.
    target_compile_options(ov_hardening INTERFACE
        $<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=2>)
    # Not every processor has the last two.
    foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection=full)
        string(MAKE_C_IDENTIFIER "OV_HAS${flag}" has)
        check_cxx_compiler_flag(${flag} ${has})
        if(${has})
            target_compile_options(ov_hardening INTERFACE $<${optimised}:${flag}>)
        endif()
    endforeach()
    target_link_options(ov_hardening INTERFACE
        $<${optimised}:LINKER:-z,relro> $<${optimised}:LINKER:-z,now>)
    # Said outright: the start files of some systems lack the marks of -fcf-protection, which would
    # take them from the whole program.
    check_linker_flag(CXX "LINKER:-z,ibt,-z,shstk" OV_HAS_CET_MARKS)
    if(OV_HAS_CET_MARKS)
        target_link_options(ov_hardening INTERFACE
            $<${optimised}:LINKER:-z,ibt> $<${optimised}:LINKER:-z,shstk>)
    endif()
endif()
