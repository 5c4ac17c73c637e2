#!/usr/bin/env bash
# Builds everything and runs the tests.
#
#   scripts/test.sh                    with the preset dev
#   scripts/test.sh --preset asan      with another preset of CMakePresets.json
#   scripts/test.sh -R exported        further arguments go to ctest
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

preset=dev
if [[ ${1-} == --preset ]]; then
    preset=${2-}
    [[ -n $preset ]] || fail "--preset needs a name; cmake --list-presets shows them"
    shift 2
fi

"$project/scripts/setup.sh" --quiet
alone "$preset" build "$preset"
cd -- "$project"
exec ctest --preset "$preset" --parallel "$(nproc)" "$@"
