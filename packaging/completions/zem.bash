# bash completion for zem and its companions: options, log files, and behind -fd, -fF, -ff and -fo
# the names that the logs on the command line hold. Those of -ff are the names as they are stored.

# The logs among the words of the command line.
_zem_logs()
{
    local word
    for word in "${COMP_WORDS[@]:1}"; do
        # As it would reach the program, without quotes and backslashes.
        word=${word//[\\\"\']/}
        [[ -f $word ]] && printf '%s\n' "$word"
    done
}

# One stored name a line. $1: what to list, d, F, f or o.
_zem_names()
{
    local logs maps
    mapfile -t logs < <(_zem_logs)
    [ ${#logs[@]} -gt 0 ] || return 0
    if [ "$1" = f ]; then
        mapfile -t maps < <(zem-dump "${logs[@]}" 2>/dev/null | sed -n 's/^ *mapfile : //p' | sort -u)
        [ ${#maps[@]} -gt 0 ] || return 0
        zem-dump "${maps[@]}" 2>/dev/null | sed -n 's/^        function : //p' | sort -u
    else
        zem-report "-d$1" "${logs[@]}" 2>/dev/null | sed -e 1d -e '$d' -e 's/\t.*//'
    fi
}

# Completes the current word with the lines of the standard input, quoted where they must be.
# A colon ends a word for the shell, which wants only what follows the last one of the word.
_zem_offer()
{
    local current=$1 line prefix=
    local bare=${current//[\\\"\']/}
    case $COMP_WORDBREAKS in
        *:*) [[ $current == *:* ]] && prefix=${bare%"${bare##*:}"} ;;
    esac
    while IFS= read -r line; do
        if [[ $line == "$bare"* ]]; then
            COMPREPLY+=("$(printf %q "${line#"$prefix"}")")
        fi
    done
}

_zem()
{
    local cur prev words cword
    COMPREPLY=()
    if declare -F _get_comp_words_by_ref >/dev/null; then
        _get_comp_words_by_ref -n : cur prev words cword
    else
        cur=${COMP_WORDS[COMP_CWORD]}
        prev=${COMP_WORDS[COMP_CWORD - 1]}
    fi
    local program=${COMP_WORDS[0]##*/}
    case $program,$prev in
        zem,-f[dFfo] | zem-report,-f[dFfo])
            _zem_offer "$cur" < <(_zem_names "${prev#-f}")
            return ;;
        zem,-s | zem-report,-s)
            return ;;
        zem-import,-o)
            mapfile -t COMPREPLY < <(compgen -d -- "$cur")
            return ;;
    esac
    case $program,$cur in
        zem,-*)
            mapfile -t COMPREPLY < <(compgen -W '-dd -dF -df -do -ns -ne -nm -fd -fF -ff -fo -s -ct
                -display -geometry -xrm' -- "$cur") ;;
        zem-report,-*)
            mapfile -t COMPREPLY < <(compgen -W '-dd -dF -df -do -ns -ne -nm -fd -fF -ff -fo -s
                --help --version' -- "$cur") ;;
        *,-*)
            # As the program itself tells them.
            mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" --help 2>/dev/null |
                grep -oE '(^|[ ,[])--?[A-Za-z][-A-Za-z]*' | tr -d ' ,[')" -- "$cur") ;;
        zem,* | zem-report,*)
            mapfile -t COMPREPLY < <(compgen -f -X '!*.log' -- "$cur"; compgen -d -- "$cur") ;;
        zem-dump,*)
            mapfile -t COMPREPLY < <(compgen -f -X '!*.@(log|map)' -- "$cur"; compgen -d -- "$cur") ;;
        zem-run,*)
            # A command with its arguments.
            mapfile -t COMPREPLY < <(compgen -c -- "$cur"; compgen -f -- "$cur") ;;
        *)
            mapfile -t COMPREPLY < <(compgen -f -- "$cur") ;;
    esac
    compopt -o filenames 2>/dev/null || true
}

complete -F _zem zem zem-report zem-dump zem-import zem-run
