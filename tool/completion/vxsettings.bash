# Completion of vxsettings for bash: vxsettings itself lists the candidates.

_vxsettings() {
    # Bash splits --option=value into three words; vxsettings expects one.
    local words=() index joined=false
    for ((index = 1; index <= COMP_CWORD; ++index)); do
        if [[ ${COMP_WORDS[index]} == = && ${#words[@]} -gt 0 ]]; then
            words[-1]+="="
            joined=true
        elif $joined; then
            words[-1]+=${COMP_WORDS[index]}
            joined=false
        else
            words+=("${COMP_WORDS[index]}")
        fi
    done
    local typed=${words[-1]} behind=""
    [[ $typed == *=* && $COMP_WORDBREAKS == *=* ]] && behind=${typed%%=*}=

    COMPREPLY=()
    local candidate contains=false
    while IFS=$'\t' read -r candidate _; do
        if [[ $candidate == :files ]]; then
            compopt -o filenames -o default
            continue
        fi
        [[ $candidate == "$typed"* ]] || contains=true
        candidate=${candidate#"$behind"}
        [[ $candidate == *[.=] ]] && compopt -o nospace
        COMPREPLY+=("$(printf '%q' "$candidate")")
    done < <("$1" complete -- "${words[@]}" 2>/dev/null)
    # Candidates that only contain what is typed replace it by what they all begin with. An empty one prevents that, unless
    # all begin with the first of them.
    if $contains; then
        local others=${COMPREPLY[*]##"${COMPREPLY[0]}"*}
        [[ -z ${others// /} ]] || COMPREPLY+=(" ")
    fi
}
complete -F _vxsettings vxsettings
