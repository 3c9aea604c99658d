# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of ovsearch(1) in bash. "candidates" tells what there is; here words are taken apart and
# put together as bash wants them.

_ovsearch_folder=${BASH_SOURCE[0]%/*}
[[ $_ovsearch_folder != "${BASH_SOURCE[0]}" ]] || _ovsearch_folder=.
# In the tree all lies together.
[[ -r $_ovsearch_folder/candidates ]] || _ovsearch_folder+=/../../ovsearch

# Sets words: those up to the cursor as they are typed, not parted at each ":" and "=".
_ovsearch_typed_words() {
    local rest=${COMP_LINE:0:COMP_POINT} word blank
    words=()
    for word in "${COMP_WORDS[@]:0:COMP_CWORD+1}"; do
        blank=${rest%%[![:blank:]]*} rest=${rest#"$blank"}
        [[ $rest == "$word"* ]] || word=$rest # the cursor stands in it
        rest=${rest#"$word"}
        if [[ $blank || ${#words[@]} == 0 ]]; then
            words+=("$word")
        else
            words[-1]+=$word
        fi
    done
}

_ovsearch_unquoted() { # WORD
    local word=${1#[\"\']}
    if [[ $1 != [\"\']* ]]; then
        while [[ $word == *\\* ]]; do
            printf %s "${word%%\\*}"
            word=${word#*\\}
            printf %s "${word:0:1}"
            word=${word:1}
        done
    elif [[ ${#word} -gt 0 && $word == *"${1:0:1}" ]]; then
        word=${word%?}
    fi
    printf '%s\n' "$word"
}

_ovsearch_escape() { # changes reply
    local rest=$reply
    reply=''
    while [[ $rest ]]; do
        [[ $rest != [][\ \"\'\$\`\\\&\;\|\<\>\(\)!*?{}#]* ]] || reply+=\\
        reply+=${rest:0:1} rest=${rest:1}
    done
}

# What bash does not part is what it replaces; there, what its language knows is escaped.
_ovsearch_reply() { # TYPED CANDIDATE...
    local typed=$1 reply
    shift
    while IFS= read -r reply; do
        case $typed in
        [\"\']*) COMPREPLY+=("${typed:0:1}$reply") ;;
        *)
            _ovsearch_escape
            COMPREPLY+=("${reply#"${typed%"${typed##*[:=]}"}"}")
            ;;
        esac
    done < <((($#)) && printf '%s\n' "$@")
}

# Alone files are bash's to show and to quote; beside others they are as those.
_ovsearch_add_files() { # files|folders|commands CURRENT
    local current=$2 kind=-c line
    case $1 in
    files) kind=-f ;;
    folders) kind=-d ;;
    esac
    [[ $current != --*=* ]] || current=${current#*=}
    if ((${#found[@]} == 0)); then
        [[ $kind == -c ]] || compopt -o filenames
        mapfile -t COMPREPLY < <(compgen "$kind" -- "$current")
        return
    fi
    while IFS= read -r line; do
        [[ ! -d ${line/#\~/$HOME} ]] || line+=/
        found+=("$line")
    done < <(compgen "$kind" -- "$current")
}

_ovsearch() {
    local words word line files='' found=() asked=()
    COMPREPLY=()
    _ovsearch_typed_words
    for word in "${words[@]:1}"; do
        asked+=("$(_ovsearch_unquoted "$word")")
    done
    while IFS= read -r line; do
        case $line in
        $'\t'*) files=${line#?} ;;
        *) found+=("${line%%$'\t'*}") ;;
        esac
    done < <(sh "$_ovsearch_folder/candidates" "${asked[@]}")
    [[ ! $files ]] || _ovsearch_add_files "$files" "${asked[-1]}"
    _ovsearch_reply "${words[-1]}" "${found[@]}"
    if [[ ${#found[@]} == 1 && ${found[0]} == *[:=,/\ ] ]]; then # goes on
        compopt -o nospace
        # Of two the beginning is taken, and the quote stays open.
        [[ ${words[-1]} != [\"\']* ]] || _ovsearch_reply "${words[-1]}" "${found[0]}..."
    fi
}

complete -F _ovsearch ovsearch
