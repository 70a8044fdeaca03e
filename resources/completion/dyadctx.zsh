#compdef dyadctx
# Completion of dyadctx for zsh, written by `dyadctx completion zsh`.
# Source it behind compinit, or put it as _dyadctx into a folder of fpath.

# What may stand behind the command $1: its commands, its options with what is offered for their
# values (nothing for a switch), and what is offered for its values by place.
_dyadctx_row() {
    case $1 in
@TABLE@
    esac
}

# Offers the names $2... with the meanings in the array named $1.
_dyadctx_described() {
    local -a meanings_of=("${(@P)1}") shown
    local i
    shift
    for ((i = 1; i <= $#; i++)); do
        shown+=("${(r:16:)argv[i]} ${meanings_of[i]}")
    done
    compadd -l -d shown -a argv
}

# The answer of the tool, one name per line, into `names`. A file that VELDyadCtxOut names must not
# be written by the way.
_dyadctx_names() {
    names=("${(@f)$(VELDyadCtxOut= VELDyadContextTrace= command dyadctx "$@" 2>/dev/null </dev/null)}")
    names=("${(@)names:#}")
}

# Names of the kind $1 in the file on the line, else in the file in use, also where it has errors.
_dyadctx_listed() {
    local file='' i
    local -a call=(list --all --quiet --format $1) names
    [[ $1 == providers ]] || ((database)) && call+=(--db-context)
    i=${values[(Ie)contextfiles]}
    ((i)) && file=${given[i]-}
    [[ $file == '~/'* ]] && file=$HOME/${file#'~/'}
    [[ -n $file ]] && call+=(-- "$file")
    _dyadctx_names "${call[@]}"
    compadd -a names
}

_dyadctx_value() {
    local -a names
    case $1 in
    words\ *)
        names=(${(s: :)1#words })
        compadd -a names
        ;;
    files) _files ;;
    contextfiles) _files -g '*.xml' ;;
    contexts) _dyadctx_listed names ;;
    providers) _dyadctx_listed providers ;;
    esac
}

# Takes the word $1 in: `row` becomes the command, `given` its values, `awaited` what the option
# before it is waiting for.
_dyadctx_take() {
    local word=$1
    if [[ -n $awaited ]]; then
        awaited=''
    elif ((plain)); then
        given+=("$word")
    elif [[ $word == -- ]]; then
        plain=1
    elif [[ $word == -?* ]]; then
        [[ $word == --db-context ]] && database=1
        awaited=${offers[${options[(Ie)$word]}]-}
    elif ((${commands[(Ie)$word]})); then
        row+=${row:+ }$word
        _dyadctx_row "$row"
    else
        given+=("$word")
    fi
}

_dyadctx() {
    local row='' awaited='' offer='' repeats=0 i
    local -i plain=0 database=0 place
    local -a given commands summaries options offers meanings values
    _dyadctx_row ''
    for ((i = 2; i < CURRENT; i++)); do
        _dyadctx_take "${(Q)words[i]}"
    done
    if [[ -n $awaited ]]; then
        offer=$awaited awaited=''
    elif ((!plain)) && [[ $PREFIX == --*=* ]]; then
        offer=${offers[${options[(Ie)${PREFIX%%=*}]}]-}
        compset -P '*='
    elif ((!plain)) && [[ $PREFIX == -* ]]; then
        _dyadctx_described meanings "${options[@]}"
        return
    elif (($#commands)); then
        _dyadctx_described summaries "${commands[@]}"
        return
    else
        place=$(($#given + 1))
        ((repeats && place > $#values)) && place=$#values
        offer=${values[place]-}
        given+=('')
    fi
    for ((i = CURRENT + 1; i <= $#words; i++)); do
        _dyadctx_take "${(Q)words[i]}"
    done
    _dyadctx_value "$offer"
}

# Loaded from fpath this file is the body of the function; sourced it makes the function known.
if [[ $funcstack[1] == _dyadctx ]]; then
    _dyadctx "$@"
else
    compdef _dyadctx dyadctx
fi
