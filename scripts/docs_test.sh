#!/usr/bin/env bash
# Holds the documentation to what is there: every public name has its words, the manual page is well-formed, and the
# commands that README and docs show do what they are shown to do.
#
#   scripts/docs_test.sh             all pages
#   scripts/docs_test.sh FILE...     the commands of these pages alone
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
    lexgrog "$page" >/dev/null || fail "the manual page has no line that names the command and says what it does"
fi
scripts/docs_commands.py build/dev/bin "$@"
