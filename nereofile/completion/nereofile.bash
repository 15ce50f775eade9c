# Completion of nereofile for bash. A test compares it with nereofile --help.

_nereofile()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local kinds="configuration-xml configuration-text control materials geometry-boundary results"
    COMPREPLY=()

    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "info check diff get set unset convert codes --help --version" -- "$current")
        return
    fi
    case $previous in
        --kind)
            mapfile -t COMPREPLY < <(compgen -W "$kinds" -- "$current")
            return
            ;;
        --absolute | --relative | --peak | --fields | --nodes) return ;; # nobody knows
    esac
    if [[ $current == -* ]]; then
        local options
        case $command in
            info) options="--json --stats --kind" ;;
            check) options="--json --strict --quiet --case --kind" ;;
            diff) options="--json --quiet --absolute --relative --peak --fields" ;;
            get) options="--json --kind --effective" ;;
            set | unset) options="--output --dry-run" ;;
            convert) options="--fields --nodes --force" ;;
            codes) options="--json" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options --help" -- "$current")
    elif [[ $command == @(get|set|unset) && $COMP_CWORD -gt 2 && -f ${COMP_WORDS[2]} && $previous != --output ]]; then
        # The addresses that the file has.
        mapfile -t COMPREPLY < <(compgen -W "$(nereofile get "${COMP_WORDS[2]}" 2>/dev/null |
            sed -n 's/^\([^= ]*\)=.*/\1/p')" -- "$current")
    elif [ "$command" != codes ]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
} && complete -F _nereofile nereofile
