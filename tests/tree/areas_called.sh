#!/usr/bin/env bash
# areas_called.sh FOLDER
#
# An area's builder that nobody calls compiles and links, and its settings are missing.
set -euo pipefail
cd -- "$1"

mapfile -t builders < <(grep -oh '^void build[A-Za-z]*Area' -- *.cpp | sed 's/^void //')
((${#builders[@]} > 30)) || { echo "only ${#builders[@]} builders found in $1: mend this test"; exit 1; }
failed=0
for builder in "${builders[@]}"; do
    if ! grep -q "^ \+$builder(" -- *.cpp; then
        echo "$builder in tree/$(grep -l "^void $builder(" -- *.cpp) is never called: call it in tree/root.cpp, where" \
            "its settings shall stand"
        failed=1
    fi
done
exit $failed
