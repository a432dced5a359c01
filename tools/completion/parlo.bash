# bash completion for parlo

_parlo()
{
    local cur prev word command="" words=""
    cur=${COMP_WORDS[COMP_CWORD]}
    prev=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="reply conversation explain log test diff status actions check schema"
    local options="--help --color"
    COMPREPLY=()

    case $prev in
        --voice-recog) words="0 1 none" ;;
        --log) words="off error debug" ;;
        --kind) words="start reply status stop" ;;
        --color) words="auto always never" ;;
        --format) words="text json github" ;;
        --country) words="$(parlo status --all 2>/dev/null | sed -n 's/^\([A-Z][A-Z]\) .*/\1/p') none" ;;
        --language) words="$(parlo status --all 2>/dev/null | sed -n '1s/^country//p') none" ;;
        --utterance | --ignore | --allow) return ;;
        --junit | --extract)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$cur")
            return
            ;;
    esac
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
        return
    fi

    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ " $commands " == *" $word "* ]]; then
            command=$word
            break
        fi
    done

    [[ $command =~ ^(diff|actions|check|schema)$ ]] || options+=" --country --language --voice-recog --log"
    case $command in
        reply) options+=" --utterance --json --compact" ;;
        conversation) options+=" --json --compact" ;;
        explain) options+=" --utterance --json" ;;
        log) options+=" --call --since --until --process --kind --refused --differs --explain --extract --replay --json" ;;
        test) options+=" --junit --quiet --update" ;;
        diff) options+=" --utterance" ;;
        status) options+=" --all --json" ;;
        actions) options+=" --json" ;;
        check) options+=" --strict --format --json --ignore --allow" ;;
        "") options+=" --version" ;;
    esac

    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$cur")
    elif [[ $command == actions ]]; then
        words=$(parlo actions 2>/dev/null | sed -n '/^Actions of a TV/,/^$/s/^  \([a-z_0-9]*\) .*/\1/p')
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
    elif [[ $command == schema ]]; then
        mapfile -t COMPREPLY < <(compgen -W "reply search conversation" -- "$cur")
    elif [[ $command != status ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    fi
}

complete -F _parlo parlo
