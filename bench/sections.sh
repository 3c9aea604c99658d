# shellcheck shell=bash disable=SC2154 # its caller sets bin, work, runs, peer_runs, delay and others
# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
#
# What search.sh measures, a function for each question. Every one makes sure first that all answer
# the same.

search=("$bin/ovsearch" find --settings "$work/settings" --limit 10000000 --format paths)
criteria=(-c 'priority = HOCH' -c 'author contains öztürk')
# The same question for programs that know nothing of dictations.
question="LC_ALL=C.UTF-8 grep -aiE '@@5\\\$(HOCH|2)(@@|\\.wav\$)'"
question+=" | LC_ALL=C.UTF-8 grep -aiE '@@14\\\$([^@]|@[^@])*öztürk'"

in_subject=(-c 'subject contains brief')
question_in_subject="LC_ALL=C.UTF-8 grep -aiE '@@11\\\$([^@]|@[^@])*brief'"

make_store() { # DIR COUNT FOLDERS
    echo "making a store of $2 dictations..." >&2
    "$bin/ovbench_store" "$1" --count "$2" --folders "$3"
}

check_hits() { # DIR
    local root=$1 files
    files=$(find "$root" -iname '*.wav' | wc -l)
    echo "dictations:  $files in $(find "$root" -type d | wc -l) folders"
    hits=$("${search[@]}" "$root" "${criteria[@]}" | wc -l)
    expect hits "$hits" "$(find "$root" -iname '*.wav' | bash -c "$question" | wc -l)"
    expect dictations "$("${search[@]}" "$root" | wc -l)" "$files"
    echo "hits:        $hits"
}

# The first command is always ours.
measure_cold() { # DIR
    forget_commands
    add_command "ovsearch, two criteria" "$runs" "${search[@]}" "$1" "${criteria[@]}"
    add_command "find -iname '*.wav'" "$runs" find "$1" -iname '*.wav'
    [[ ! $fd ]] || add_command "$fd -e wav, 2 threads" "$runs" \
        "$fd" --threads 2 -u -e wav . "$1"
    add_command "bare listing, 1 thread" "$runs" "$bin/ovbench_list" "$1"
    add_command "ovsearch, no criterion" "$runs" "${search[@]}" "$1"
    measure
    print_measured "A first search (warm cache of the system)"
}

mount_slow_store() { # DIR
    slow=$work/slow
    mkdir -p "$slow"
    "$bin/ovbench_slow_store" "$1" "$slow" --delay-ms "$delay" >"$work/slow.log" 2>&1 &
    slow_store=$!
    until grep -q ready "$work/slow.log"; do
        kill -0 "$slow_store" 2>/dev/null || return 1
        sleep 0.05
    done
}

unmount_slow_store() {
    [[ ! ${slow_store:-} ]] || { kill "$slow_store" && wait "$slow_store"; } 2>/dev/null || true
    slow_store=
}

measure_slow() { # DIR
    if [[ ! -x $bin/ovbench_slow_store ]] || ! mount_slow_store "$1"; then
        printf '\nNo slow store: FUSE is not there. %s\n' "$(cat "$work/slow.log" 2>/dev/null)"
        return 0
    fi
    forget_commands
    add_command "ovsearch, two criteria" "$runs" "${search[@]}" "$slow" "${criteria[@]}"
    add_command "find -iname '*.wav'" "$peer_runs" find "$slow" -iname '*.wav'
    if [[ $fd ]]; then
        add_command "$fd -e wav" "$peer_runs" "$fd" -u -e wav . "$slow"
        add_command "$fd -e wav, 64 threads" "$runs" "$fd" -j 64 -u -e wav . "$slow"
    fi
    measure
    expect "hits on the slow store" "$("${search[@]}" "$slow" "${criteria[@]}" | wc -l)" "$hits"
    print_measured "A first search where every call takes $delay ms"
    measure_threads "$slow" "How many threads pay where every call takes $delay ms"
    measure_again "$slow" "Searched again where every call takes $delay ms"
    measure_statuses "$slow" "$1"
    unmount_slow_store
}

# The bare listing by so many threads, beside the search, which chooses their number by itself.
measure_threads() { # DIR TITLE
    local threads
    forget_commands
    add_command "ovsearch, no criterion" "$runs" "${search[@]}" "$1"
    for threads in 1 2 3 4 8 16 32 64 128; do
        [[ $1 == "${slow:-}" && $threads == [1-4] ]] ||
            add_command "bare listing, $threads threads" "$runs" "$bin/ovbench_list" "$1" "$threads"
    done
    measure
    print_measured "$2"
}

# What it takes to search again with other criteria, in one call of the program: eleven criteria
# files less the first three alone, by when a server's folder times have been seen twice with time between.
measure_again() { # DIR TITLE
    local first=$work/first.dat other=$work/other.dat last=$work/last.dat
    local search=("${search[@]}" --trust-folder-times)
    printf '5\00117\001müller\001\n' >"$first"
    printf '18\00117\001knie\001\n' >"$other"
    printf '5\00117\001öztürk\001\n15\00125\0013\001\n' >"$last"
    local three=(--criteria-file "$first" --criteria-file "$other" --criteria-file "$first")
    forget_commands
    add_command "ovsearch, three criteria files" "$runs" "${search[@]}" "$1" "${three[@]}"
    # One alone is less than what the others scatter.
    local count=8 further=() i
    for ((i = 0; i < count; i++)); do further+=(--criteria-file "$last"); done
    add_command "ovsearch, eight more" "$runs" "${search[@]}" "$1" "${three[@]}" "${further[@]}"
    if [[ $1 != "${slow:-}" ]]; then
        add_pipeline "find and grep, the same question" "$runs" \
            "find '$1' -iname '*.wav' | $question"
        add_plocate "$1"
    fi
    measure
    print_measured "$2"
    printf '%-40s %5s %12s\n' "each of the eight" "" \
        "$(milliseconds $(((median_us[1] - median_us[0]) / count)))"
}

