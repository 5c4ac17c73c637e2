#!/usr/bin/env bash
# Measures speed and size, and writes what it found into bench/results.json, docs/performance.md and its pictures.
#
#   scripts/bench.sh           sets up, builds, measures; two to three minutes on a quiet machine
#   scripts/bench.sh --build   also times a build from nothing with the tests, on two cores and without ccache
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

time_build=false
case ${1-} in
--build) time_build=true ;;
?*) fail "unknown argument '$1'; see the head of this file" ;;
esac

build_benchmarks

# Whatever else a build does, it does here: configuring, compiling, linking, and finding out the tests.
time_full_build() {
    local folder start=$EPOCHREALTIME
    folder=$(mktemp -d)
    trap 'rm -rf -- "$folder"' RETURN
    quietly cmake -S "$project" --preset release -B "$folder" -DCCACHE_PROGRAM= -DVERDIX_BUILD_BENCH=OFF
    CCACHE_DISABLE=1 quietly taskset --cpu-list 0,1 ninja -C "$folder" -j 2
    awk -v start="$start" -v end="$EPOCHREALTIME" 'BEGIN { printf "%.0f\n", end - start }'
}

folder=$project/build/bench
results=$folder/results
mkdir -p -- "$results"
rm -f -- "$results"/*

echo "Counting what a tree allocates ..." >&2
"$folder/bin/vx_bench_memory" >"$results/memory.json"
echo "Timing first trees ..." >&2
for ((round = 0; round < 101; ++round)); do
    "$folder/bin/vx_bench_first_tree"
done >"$results/first_tree.txt"
echo "Timing whole processes ..." >&2
"$folder/bin/vx_bench_start" 200 >"$results/start.json"
echo "Timing the tree and the others ..." >&2
"$folder/bin/vx_bench_tree" --benchmark_repetitions=15 --benchmark_min_time=0.1 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_out="$results/tree.json" --benchmark_out_format=json >/dev/null
strip -o "$results/module.so" "$folder/lib/verdix/bundles/libcom_tarnwick_verdix_factory_settings.so"
if $time_build; then
    echo "Building everything from nothing ..." >&2
    time_full_build >"$results/build_seconds"
fi
"$project/bench/report.py" "$folder" "$project"
