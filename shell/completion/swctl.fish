# SPDX-License-Identifier: MIT
# Completion of swctl for fish. The program itself knows its words, and what each
# is for; files where it knows none.
function __swctl_words
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l found ($words[1] -describe -complete (count $words) -- $words $current 2>/dev/null)
    if test (count $found) -gt 0
        printf '%s\n' $found
    else
        __fish_complete_path $current
    end
end
complete -c swctl -f -k -a '(__swctl_words)'
