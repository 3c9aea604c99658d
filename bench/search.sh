#!/usr/bin/env bash
# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
#
# Times searches of a big store beside other programs that list it: the same tree, the same run,
# a warm cache, medians of interleaved runs. See usage() for the options.
# shellcheck disable=SC2016,SC2185 # "$" stands in patterns; find --version has no path
set -euo pipefail

usage() {
    cat <<'END'
usage: bench/search.sh [--store DIR] [--build DIR] [--count N] [--folders N] [--runs N] [--no-table]

  --store DIR    measure this tree instead of one made for the run
  --build DIR    the build to measure, default build/release
  --count N      dictations of the store that is made, default 1000000
  --folders N    folders that hold them, default one per 200 dictations
  --runs N       runs of every command, default 5; the median counts
  --no-table     leave out the table of growing stores

Stores are made below ${TMPDIR:-/tmp} and removed at the end.
END
}

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$here/build/release
store=
count=1000000
folders=
runs=5
table=yes
while (($#)); do
    case $1 in
    --store) store=${2:?--store needs a directory} && shift ;;
    --build) build=${2:?--build needs a directory} && shift ;;
    --count) count=${2:?--count needs a number} && shift ;;
    --folders) folders=${2:?--folders needs a number} && shift ;;
    --runs) runs=${2:?--runs needs a number} && shift ;;
    --no-table) table=no ;;
    -h | --help) usage && exit 0 ;;
    *) usage >&2 && exit 2 ;;
    esac
    shift
done

bin=$build/bin
for program in ovsearch ovbench_store ovbench_list ovbench_run; do
    [[ -x $bin/$program ]] || {
        echo "bench/search.sh: $bin/$program is not there; build first: ./run" >&2
        exit 1
    }
done
work=$(mktemp -d "${TMPDIR:-/tmp}/ovsearch-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT TERM
fd=$(command -v fdfind || command -v fd || true)

cached() { # a value of the build's cache
    sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt" | head -n 1
}

describe() {
    local type
    type=$(cached CMAKE_BUILD_TYPE)
    echo "date:        $(date -u '+%Y-%m-%d %H:%M UTC')"
    echo "processor:   $(nproc) x $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)"
    echo "system:      $(uname -sr), $(df --output=fstype "$1" | tail -n 1)"
    echo "compiler:    $("$(cached CMAKE_CXX_COMPILER)" --version | head -n 1)"
    echo "build:       $type"
    echo "locale:      ${LC_ALL:-${LC_CTYPE:-${LANG:-C}}}"
    echo "others:      $(find --version | head -n 1)${fd:+, $("$fd" --version)}"
    if [[ $type != Rel* || $(cached OVSEARCH_SANITIZE) ]]; then
        echo "WARNING: this build is not optimised, its times mean nothing"
    fi
}

make_store() { # DIR COUNT FOLDERS
    "$bin/ovbench_store" "$1" --count "$2" --folders "$3"
}

search=("$bin/ovsearch" find --settings "$work/settings" --limit 10000000)
criteria=(-c 'priority = HOCH' -c 'author contains öztürk')

# Every command is one line of the array "commands", its words parted by tabs.
join_words() {
    local IFS=$'\t'
    echo "$*"
}

# Fills median_us and peak_kib by number of the command.
measure() { # COMMAND...
    local commands=("$@") run i words line
    local -a samples=()
    median_us=() peak_kib=()
    for ((run = 0; run < runs; ++run)); do
        for i in "${!commands[@]}"; do
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
        median_us[i]=$(sort -n <<<"${samples[i]%$'\n'}" | sed -n "$((runs / 2 + 1))p")
    done
}

milliseconds() { printf '%d.%d' $(($1 / 1000)) $(($1 % 1000 / 100)); }
ratio() { printf '%d.%02d' $(($1 / $2)) $(($1 * 100 / $2 % 100)); }

# What the search must find, told by programs that know nothing of dictations.
expected_hits() {
    find "$1" -iname '*.wav' |
        LC_ALL=C.UTF-8 grep -aiE '@@5\$(HOCH|2)(@@|\.wav$)' |
        LC_ALL=C.UTF-8 grep -aicE '@@14\$([^@]|@[^@])*öztürk' || true
}

compare() { # DIR
    local root=$1 hits all expected files
    local -a names commands
    hits=$("${search[@]}" "$root" "${criteria[@]}" --format paths | wc -l)
    expected=$(expected_hits "$root")
    all=$("${search[@]}" "$root" --format paths | wc -l)
    files=$(find "$root" -iname '*.wav' | wc -l)
    "$bin/ovbench_list" "$root" >/dev/null
    echo "dictations:  $files in $(find "$root" -type d | wc -l) folders"
    if ((hits != expected || all != files)); then
        echo "WRONG: $hits hits of $expected, $all dictations of $files" >&2
        return 1
    fi

    names=("ovsearch, two criteria" "find -iname '*.wav'" "bare listing" "ovsearch, no criterion")
    commands=(
        "$(join_words "${search[@]}" "$root" "${criteria[@]}" --format paths)"
        "$(join_words find "$root" -iname '*.wav')"
        "$(join_words "$bin/ovbench_list" "$root")"
        "$(join_words "${search[@]}" "$root" --format paths)"
    )
    local found=("$hits" "$files" - "$all")
    if [[ $fd ]]; then
        names+=("$(basename "$fd") -e wav, 2 threads")
        commands+=("$(join_words "$fd" --threads 2 -u -e wav . "$root")")
        found+=("$("$fd" --threads 2 -u -e wav . "$root" | wc -l)")
    fi
    measure "${commands[@]}"

    printf '\n%-28s %12s %10s %9s %10s\n' "median of $runs" ms "of find" hits "peak MiB"
    local i
    for i in "${!names[@]}"; do
        printf '%-28s %12s %10s %9s %10s\n' "${names[i]}" "$(milliseconds "${median_us[i]}")" \
            "$(ratio "${median_us[i]}" "${median_us[1]}")" "${found[i]}" \
            "$((peak_kib[i] / 1024))"
    done
    [[ -z $fd ]] || echo "ovsearch with two criteria takes $(ratio "${median_us[0]}" \
        "${median_us[4]}") of the time of $(basename "$fd")"
}

growth() {
    local size root
    printf '\n%12s %12s %12s %14s %10s\n' dictations hits ms "us/dictation" "peak MiB"
    for size in 10000 30000 100000 300000 1000000; do
        root=$work/grown
        make_store "$root" "$size" $((size / 200))
        local command=("${search[@]}" "$root" "${criteria[@]}" --format paths)
        local hits
        hits=$("${command[@]}" | wc -l)
        measure "$(join_words "${command[@]}")"
        printf '%12d %12d %12s %14s %10d\n' "$size" "$hits" "$(milliseconds "${median_us[0]}")" \
            "$(ratio "${median_us[0]}" "$size")" $((peak_kib[0] / 1024))
        rm -rf "$root"
    done
}

if [[ -z $store ]]; then
    store=$work/store
    echo "making a store of $count dictations..." >&2
    make_store "$store" "$count" "${folders:-$((count / 200 + 1))}"
fi
describe "$store"
compare "$store"
if [[ $table == yes ]]; then
    [[ $store != "$work/store" ]] || rm -rf "$store"
    growth
fi
