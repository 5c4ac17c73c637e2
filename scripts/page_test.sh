#!/usr/bin/env bash
# Exports the HTML page of settings and tests it in Debian's Chromium, and its search beside that of the command.
#
#   scripts/page_test.sh                 with the preset dev
#   scripts/page_test.sh --preset asan   with another preset of CMakePresets.json
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

read_preset "$@"

"$project/scripts/setup.sh" --ci --quiet
alone "$preset" build "$preset"
page_tests=$project/tests/tool/page
node_packages "$page_tests"

PAGE_FOLDER=$(mktemp -d)
export PAGE_FOLDER
trap 'rm -rf -- "$PAGE_FOLDER"' EXIT
PATH=$project/build/$preset/bin:$PATH # the tests run the commands that the page writes
vxsettings export --format json -o "$PAGE_FOLDER/tree.json"
vxsettings export --format html --factory -o "$PAGE_FOLDER/plain.html"
vxsettings export --format html -o "$PAGE_FOLDER/modified.html" \
    --personal "$page_tests/personal.json" --installation "$page_tests/installation.json"
node --test "$page_tests/search_test.mjs" "$page_tests/page_test.mjs"
