#!/usr/bin/env bash
# Builds everything and runs the tests.
#
#   scripts/test.sh                    with the preset dev
#   scripts/test.sh --preset asan      with another preset of CMakePresets.json
#   scripts/test.sh --target NAME      builds only that test executable; select its tests with -R, others fail
#   scripts/test.sh -R exported        passes other arguments to ctest
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

preset=dev
targets=()
while [[ ${1-} == --preset || ${1-} == --target ]]; do
    [[ -n ${2-} ]] || fail "$1 needs a name; cmake --list-presets shows the presets"
    case $1 in
    --preset) preset=$2 ;;
    --target) targets+=("$2") ;;
    esac
    shift 2
done

if grep -qsxF 'VERDIX_BUILD_TESTS:BOOL=OFF' "$project/build/$preset/CMakeCache.txt"; then
    fail "build/$preset is configured without tests, as for an installation;" \
        "cmake --preset $preset -DVERDIX_BUILD_TESTS=ON adds them"
fi
"$project/scripts/setup.sh" --quiet
alone "$preset" build "$preset" "${targets[@]}"
cd -- "$project"
exec ctest --preset "$preset" --parallel "$(nproc)" "$@"
