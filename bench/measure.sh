# shellcheck shell=bash disable=SC2154 # its caller sets build, bin, work, runs and fd
# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
#
# Measures commands and prints tables of them; for search.sh.

cached() { # a value of the build's cache
    sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt" | head -n 1
}

describe() { # STORE
    local type
    type=$(cached CMAKE_BUILD_TYPE)
    echo "date:        $(date -u '+%Y-%m-%d %H:%M UTC')"
    echo "processor:   $(nproc) x $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)"
    echo "system:      $(uname -sr), $(df --output=fstype "$1" | tail -n 1)"
    echo "load:        $(cut -d ' ' -f 1-3 /proc/loadavg) before the run"
    echo "compiler:    $("$(cached CMAKE_CXX_COMPILER)" --version | head -n 1)"
    echo "build:       $type"
    echo "locale:      ${LC_ALL:-${LC_CTYPE:-${LANG:-C}}}"
    # shellcheck disable=SC2185 # no path is needed for that
    echo "others:      $(find --version | head -n 1)${fd:+, $("$fd" --version)}${plocate:+, $(
        "$plocate" --version | head -n 1)}"
    if [[ $type != Rel* || $(cached OVSEARCH_SANITIZE) ]]; then
        echo "WARNING: this build is not optimised, its times mean nothing"
    fi
}

# What is to be measured: a name, how often, a command of words parted by tabs. The first of all
# others is what they are compared with.
forget_commands() { names=() counts=() commands=(); }

add_command() { # NAME RUNS WORD...
    local IFS=$'\t'
    names+=("$1") counts+=("$2")
    shift 2
    commands+=("$*")
}

# A whole pipeline as one command.
add_pipeline() { # NAME RUNS PIPELINE
    add_command "$1" "$2" bash -c "$3"
}

# Fills median_us and peak_kib by number of the command; one that fails ends the script. The
# commands take turns, so that what disturbs the machine disturbs all.
measure() {
    local i words line run
    local -a samples=()
    median_us=() peak_kib=()
    for ((run = 0; run < runs; ++run)); do
        for i in "${!commands[@]}"; do
            ((run < counts[i])) || continue
            IFS=$'\t' read -ra words <<<"${commands[i]}"
            line=$("$bin/ovbench_run" "${words[@]}") || {
                echo "failed: ${words[*]}" >&2
                return 1
            }
            samples[i]+="${line% *}"$'\n'
            peak_kib[i]=${line#* }
        done
    done
    for i in "${!commands[@]}"; do
        median_us[i]=$(sort -n <<<"${samples[i]%$'\n'}" | sed -n "$((counts[i] / 2 + 1))p")
    done
}

milliseconds() { printf '%d.%d' $(($1 / 1000)) $(($1 % 1000 / 100)); }
ratio() { printf '%d.%03d' $(($1 / $2)) $(($1 * 1000 / $2 % 1000)); }

# Every command beside the first and, from the second on, what the first takes of its time.
print_measured() { # TITLE
    local i of
    printf '\n%s\n%-40s %5s %12s %12s %10s\n' "$1" "" runs "median ms" "first / it" "peak MiB"
    for i in "${!names[@]}"; do
        of=
        ((i == 0)) || of=$(ratio "${median_us[0]}" "${median_us[i]}")
        printf '%-40s %5d %12s %12s %10d\n' "${names[i]}" "${counts[i]}" \
            "$(milliseconds "${median_us[i]}")" "$of" $((peak_kib[i] / 1024))
    done
}

expect() { # WHAT FOUND EXPECTED
    [[ $2 == "$3" ]] || {
        echo "WRONG: $2 $1 instead of $3" >&2
        return 1
    }
}
