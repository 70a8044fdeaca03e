# Completion of dyadctx for bash 4 and later, written by `dyadctx completion bash`.
# Source it, or put it where bash-completion looks for it.

# What may stand behind the command $1: its commands, its options with what is offered for their
# values (nothing for a switch), and what is offered for its values by place.
_dyadctx_row() {
    case $1 in
@TABLE@
    esac
}

# Splits $1 as bash would, without expanding anything, and adds its words to `words`. Of the last
# word it leaves the open quote in `quote` and in `kept` how much of it stands before the part that
# readline replaces.
_dyadctx_split() {
    local text=$1 word='' char i open=0
    quote='' kept=0
    for ((i = 0; i < ${#text}; i++)); do
        char=${text:i:1}
        if [[ $quote == "'" ]]; then
            if [[ $char == "'" ]]; then quote='' kept=${#word}; else word+=$char; fi
        elif [[ $char == \\ ]] && ((i + 1 < ${#text})); then
            ((++i))
            open=1
            if [[ $quote == '"' && ${text:i:1} != [\\\"\$\`] ]]; then word+=\\; fi
            word+=${text:i:1}
        elif [[ $char == '"' && $quote == '"' ]]; then
            quote='' kept=${#word}
        elif [[ $quote ]]; then
            word+=$char
        elif [[ $char == [\'\"] ]]; then
            quote=$char kept=${#word} open=1
        elif [[ $char == [[:blank:]] ]]; then
            ((open)) && words+=("$word")
            word='' open=0 kept=0
        else
            word+=$char open=1
            if [[ $COMP_WORDBREAKS == *"$char"* ]]; then kept=${#word}; fi
        fi
    done
    words+=("$word")
}

# The words behind the cursor, into `behind`. What is left of the word at the cursor is none of them.
_dyadctx_behind() {
    local text=$quote${COMP_LINE:COMP_POINT} words=() quote kept
    [[ $text ]] || return 0
    _dyadctx_split "$text"
    [[ $text == [[:blank:]]* ]] || words=("${words[@]:1}")
    behind=("${words[@]}")
}

# Writes $1, the rest of a word, for the place where it goes: bare or behind an open quote.
_dyadctx_quote() {
    local text=$1
    case $quote in
    "'") text=${text//\'/\'\\\'\'} ;;
    '"')
        text=${text//\\/\\\\}
        text=${text//\"/\\\"}
        text=${text//\$/\\\$}
        text=${text//\`/\\\`}
        ;;
    *) [[ -z $text ]] || printf -v text %q "$text" ;;
    esac
    REPLY=$text
}

# Offers those of the arguments that begin with the current word.
_dyadctx_offer() {
    local candidate REPLY
    for candidate in "$@"; do
        [[ ${candidate:0:${#current}} == "$current" ]] || continue
        _dyadctx_quote "${candidate:kept}"
        COMPREPLY+=("$REPLY")
    done
}

# Runs the tool for its names, one per line, into `names`. A file that VELDyadCtxOut names must not
# be written by the way.
_dyadctx_names() {
    local line
    names=()
    while IFS= read -r line; do
        names+=("$line")
    done < <(VELDyadCtxOut='' VELDyadContextTrace='' command dyadctx "$@" 2>/dev/null </dev/null)
}

# Names of the kind $1 in the file on the line, else in the file in use, also where it has errors.
_dyadctx_listed() {
    local i file='' call=(list --all --quiet --format "$1") names
    [[ $1 == providers ]] || ((database)) && call+=(--db-context)
    for i in "${!values[@]}"; do
        [[ ${values[i]} == contextfiles ]] && file=${given[i]-} && break
    done
    [[ $file == '~/'* ]] && file=$HOME/${file:2}
    [[ $file ]] && call+=(-- "$file")
    _dyadctx_names "${call[@]}"
    _dyadctx_offer "${names[@]}"
}

# Folders and what ends in .xml; all files where there is neither.
_dyadctx_context_files() {
    local path typed=$current home='~/' candidates=() folders=0
    [[ $typed == '~/'* ]] && typed=$HOME/${typed:2}
    for path in "$typed"*; do
        if [[ -d $path ]]; then
            candidates+=("$current${path:${#typed}}/")
            ((++folders))
        elif [[ $path == *.xml && -e $path ]]; then
            candidates+=("$current${path:${#typed}}")
        fi
    done
    if ((!${#candidates[@]})); then
        compopt -o default 2>/dev/null
        return
    fi
    ((folders == ${#candidates[@]})) && compopt -o nospace 2>/dev/null
    _dyadctx_offer "${candidates[@]}"
    # A quoted tilde would no longer be the home folder.
    [[ $quote ]] || COMPREPLY=("${COMPREPLY[@]/#\\~\//$home}")
}

_dyadctx_value() {
    case $1 in
    words\ *)
        local IFS=' '
        _dyadctx_offer ${1#words }
        ;;
    files) compopt -o default 2>/dev/null ;;
    contextfiles) _dyadctx_context_files ;;
    contexts) _dyadctx_listed names ;;
    providers) _dyadctx_listed providers ;;
    esac
}

# What is offered for the value of the option $1 of the current command, into `offer`.
_dyadctx_offer_of() {
    local i
    offer=''
    for i in "${!options[@]}"; do
        if [[ ${options[i]} == "$1" ]]; then
            offer=${offers[i]}
            return
        fi
    done
}

# Takes the word $1 in: `path` becomes the command, `given` its values, `awaited` what the option
# before it is waiting for.
_dyadctx_take() {
    local word=$1 offer one
    if [[ $awaited ]]; then
        awaited=''
    elif ((plain)); then
        given+=("$word")
    elif [[ $word == -- ]]; then
        plain=1
    elif [[ $word == -?* ]]; then
        [[ $word == --db-context ]] && database=1
        _dyadctx_offer_of "$word"
        awaited=$offer
    else
        for one in "${commands[@]}"; do
            [[ $one == "$word" ]] || continue
            path+=${path:+ }$word
            _dyadctx_row "$path"
            return
        done
        given+=("$word")
    fi
}

_dyadctx() {
    local words=() behind=() quote kept current path='' awaited='' plain=0 database=0 place
    local given=() commands options offers values repeats offer i before
    COMPREPLY=()
    _dyadctx_split "${COMP_LINE:0:COMP_POINT}"
    current=${words[-1]}
    _dyadctx_behind
    _dyadctx_row ''
    for ((i = 1; i < ${#words[@]} - 1; i++)); do
        _dyadctx_take "${words[i]}"
    done
    if [[ $awaited ]]; then
        offer=$awaited awaited=''
    elif [[ $current == --*=* ]] && ((!plain)); then
        _dyadctx_offer_of "${current%%=*}"
        before=${#current}
        current=${current#*=}
        ((kept -= before - ${#current}, kept = kept < 0 ? 0 : kept))
    elif [[ $current == -* ]] && ((!plain)); then
        _dyadctx_offer "${options[@]}"
        return
    else
        place=${#given[@]}
        ((repeats && place >= ${#values[@]})) && place=$((${#values[@]} - 1))
        offer=${values[place]-}
        ((${#commands[@]})) && offer="words ${commands[*]}"
        given+=("$current")
    fi
    for i in "${behind[@]}"; do
        _dyadctx_take "$i"
    done
    _dyadctx_value "$offer"
}

complete -F _dyadctx dyadctx
