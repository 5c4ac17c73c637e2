# Completion of vxsettings for fish: vxsettings itself lists the candidates.

function __vxsettings_complete
    set -l words (commandline --tokenize --cut-at-cursor) (commandline --current-token --cut-at-cursor)
    for line in ($words[1] complete -- $words[2..] 2>/dev/null)
        if test "$line" = :files
            __fish_complete_path $words[-1]
        else
            echo -- $line
        end
    end
end
complete --command vxsettings --no-files --arguments '(__vxsettings_complete)'
