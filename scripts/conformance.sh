#!/usr/bin/env bash
# Builds against an installed CppMicroServices instead of the embedded framework, and runs all tests on it.
# docs/service-framework.md lists the requirements for the installation.
#
#   scripts/conformance.sh PREFIX   PREFIX is the installation prefix
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

[[ $# == 1 && -d $1 ]] || fail "give the installation prefix of CppMicroServices; see the head of this file"
prefix=$(realpath -- "$1")
folder=$project/build/conformance

# run_tests WHAT [ARGUMENT...]: runs the tests that ctest selects with the arguments and prints their number.
run_tests() {
    local what=$1 log=$folder/${1// /_}.log
    shift
    ctest --test-dir "$folder" --parallel "$(nproc)" --no-tests=error --output-on-failure "$@" >"$log" 2>&1 || {
        cat -- "$log" >&2
        fail "$what: tests fail on $framework"
    }
    printf '%s: %s\n' "$what" "$(grep -E '^[0-9]+% tests passed' "$log")"
}

"$project/scripts/setup.sh" --quiet
quietly cmake -S "$project" --preset dev -B "$folder" --fresh \
    -DVERDIX_SERVICE_FRAMEWORK=system -DCppMicroServices_ROOT="$prefix"
found=$(sed -n 's/^CppMicroServices_DIR:[^=]*=//p' "$folder/CMakeCache.txt")
[[ $(realpath -- "$found") == "$prefix"/* ]] ||
    fail "CMake found no CppMicroServices in $prefix, but one in $found; give the folder above its bin and lib"
framework=$(sed -n 's/.*framework\(Name\|Version\) = "\(.*\)";/\2/p' "$folder/generated/framework_bundles.hpp" | xargs)
[[ $framework == "CppMicroServices "* ]] || fail "the build uses $framework; nothing was tested"
quietly ninja -C "$folder"
printf '%s, %s, %s\n' "$framework" "$(c++ --version | head -n 1)" "$(date -u +%F)"
run_tests conformance --label-regex '^conformance$'
run_tests "all others" --label-exclude '^conformance$'
