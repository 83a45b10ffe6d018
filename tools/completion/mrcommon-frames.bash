# Completion of mrcommon-frames for bash.
_mrcommon_frames() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if [[ $before == --extension ]]; then
        return
    elif [[ $word == -* ]]; then
        local options='--json --missing --check --others --negative --versions-are-names --extension --help --version'
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
    fi
}
complete -F _mrcommon_frames mrcommon-frames
