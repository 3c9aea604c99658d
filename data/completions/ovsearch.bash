# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of ovsearch(1): commands, options, field keys, and in criteria fields and operators.

_ovsearch_keys='folder status marker author-code author typist flags number dictated changed
    length file priority due subject note1 note2 column1 column2 group worktype status2 name'

_ovsearch_operators() { # KEY
    local empty='is-empty is-not-empty'
    case $1 in
    dictated | changed | due)
        echo "yesterday today tomorrow last-7-days next-7-days last-week this-week next-week
            last-month this-month next-month on on-or-after on-or-before between $empty" ;;
    length) echo "= != <= >= between $empty" ;;
    status | status2 | priority | flags) echo "= != $empty" ;;
    marker) echo "marked not-marked" ;;
    *) echo "contains is not-contains $empty" ;;
    esac
}

# A criterion is one word of the shell, so its blanks are quoted, or escaped: both are kept.
_ovsearch_criterion() { # WORD
    local word=$1 quote='' blank='\ ' key typed candidate
    if [[ $word == [\"\']* ]]; then
        quote=${word:0:1} word=${word:1} blank=' '
    fi
    compopt -o nospace
    if [[ $word != *"$blank"* ]]; then
        for candidate in $_ovsearch_keys; do
            [[ $candidate != "$word"* ]] || COMPREPLY+=("$quote$candidate$blank")
        done
        return
    fi
    key=${word%%"$blank"*} typed=${word#*"$blank"}
    for candidate in $(_ovsearch_operators "$key"); do
        [[ $quote ]] || printf -v candidate %q "$candidate"
        [[ $candidate != "$typed"* ]] || COMPREPLY+=("$quote$key$blank$candidate$blank")
    done
}

_ovsearch_paths() { # -f|-d WORD
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen "$1" -- "$2")
}

_ovsearch() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' common='--help --language --settings' options='' word start
    COMPREPLY=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $word != @(find|export|show|fields|play|demo|help) ]] || { command=$word && break; }
    done
    case $previous in
    -c | --criterion) _ovsearch_criterion "$current" && return ;;
    --format) options='table csv json jsonl paths' ;;
    --language) options='de en' ;;
    --color | --hyperlink | --pager) options='auto always never' ;;
    --separator) options='comma semicolon tab' ;;
    --sort | --count-by) options=$_ovsearch_keys ;;
    --sum) options=length ;;
    --columns)
        start=${current%"${current##*,}"}
        mapfile -t COMPREPLY < <(compgen -P "$start" -W "path $_ovsearch_keys" -- "${current##*,}")
        compopt -o nospace
        return
        ;;
    --settings | --root) _ovsearch_paths -d "$current" && return ;;
    --criteria-file | --newer) _ovsearch_paths -f "$current" && return ;;
    --max-depth | --limit | --count | --seed | --title) return ;;
    *)
        case $command in
        find)
            options="$common --criterion --not --any --root --criteria-file --max-depth --limit
                --columns --sort --explain --strict --no-messages --quiet --color --hyperlink
                --pager --format --separator --raw --null --count --count-by --sum
                --exec --exec-batch --newer --watch --trust-folder-times" ;;
        export)
            options="$common --criterion --not --any --root --criteria-file --max-depth --limit
                --columns --sort --strict --no-messages --title --separator --force" ;;
        show) options="$common --color --pager --format" ;;
        fields) options="$common --color --pager" ;;
        demo) options="$common --count --seed" ;;
        help) options="$common find export show fields play demo" ;;
        '') options="find export show fields play demo help --version $common" ;;
        *) options=$common ;;
        esac
        ;;
    esac
    if [[ $current == -* || ! $command || $options != "$common"* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    elif [[ $command == @(show|play|export) ]]; then
        _ovsearch_paths -f "$current"
    elif [[ $command == find || $command == demo ]]; then
        _ovsearch_paths -d "$current"
    fi
}

complete -F _ovsearch ovsearch
