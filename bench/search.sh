#!/usr/bin/env bash
# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
#
# Times searches of a big store beside other programs: the same tree, the same run, a warm cache,
# medians of runs that take turns. See usage() for the options, docs/performance.md for figures.
set -euo pipefail

usage() {
    cat <<'END'
usage: bench/search.sh [SECTION]... [OPTION]...

Sections, all when none is named: cold (a first search), threads (that list), again (other criteria,
the same store), catalogue (in a file, brought up to date and asked), window (the control on the
store), slow (a store whose every call takes its time), start (the shortest calls), growth (stores of
growing size). A catalogue on a server: bench/postgres.sh.

  --store DIR    measure this tree instead of one made for the run
  --build DIR    the build to measure, default build/release
  --count N      dictations of the store that is made, default 1000000
  --folders N    folders that hold them, default one per 200 dictations
  --runs N       runs of every command, default 5; the median counts
  --delay N      milliseconds of a call on the slow store, default 2
  --peer-runs N  runs there of those that take minutes (find, fdfind), default 1
  --sizes LIST   dictations of the growing stores, default up to 4000000

Stores are made below ${TMPDIR:-/tmp} and removed at the end.
END
}

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$here/build/release
store=
count=1000000
folders=
runs=5
delay=2
peer_runs=1
sizes='10000 30000 100000 300000 1000000 2000000 4000000'
sections=
while (($#)); do
    case $1 in
    --store) store=${2:?--store needs a directory} && shift ;;
    --build) build=${2:?--build needs a directory} && shift ;;
    --count) count=${2:?--count needs a number} && shift ;;
    --folders) folders=${2:?--folders needs a number} && shift ;;
    --runs) runs=${2:?--runs needs a number} && shift ;;
    --delay) delay=${2:?--delay needs milliseconds} && shift ;;
    --peer-runs) peer_runs=${2:?--peer-runs needs a number} && shift ;;
    --sizes) sizes=${2:?--sizes needs numbers} && shift ;;
    -h | --help) usage && exit 0 ;;
    cold | threads | again | catalogue | window | slow | start | growth) sections+=" $1 " ;;
    *) usage >&2 && exit 2 ;;
    esac
    shift
done

bin=$build/bin
for program in ovsearch ovbench_store ovbench_list ovbench_status ovbench_run; do
    [[ -x $bin/$program ]] || {
        echo "bench/search.sh: $bin/$program is not there; build first: ./run" >&2
        exit 1
    }
done
work=$(mktemp -d "${TMPDIR:-/tmp}/ovsearch-bench.XXXXXX")
slow_store=
trap 'unmount_slow_store; rm -rf "$work"' EXIT
trap 'exit 130' INT TERM
fd=$(command -v fdfind || command -v fd || true)
fd=${fd##*/}
plocate=$(command -v plocate || true)
# shellcheck source=bench/measure.sh
source "$here/bench/measure.sh"
# shellcheck source=bench/sections.sh
source "$here/bench/sections.sh"

wanted() { [[ ! $sections || $sections == *" $1 "* ]]; }

if [[ ! $store ]]; then
    store=$work/store
    make_store "$store" "$count" "${folders:-$((count / 200 + 1))}"
fi
describe "$store"
check_hits "$store"
! wanted cold || measure_cold "$store"
! wanted threads || measure_threads "$store" "How many threads pay"
! wanted again || measure_again "$store" "Searched again, other criteria, the same store"
! wanted catalogue || measure_catalogue "$store"
! wanted window || measure_window "$store"
! wanted slow || measure_slow "$store"
! wanted start || measure_start
[[ $store != "$work/store" ]] || rm -rf "$store"
! wanted growth || measure_growth
