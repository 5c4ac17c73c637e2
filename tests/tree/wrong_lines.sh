#!/usr/bin/env bash
# wrong_lines.sh SOURCE COMPILER ARGUMENT...
#
# Compiles the source, and compares the lines with an error with those that a comment marks.
set -euo pipefail
source=$1
shift
[[ $("$1" --version) != *clang* ]] || set -- "$@" -ferror-limit=0

if output=$(LC_ALL=C "$@" -fsyntax-only "$source" 2>&1); then
    echo "no line of $source has an error"
    exit 1
fi
output=$(grep -v ';  *// ' <<<"$output") # the quoted lines contain the expected messages
failed=0
if ! difference=$(diff <(grep -n ';  *// ' "$source" | cut -d: -f1) \
    <(grep -o "^${source}:[0-9][0-9]*" <<<"$output" | cut -d: -f2 | sort -nu)); then
    echo "lines without (<) and with (>) an unexpected error:"
    echo "$difference"
    failed=1
fi
while read -r message; do
    if ! grep -qF -- "$message" <<<"$output"; then
        echo "no error says: $message"
        failed=1
    fi
done < <(sed -n 's|.*;  *// ||p' "$source" | sort -u)
((failed == 0)) || printf '%s\n' "$output"
exit $failed
