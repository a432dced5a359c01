# bash completion for parlo

_parlo()
{
    local cur prev word command="" words=""
    cur=${COMP_WORDS[COMP_CWORD]}
    prev=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="reply conversation explain log test diff status actions check schema"
    local options="--help --country --language --voice-recog --log --color"
    COMPREPLY=()

    case $prev in
        --voice-recog) words="0 1 none" ;;
        --log) words="off error debug" ;;
        --kind) words="start reply status stop" ;;
        --color) words="auto always never" ;;
        --format) words="text json" ;;
        --country) words="KR US AU CA BR PT ES CN NO SE AT GB DE IT PL FI BE DK IE FR NL RU CH none" ;;
        --language)
            words="ko_KR en_US en_AU en_GB pt_BR pt_PT de_DE fr_FR es_ES it_IT nl_NL zh_CN pl_PL ru_RU nn_NO nb_NO"
            words+=" da_DK sv_SE fi_FI none"
            ;;
        --utterance) return ;;
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

    case $command in
        reply) options+=" --utterance --json --compact" ;;
        conversation) options+=" --json --compact" ;;
        explain) options+=" --utterance --json" ;;
        log) options+=" --call --since --until --process --kind --refused --differs --explain --extract --replay --json" ;;
        test) options+=" --junit --update" ;;
        diff) options+=" --utterance" ;;
        status) options+=" --all --json" ;;
        actions) options+=" --json" ;;
        check) options+=" --strict --format" ;;
        schema) options+=" --search-schema" ;;
        "") options+=" --version" ;;
    esac

    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$cur")
    elif [[ $command == actions ]]; then
        words=$(parlo actions 2>/dev/null | sed -n '/^Actions of a TV/,/^$/s/^  \([a-z_0-9]*\) .*/\1/p')
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
    elif [[ $command != status && $command != schema ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    fi
}

complete -F _parlo parlo
