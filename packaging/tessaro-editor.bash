# Completion of the programs' options and files for bash.

_tessaro_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X "!*.$1" -- "$word"; compgen -f -X "!*.${1^^}" -- "$word")
}

_tessaro() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} options= ending=dwg
    case ${1##*/} in
    tessaro-editor) options='--batch --script --load --no-load --support --help' ;;
    tessaro-samples) ending= ;;
    tessaro-examine) options='--background --mark --no-marks --pictures --paint --help' ;;
    tessaro-thumbnailer) options='-s' ;;
    drawing-facts) options='--entities' ;;
    cache-dump) options='--ini --help' ending=cache ;;
    esac
    COMPREPLY=()
    case $before in
    --script) _tessaro_files scr ;;
    --load) _tessaro_files arx ;;
    --support | --pictures | --paint) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    --background | --mark | -s) ;;
    *)
        if [[ $word == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
        elif [[ -z $ending ]]; then
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
        else
            _tessaro_files "$ending"
        fi
        ;;
    esac
}

complete -F _tessaro tessaro-editor tessaro-samples tessaro-examine tessaro-thumbnailer drawing-facts cache-dump
