#!/usr/bin/env bash
# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
#
# bench/postgres.sh [BUILD] [OPTION OF ovbench_postgres]...: measures a catalogue on a server of its
# own, which is started for that below ${TMPDIR:-/tmp} and removed.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$here/build/release
if [[ ${1:-} != -* && -n ${1:-} ]]; then
    build=$(realpath "$1")
    shift
fi
programs=$(find /usr/lib/postgresql -maxdepth 2 -name bin | sort -V | tail -1)
[[ -n $programs ]] || { echo "postgres.sh: no PostgreSQL server; .ci/setup installs it" >&2 && exit 1; }

folder=$(mktemp -d)
as=()
if ((EUID == 0)); then # the server refuses to be root
    chown nobody "$folder"
    as=(setpriv --reuid nobody --regid nogroup --clear-groups)
fi
cd "$folder"
"${as[@]}" "$programs/initdb" --pgdata "$folder/data" --username postgres --auth trust \
    --encoding UTF8 --locale C.UTF-8 --no-instructions >"$folder/log"
memory=$(($(awk '/^MemTotal/ { print $2 }' /proc/meminfo) / 4))
"${as[@]}" "$programs/postgres" -D "$folder/data" -k "$folder" -c listen_addresses= \
    -c shared_buffers="${memory}kB" -c effective_cache_size="$((2 * memory))kB" -c work_mem=64MB \
    -c maintenance_work_mem=1GB -c max_wal_size=8GB -c max_connections=100 \
    -c random_page_cost=1.1 2>>"$folder/log" &
server=$!
trap 'kill -INT "$server"; wait "$server" || true; rm -rf "$folder"' EXIT
for ((i = 0; i < 100; i++)); do
    "$programs/pg_isready" -q -h "$folder" && break
    sleep 0.1
done
"$build/bin/ovbench_postgres" "postgresql://postgres@/postgres?host=$folder" "$@"
"$programs/psql" -h "$folder" -U postgres -Atc \
    "SELECT relname || ': ' || pg_size_pretty(pg_total_relation_size(oid)) FROM pg_class
     WHERE relnamespace = 'ovsearch'::regnamespace AND relkind = 'r' ORDER BY 1"
