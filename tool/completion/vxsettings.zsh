#compdef vxsettings
# Completion of vxsettings for zsh: vxsettings itself lists the candidates.

_vxsettings() {
    local line candidate item
    local -a finished unfinished
    for line in "${(@f)$("${(Q)words[1]}" complete -- "${(@Q)words[2,CURRENT]}" 2>/dev/null)}"; do
        candidate=${line%%$'\t'*}
        if [[ $candidate == :files ]]; then
            _files
        elif [[ -n $candidate ]]; then
            item="${candidate//:/\\:}:${line#*$'\t'}"
            [[ $candidate == *[.=] ]] && unfinished+=("$item") || finished+=("$item")
        fi
    done
    _describe -t finished 'vxsettings' finished
    _describe -t unfinished 'vxsettings' unfinished -S ''
}

if [[ ${funcstack[1]-} == _vxsettings ]]; then
    _vxsettings "$@" # autoloaded
else
    compdef _vxsettings vxsettings # sourced
fi
