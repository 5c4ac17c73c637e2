#!/usr/bin/env bash
# Reports the branch coverage of the module and the settings core, with the lines of the branches that no test takes.
# Branches that the compiler generates are excluded: for exceptions, for unreachable code, and on lines without a
# decision, where temporaries are destroyed and static variables are initialised.
#
#   scripts/coverage.sh          builds everything, runs all tests, reports
#   scripts/coverage.sh TEST...  builds and runs only these test executables
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

# These tests only measure memory, and take long.
long=StaysFlat

run_tests() {
    local name
    if (($# == 0)); then
        ctest --preset coverage --parallel "$(nproc)" --exclude-regex "$long"
    fi
    for name in "$@"; do
        "build/coverage/bin/$name" --gtest_brief=1 --gtest_filter="-*${long//|/*:*}*" || return
    done
}

"$project/scripts/setup.sh" --coverage --quiet
cd -- "$project"
# Bundles and native libraries are loaded at run time, so the test executables do not depend on them.
alone coverage build coverage "$@" ${1:+com_tarnwick_verdix_factory_settings vxsavevars vxservices vxgraphics_state}
find build/coverage -name '*.gcda' -delete # from earlier runs
quietly run_tests "$@"
no_decision='(?!.*(\b(if|while|for|switch|case)\b|&&|\|\||\?)).*'
report=(gcovr --root . --object-directory build/coverage --exclude-throw-branches --exclude-unreachable-branches
    --exclude-branches-by-pattern "$no_decision")
for part in builder component migration tree platform/settings_core; do
    report+=(--filter "$part/")
done
"${report[@]}" --branches --print-summary
