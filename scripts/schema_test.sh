#!/usr/bin/env bash
# Exports the JSON Schema of settings files and tests it with validators and the JSON language service of editors.
#
#   scripts/schema_test.sh                 with the preset dev
#   scripts/schema_test.sh --preset asan   with another preset of CMakePresets.json
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

read_preset "$@"

"$project/scripts/setup.sh" --ci --quiet
alone "$preset" build "$preset" vxsettings vx_sample_bundle
schema_tests=$project/tests/tool/schema
node_packages "$schema_tests"

SCHEMA_FOLDER=$(mktemp -d)
export SCHEMA_FOLDER
trap 'rm -rf -- "$SCHEMA_FOLDER"' EXIT
vxsettings=$project/build/$preset/bin/vxsettings
sample_bundle=$project/build/$preset/lib/libvx_sample_bundle.so
/usr/bin/python3 "$schema_tests/agreement.py" "$vxsettings" "$sample_bundle" "$SCHEMA_FOLDER"
"$vxsettings" export --format json -o "$SCHEMA_FOLDER/tree.json"
"$vxsettings" export --format json-schema --factory -o "$SCHEMA_FOLDER/schema.json"
"$vxsettings" --bundle "$sample_bundle" export --format json-schema --factory -o "$SCHEMA_FOLDER/sample.json"
node --test "$schema_tests/editor_test.mjs"