# The floor of that: the times of every folder, asked of the system by 64 threads.
measure_statuses() { # DIR SHAPE
    local count=8
    forget_commands
    add_command "names of the folders" "$runs" "$bin/ovbench_status" "$1" "$2" 64 0
    add_command "their times, eight times" "$runs" "$bin/ovbench_status" "$1" "$2" 64 "$count"
    measure
    print_measured "The system's own calls for that"
    printf '%-40s %5s %12s\n' "each of the eight" "" \
        "$(milliseconds $(((median_us[1] - median_us[0]) / count)))"
}

# An index of this store alone, beside it.
add_plocate() { # DIR
    [[ $plocate ]] || return 0
    updatedb --database-root "$1" --output "$work/index" --require-visibility no \
        --prunefs '' --prunepaths '' --prunenames ''
    add_command "plocate -i, its text" "$runs" "$plocate" -d "$work/index" -i öztürk
}

# What the window takes on the store: search, search again, gaps between events, sorts, memory.
measure_window() { # DIR
    [[ -x $bin/ovbench_window ]] || return 0
    printf '\nIn the window, one run\n'
    "$bin/ovbench_window" "$1" 2>"$work/window.log" || cat "$work/window.log"
}

# A catalogue in a file, beside the walk. The first of the commands is the walk.
measure_catalogue() { # DIR
    local file=$work/catalogue/store.db
    local update=("$bin/ovsearch" catalogue update "$1" --to "$file" --settings "$work/settings")
    local count_by=("$bin/ovsearch" find "$1" --settings "$work/settings" --count-by author)
    local find="find '$1' -iname '*.wav' |"
    mkdir -m 700 "${file%/*}"
    forget_commands
    add_command "ovsearch, no criterion: a walk" "$runs" "${search[@]}" "$1"
    add_pipeline "catalogue update, the first" "$runs" "rm -f '$file'*; ${update[*]@Q}"
    add_command "catalogue update, nothing changed" "$runs" "${update[@]}"
    measure
    print_measured "A catalogue in a file is brought up to date"
    printf '%-40s %5s %9d MiB\n' "its size" "" "$(($(stat -c %s "$file") >> 20))"
    expect "hits in the catalogue" \
        "$("${search[@]}" "$1" "${criteria[@]}" --catalogue "$file" | wc -l)" "$hits"
    expect "subjects in the catalogue" \
        "$("${search[@]}" "$1" "${in_subject[@]}" --catalogue "$file" | wc -l)" \
        "$(bash -c "$find $question_in_subject" | wc -l)"
    forget_commands
    add_command "catalogue, two criteria" "$runs" \
        "${search[@]}" "$1" "${criteria[@]}" --catalogue "$file"
    add_pipeline "find and grep, the same question" "$runs" "$find $question"
    measure
    print_measured "A catalogue in a file is asked: word in author, priority"
    forget_commands
    add_command "catalogue, contains in subject" "$runs" \
        "${search[@]}" "$1" "${in_subject[@]}" --catalogue "$file"
    add_pipeline "find and grep, the same question" "$runs" "$find $question_in_subject"
    measure
    print_measured "Contains in the subject, $("${search[@]}" "$1" "${in_subject[@]}" | wc -l) hits"
    forget_commands
    add_command "catalogue, --count-by author" "$runs" "${count_by[@]}" --catalogue "$file"
    add_command "the walk, --count-by author" "$runs" "${count_by[@]}"
    measure
    print_measured "Counted by author"
}

measure_start() {
    local small=$work/small
    make_store "$small" 500 3
    forget_commands
    add_command "ovsearch --version" "$runs" "$bin/ovsearch" --version
    [[ ! $fd ]] || add_command "$fd --version" "$runs" "$fd" --version
    measure
    print_measured "Start"
    forget_commands
    add_command "ovsearch, two criteria" "$runs" "${search[@]}" "$small" "${criteria[@]}"
    [[ ! $fd ]] || add_command "$fd -e wav" "$runs" "$fd" -u -e wav . "$small"
    add_command "find -iname '*.wav'" "$runs" find "$small" -iname '*.wav'
    measure
    print_measured "500 dictations"
    rm -rf "$small"
}

measure_growth() {
    local size root=$work/grown found
    printf '\nGrowing stores\n%12s %12s %12s %14s %10s\n' dictations hits ms "us/dictation" "peak MiB"
    for size in $sizes; do
        make_store "$root" "$size" $((size / 200))
        forget_commands
        add_command "" "$runs" "${search[@]}" "$root" "${criteria[@]}"
        found=$("${search[@]}" "$root" "${criteria[@]}" | wc -l)
        measure
        printf '%12d %12d %12s %14s %10d\n' "$size" "$found" "$(milliseconds "${median_us[0]}")" \
            "$(ratio "${median_us[0]}" "$size")" $((peak_kib[0] / 1024))
        rm -rf "$root"
    done
}
