#!/usr/bin/env bash
# Measures speed, size and growth, and writes the results to bench/results.json, docs/performance.md and its pictures.
#
#   scripts/bench.sh           sets up, builds, measures; takes about four minutes on an idle machine
#   scripts/bench.sh --build   also times a full build with the tests, on two cores and without ccache
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

time_build=false
case ${1-} in
--build) time_build=true ;;
?*) fail "unknown argument '$1'; see the head of this file" ;;
esac

build_benchmarks

# Includes everything that a build does: configuring, compiling, linking, and discovering the tests.
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

echo "Counting allocations ..." >&2
"$folder/bin/vx_bench_memory" >"$results/memory.json"
echo "Timing first trees ..." >&2
for ((round = 0; round < 101; ++round)); do
    "$folder/bin/vx_bench_first_tree"
done >"$results/first_tree.txt"
echo "Timing whole processes ..." >&2
"$folder/bin/vx_bench_start" 200 >"$results/start.json"
echo "Timing changes of a settings file ..." >&2
"$folder/bin/vx_bench_change_latency" 1000 >"$results/change.json"
echo "Timing the tree and other libraries ..." >&2
"$folder/bin/vx_bench_tree" --benchmark_repetitions=15 --benchmark_min_time=0.1 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_out="$results/tree.json" --benchmark_out_format=json >/dev/null
strip -o "$results/module.so" "$folder/lib/verdix/bundles/libcom_tarnwick_verdix_factory_settings.so"
if $time_build; then
    echo "Timing a full build ..." >&2
    time_full_build >"$results/build_seconds"
fi
"$project/bench/report.py" "$folder" "$project"
echo "Timing growing trees and settings files ..." >&2
"$project/bench/growth.py" "$folder" "$project"
