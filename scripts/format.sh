#!/usr/bin/env bash
# Formats the C++ sources.
#
#   scripts/format.sh          formats the files in place
#   scripts/format.sh --check  changes nothing; lists differences and fails if there are any
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

action=(-i)
case ${1-} in
"") ;;
--check) action=(--dry-run --Werror) ;;
*) fail "unknown argument '$1'; see the head of this file" ;;
esac

cd -- "$project"
git ls-files -z --cached --others --exclude-standard -- '*.hpp' '*.cpp' |
    xargs -0 --no-run-if-empty --max-procs="$(nproc)" --max-args=16 clang-format-14 "${action[@]}"
