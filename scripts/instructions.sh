#!/usr/bin/env bash
# Counts the instructions for building the tree, which vary less than the time.
#
#   scripts/instructions.sh --check    fails if the count is more than 3 % above bench/instructions.txt
#   scripts/instructions.sh --record   writes the count to that file
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

[[ ${1-} == --check || ${1-} == --record ]] || fail "call it with --check or --record; see the head of this file"
record=$project/bench/instructions.txt
folder=$project/build/bench

# glibc selects string functions by processor; GLIBC_TUNABLES restricts it to those that all processors have.
count() {
    local log
    log=$(mktemp)
    GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX512F,-AVX512VL,-AVX512BW,-ERMS,-FSRM \
        valgrind --tool=callgrind --instr-atstart=no --collect-atstart=no --callgrind-out-file=/dev/null \
        "$folder/bin/vx_bench_instructions" >"$log" 2>&1 || { cat -- "$log" >&2; fail "valgrind failed"; }
    sed -n 's/^==.*Collected : //p' "$log"
    rm -f -- "$log"
}

build_benchmarks vx_bench_instructions
compiler=$("$(sed -n 's/^CMAKE_CXX_COMPILER:[^=]*=//p' "$folder/CMakeCache.txt")" -dumpfullversion)
instructions=$(count)
[[ $instructions =~ ^[1-9][0-9]*$ ]] || fail "valgrind printed '$instructions' instead of a count"

if [[ $1 == --record ]]; then
    printf 'compiler %s\ninstructions %s\n' "$compiler" "$instructions" >"$record"
    echo "Recorded: $instructions instructions."
    exit
fi

recorded_compiler=$(sed -n 's/^compiler //p' "$record")
recorded=$(sed -n 's/^instructions //p' "$record")
[[ $compiler == "$recorded_compiler" ]] ||
    fail "bench/instructions.txt was recorded with compiler $recorded_compiler, this is $compiler: check out the last" \
        "good commit, run scripts/instructions.sh --record there, and compare again"
echo "Building the tree takes $instructions instructions; recorded: $recorded."
if ((instructions * 100 > recorded * 103)); then
    fail "building the tree takes $(((instructions - recorded) * 100 / recorded)) % more instructions than recorded" \
        "in bench/instructions.txt: find the cause with callgrind_annotate; if settings were added or the cost is" \
        "intended, run scripts/instructions.sh --record and give the reason in the commit message"
fi
