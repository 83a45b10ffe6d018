# Completion of mrcommon-records for bash.
_mrcommon_records() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if [[ $before == --workspace || $before == --kinds ]]; then
        return
    elif [[ $word == -* ]]; then
        local options='--kinds --kinds-from --repeat --endian --workspace --plug-in --settings --json --check --help --version'
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _mrcommon_records mrcommon-records
