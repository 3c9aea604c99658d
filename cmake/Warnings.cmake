# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# What every target of ours is compiled with. Linked PRIVATE, so that an installed
# header never forces our warnings on somebody else's build.
add_library(ov_warnings INTERFACE)
target_link_libraries(ov_warnings INTERFACE ov_hardening)
target_compile_options(ov_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(OVSEARCH_SANITIZE)
    target_compile_options(ov_warnings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ov_warnings INTERFACE -fsanitize=address,undefined)
endif()
if(OVSEARCH_SANITIZE_THREADS)
    target_compile_options(ov_warnings INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
    target_link_options(ov_warnings INTERFACE -fsanitize=thread)
endif()
if(OVSEARCH_FUZZ)
    target_compile_options(ov_warnings INTERFACE -fsanitize=fuzzer-no-link)
endif()
