# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# What every target of ours is compiled with. Linked PRIVATE, so that an installed header never
# forces our warnings on somebody else's build. They are errors in the presets, for us: another
# compiler than ours may well find something new to say.
add_library(ov_warnings INTERFACE)
target_link_libraries(ov_warnings INTERFACE ov_hardening)
target_compile_features(ov_warnings INTERFACE cxx_std_20)
target_compile_options(ov_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
# With -O3 it takes "x" + std::string for a copy onto itself (GCC bug 105651, mended in 13).
set(gcc_12 "$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>")
target_compile_options(ov_warnings INTERFACE $<${gcc_12}:-Wno-restrict>)
if(OVSEARCH_SANITIZE)
    target_compile_options(ov_warnings INTERFACE -fsanitize=${OVSEARCH_SANITIZE}
        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ov_warnings INTERFACE -fsanitize=${OVSEARCH_SANITIZE})
endif()
if(OVSEARCH_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
        message(FATAL_ERROR "OVSEARCH_FUZZ needs clang: pass -DCMAKE_CXX_COMPILER=clang++.")
    endif()
    target_compile_options(ov_warnings INTERFACE -fsanitize=fuzzer-no-link)
endif()
