#!/usr/bin/env bash
# Runs clang-tidy on the sources of the product and the headers that they include. Tests are excluded, because the
# macros of the test framework would take most of the time and cause irrelevant warnings.
#
#   scripts/lint.sh                  all sources
#   scripts/lint.sh --changed [REF]  sources that differ from REF (main), or include a header that does
#   scripts/lint.sh FILE...          these sources
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

sources=(':(glob)**/*.cpp' ':(exclude)tests' ':(exclude)bench' ':(exclude)fuzz')

list_changed() {
    local header
    git diff --name-only --diff-filter=d --merge-base "$1" -- "${sources[@]}"
    git ls-files --others --exclude-standard -- "${sources[@]}"
    git diff --name-only --diff-filter=d --merge-base "$1" -- '*.hpp' | while read -r header; do
        git grep --files-with-matches --untracked "#include <.*\b$(basename -- "$header")>" -- "${sources[@]}" || true
    done
}

case ${1-} in
"") cd -- "$project" && files=$(git ls-files -- "${sources[@]}") ;;
--changed) cd -- "$project" && files=$(list_changed "${2-main}" | sort --unique) ;;
-*) fail "unknown argument '$1'; see the head of this file" ;;
*) files=$(realpath -- "$@") && cd -- "$project" ;;
esac
if [[ -z $files ]]; then
    echo "Nothing to do: no product source has changed."
    exit
fi

"$project/scripts/setup.sh" --ci --quiet
alone clang configure clang
tr '\n' '\0' <<<"$files" |
    xargs -0 --no-run-if-empty --max-procs="$(nproc)" --max-args=1 \
        clang-tidy-14 -p "$project/build/clang" --quiet 2>&1 |
    { grep -v -E '^[0-9]+ warnings? generated\.$' || true; }
