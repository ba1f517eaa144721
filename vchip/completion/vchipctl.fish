# SPDX-License-Identifier: MIT
# Completion of vchipctl, vchipd, swctl-replay and swctl-faults for fish: commands and
# options as the program's own help has them, files where an argument may be one.

# The first words of the lines below a heading of the help, each with what it means.
function __vchipctl_listed
    set -l inside no
    for line in $argv[2..]
        if test "$line" = $argv[1]:
            set inside yes
        else if test -z "$line"
            set inside no
        else if test $inside = yes; and string match -qr '^  [^ ]' -- $line
            set -l meaning (string match -r '.*  ([^ ].*)' -- (string sub -s 3 -- $line))[2]
            for name in (string split , -- (string match -r '[^ ]+' -- $line))
                printf '%s\t%s\n' $name "$meaning"
            end
        end
    end
end

function __vchipctl_words
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l given
    set -l help ($words[1] --help 2>/dev/null)
    for word in $words[2..]
        set -l commands (__vchipctl_listed Subcommands $help | string replace -r '\t.*' '')
        contains -- $word $commands; or continue
        set -a given $word
        set help ($words[1] $given --help 2>/dev/null)
    end
    set -l found
    if string match -q -- '-*' $current
        set found (__vchipctl_listed Options $help)
    else if contains -- $words[-1] --image --pcap --junit --write -w
        set found
    else if test "$given[1]" = drops
        set found show\t'What became of the frames' clear\t'Set the counts to 0'
    else if test "$given[1]" = trace
        set found on\t'Write the trace' off\t'Write it no longer' show\t'Print it'
    else
        set found (__vchipctl_listed Subcommands $help)
    end
    if test (count $found) -gt 0
        printf '%s\n' $found
    else
        __fish_complete_path $current
    end
end
complete -c vchipctl -f -k -a '(__vchipctl_words)'
complete -c vchipd -f -k -a '(__vchipctl_words)'
complete -c swctl-replay -f -k -a '(__vchipctl_words)'
complete -c swctl-faults -f -k -a '(__vchipctl_words)'
