# Completion of dyadctx for fish 3.1 and later, written by `dyadctx completion fish`.
# Source it, or put it as dyadctx.fish into a folder of completions.

# What may stand behind the command $argv[1]: its commands, its options with what is offered for
# their values (nothing for a switch), and what is offered for its values by place.
function __dyadctx_row
    switch $argv[1]
@TABLE@
    end
end

# Offers pairs: a name with its meaning, a tabulator between.
function __dyadctx_described -a names meanings
    set -l texts $$meanings
    set -l i 1
    for name in $$names
        printf '%s\t%s\n' $name $texts[$i]
        set i (math $i + 1)
    end
end

# The answer of the tool, one name per line. A file that VELDyadCtxOut names must not be written by
# the way.
function __dyadctx_names
    VELDyadCtxOut= VELDyadContextTrace= command dyadctx $argv 2>/dev/null </dev/null
end

# Names of a kind in the file on the line, else in the file in use, also where it has errors.
function __dyadctx_listed -a kind
    set -l call list --all --quiet --format $kind
    test -n "$__dyadctx_database" -o $kind = providers; and set -a call --db-context
    set -l file
    if set -l place (contains -i -- contextfiles $__dyadctx_values)
        set file $__dyadctx_given[$place]
    end
    if test -n "$file"
        set -a call -- (string replace -r '^~/' "$HOME/" -- $file)
    end
    __dyadctx_names $call
end

# Folders and what ends in .xml; all files where there is neither.
function __dyadctx_context_files -a typed
    set -l paths (__fish_complete_path $typed)
    set -l wanted (string match -r -- '^[^\t]*(?:/|\.xml)(?:\t.*)?$' $paths)
    if set -q wanted[1]
        printf '%s\n' $wanted
    else
        printf '%s\n' $paths
    end
end

# What is offered for the value of the option $argv[1].
function __dyadctx_offer_of
    if set -l place (contains -i -- $argv[1] $__dyadctx_options)
        echo $__dyadctx_offers[$place]
    end
end

# The candidates for an offer; $argv[2] stands before each of them.
function __dyadctx_value -a offer before
    set -l candidates
    switch "$offer"
        case 'words *'
            set candidates (string split ' ' -- (string sub -s 7 -- $offer))
        case files
            __fish_complete_path (string sub -s (math (string length -- "$before") + 1) -- (commandline -ct))
            return
        case contextfiles
            __dyadctx_context_files (string sub -s (math (string length -- "$before") + 1) -- (commandline -ct))
            return
        case contexts
            set candidates (__dyadctx_listed names)
        case providers
            set candidates (__dyadctx_listed providers)
    end
    for candidate in $candidates
        printf '%s%s\n' $before $candidate
    end
end

# Takes a word in: __dyadctx_path becomes the command, __dyadctx_given its values, __dyadctx_awaited
# what the option before it is waiting for.
function __dyadctx_take -a word
    if test -n "$__dyadctx_awaited"
        set -g __dyadctx_awaited ''
    else if test -n "$__dyadctx_plain"
        set -ga __dyadctx_given $word
    else if test "$word" = --
        set -g __dyadctx_plain 1
    else if string match -q -- '-?*' $word
        test "$word" = --db-context; and set -g __dyadctx_database 1
        set -g __dyadctx_awaited (__dyadctx_offer_of $word)
    else if contains -- $word $__dyadctx_commands
        set -g __dyadctx_path (string trim -- "$__dyadctx_path $word")
        __dyadctx_row $__dyadctx_path
    else
        set -ga __dyadctx_given $word
    end
end

# The offer for the value at the cursor, by its place.
function __dyadctx_offer_here
    set -l place (math (count $__dyadctx_given) + 1)
    set -l last (count $__dyadctx_values)
    test $__dyadctx_repeats = 1 -a $place -gt $last; and set place $last
    test $place -ge 1 -a $place -le $last; and echo $__dyadctx_values[$place]
end

function __dyadctx
    for name in path awaited plain database given
        set -g __dyadctx_$name
    end
    __dyadctx_row ''
    set -l before (commandline -opc)
    set -l current (commandline -ct)
    for word in $before[2..-1]
        __dyadctx_take $word
    end
    set -l offer
    set -l prefix
    if test -n "$__dyadctx_awaited"
        set offer $__dyadctx_awaited
        set -g __dyadctx_awaited ''
    else if test -z "$__dyadctx_plain"; and string match -q -- '--*=*' $current
        set offer (__dyadctx_offer_of (string replace -r '=.*' '' -- $current))
        set prefix (string replace -r '=.*' '=' -- $current)
    else if test -z "$__dyadctx_plain"; and string match -q -- '-*' $current
        __dyadctx_described __dyadctx_options __dyadctx_meanings
        return
    else if set -q __dyadctx_commands[1]
        __dyadctx_described __dyadctx_commands __dyadctx_summaries
        return
    else
        set offer (__dyadctx_offer_here)
        set -ga __dyadctx_given ''
    end
    set -l all (commandline -op)
    set -l next (math (count $before) + 1)
    test -n "$current"; and set next (math $next + 1)
    for word in $all[$next..-1]
        __dyadctx_take $word
    end
    __dyadctx_value "$offer" "$prefix"
end

complete -c dyadctx -f -a '(__dyadctx)'
