#!/usr/bin/env bash
# Tests the documentation: every public name is documented, the manual page is well-formed, and the commands in README
# and docs work and print what is shown.
#
#   scripts/docs_test.sh             all pages
#   scripts/docs_test.sh FILE...     only the commands on these pages
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

"$project/scripts/setup.sh" --ci --quiet
alone dev build dev
cd -- "$project"
if (($# == 0)); then
    set -- README.md CONTRIBUTING.md docs/*.md
    doxygen
    quietly ninja -C build/dev vxsettings_manual
    page=$project/build/dev/share/man/man1/vxsettings.1
    complaints=$(groff -man -ww -Tutf8 "$page" 2>&1 >/dev/null)
    [[ -z $complaints ]] || fail "the manual page is not well-formed: $complaints"
    lexgrog "$page" >/dev/null || fail "the manual page has no line with the name and a description of the command"
fi
scripts/docs_commands.py build/dev/bin "$@"
