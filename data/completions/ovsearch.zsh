#compdef ovsearch
# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# Completion of ovsearch(1) in zsh. "candidates" tells what there is.

_ovsearch_candidates() { # FOLDER
    local line current=${(Q)PREFIX} files=''
    local -a done goingOn doneShown goingOnShown
    for line in ${(f)"$(sh $1/candidates "${(@Q)words[2,CURRENT-1]}" "$current")"}; do
        local word=${line%%$'\t'*} meaning=''
        [[ $line == *$'\t'* ]] && meaning=${line#*$'\t'}
        if [[ -z $word ]]; then
            files=$meaning
        elif [[ $word == *[:=,\ ] ]]; then
            goingOn+=("$word") goingOnShown+=("$word${meaning:+ -- $meaning}")
        else
            done+=("$word") doneShown+=("$word${meaning:+ -- $meaning}")
        fi
    done
    (($#goingOn)) && compadd -S '' -l -d goingOnShown -a -- goingOn
    (($#done)) && compadd -l -d doneShown -a -- done
    [[ -n $files && $current == --*=* ]] && compset -P 1 '*='
    case $files in
    files) _files ;;
    folders) _files -/ ;;
    commands) _command_names -e ;;
    esac
    (($#goingOn + $#done + compstate[nmatches]))
}

_ovsearch() {
    local folder=${functions_source[_ovsearch]:A:h}
    # In the tree all lies together.
    [[ -r $folder/candidates ]] || folder+=/../../ovsearch
    _ovsearch_candidates $folder
}

_ovsearch "$@"
