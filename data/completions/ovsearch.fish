# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# Completion of ovsearch(1) in fish. "candidates" tells what there is.

set -g __ovsearch_folder (status dirname)
# In the tree all lies together.
test -r $__ovsearch_folder/candidates
or set -g __ovsearch_folder $__ovsearch_folder/../../ovsearch

function __ovsearch_behind
    while read -l line
        printf '%s\n' $argv$line
    end
end

function __ovsearch_candidates
    set -l words (commandline -opc)[2..]
    set -l current (commandline -ct | string replace -r '^(["\'])(.*)$' '$2' | string unescape)
    set -l option (string match -r '^--[^=]*=' -- $current)
    for line in (sh $__ovsearch_folder/candidates $words "$current")
        switch $line
            case \tfiles
                __fish_complete_path (string replace -- "$option" '' $current) | __ovsearch_behind "$option"
            case \tfolders
                __fish_complete_directories (string replace -- "$option" '' $current) '' | __ovsearch_behind "$option"
            case \tcommands
                __fish_complete_command
            case '* ' '* '\t'*'
                # What goes on; of two only the beginning is taken, without a blank or a quote behind.
                printf '%s\n' $line (string replace -r ' (\t.*)?$' ' ...' -- $line)
            case '*'
                printf '%s\n' $line
        end
    end
end

complete -c ovsearch -f -a '(__ovsearch_candidates)'
