#!/usr/bin/env bash
# Reports which branches of the module and the settings core the tests take, and the lines of those they do not.
# Branches that the compiler makes do not count: for exceptions, for what cannot be reached, and on lines without a
# decision, where temporaries are cleaned up and statics are made.
#
#   scripts/coverage.sh          builds everything, runs all tests, reports
#   scripts/coverage.sh TEST...  builds and runs these test executables alone
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

# Only memory would be judged by these, and at great length.
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
# Bundles and native libraries are opened by name.
alone coverage build coverage "$@" ${1:+com_tarnwick_verdix_factory_settings vxsavevars vxservices vxgraphics_state}
find build/coverage -name '*.gcda' -delete # of earlier runs
quietly run_tests "$@"
no_decision='(?!.*(\b(if|while|for|switch|case)\b|&&|\|\||\?)).*'
report=(gcovr --root . --object-directory build/coverage --exclude-throw-branches --exclude-unreachable-branches
    --exclude-branches-by-pattern "$no_decision")
for part in builder component migration tree platform/settings_core; do
    report+=(--filter "$part/")
done
"${report[@]}" --branches --print-summary
