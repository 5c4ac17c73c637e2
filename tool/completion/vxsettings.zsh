#compdef vxsettings
# Completion of vxsettings for zsh: vxsettings itself lists the candidates.

_vxsettings() {
    local line candidate item
    local -a finished unfinished replace
    for line in "${(@f)$("${(Q)words[1]}" complete -- "${(@Q)words[2,CURRENT]}" 2>/dev/null)}"; do
        candidate=${line%%$'\t'*}
        if [[ $candidate == :files ]]; then
            _files
        elif [[ -n $candidate ]]; then
            item="${candidate//:/\\:}:${line#*$'\t'}"
            [[ $candidate == "${(Q)words[CURRENT]}"* ]] || replace=(-U)
            [[ $candidate == *[.=] ]] && unfinished+=("$item") || finished+=("$item")
        fi
    done
    # Candidates that only contain what is typed replace it, one after the other.
    (($#replace)) && compstate[insert]=menu
    _describe -t finished 'vxsettings' finished $replace
    _describe -t unfinished 'vxsettings' unfinished $replace -S ''
}

if [[ ${funcstack[1]-} == _vxsettings ]]; then
    _vxsettings "$@" # autoloaded
else
    compdef _vxsettings vxsettings # sourced
fi
