#!/usr/bin/env bash
# Builds the fuzz targets and runs them, two at a time. New inputs are kept in build/fuzz/found. Fails if an input
# crashes a target.
#
#   scripts/fuzz.sh                              all targets, 20 seconds each
#   scripts/fuzz.sh --seconds 600 value settings_file  these targets, 10 minutes each
#   scripts/fuzz.sh --merge [TARGET...]          adds the new inputs that increase coverage to fuzz/corpus
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

seconds=20
merge=false
while (($# > 0)); do
    case $1 in
    --seconds)
        seconds=${2-}
        [[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "--seconds needs a number above 0"
        shift
        ;;
    --merge) merge=true ;;
    -*) fail "unknown argument '$1'; see the head of this file" ;;
    *) break ;;
    esac
    shift
done

targets=("$@")
if ((${#targets[@]} == 0)); then
    mapfile -t targets < <(cd -- "$project/fuzz/corpus" && printf '%s\n' *)
fi
for target in "${targets[@]}"; do
    [[ -d $project/fuzz/corpus/$target ]] || fail "there is no target $target; fuzz/corpus has a folder for each"
done

"$project/scripts/setup.sh" --ci --quiet
alone fuzz build fuzz fuzzers

found=$project/build/fuzz/found
export UBSAN_OPTIONS=print_stacktrace=1

# run TARGET: if an input crashes the target, shows the report of libFuzzer and the path of the input.
run() {
    local target=$1 log=$found/$1.log dictionary=()
    local corpus=$project/fuzz/corpus/$target reproducer=$found/$target.reproducer
    mkdir -p -- "$found/$target"
    rm -f -- "$reproducer"
    [[ ! -e $project/fuzz/$target.dict ]] || dictionary=("-dict=$project/fuzz/$target.dict")
    if "$project/build/fuzz/bin/fuzz_$target" "${dictionary[@]}" -max_total_time="$seconds" -timeout=10 \
        -max_len=4096 -print_final_stats=1 "-exact_artifact_path=$reproducer" "$found/$target" "$corpus" &>"$log"; then
        printf '%-14s %10d executions in %d s, %d places covered, nothing found\n' "$target" \
            "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" "$seconds" \
            "$(grep -o 'cov: [0-9]*' "$log" | tail -n 1 | tr -dc 0-9)"
    else
        grep -v -E '^#[0-9]|\(BuildId' "$log" | tail -n 30 >&2
        printf '%s: FOUND, input %s\n' "$target" "$reproducer" >&2
        return 1
    fi
}

if $merge; then
    for target in "${targets[@]}"; do
        printf '%-14s ' "$target"
        "$project/build/fuzz/bin/fuzz_$target" -set_cover_merge=1 -use_counters=0 -max_len=400 \
            "$project/fuzz/corpus/$target" "$found/$target" 2>&1 | sed -n 's/^MERGE-OUTER: \(.* new files\)/\1/p'
    done
    exit
fi

failed=0
for ((i = 0; i < ${#targets[@]}; i += 2)); do
    processes=()
    for target in "${targets[@]:i:2}"; do
        run "$target" &
        processes+=($!)
    done
    for process in "${processes[@]}"; do
        wait "$process" || failed=1
    done
done
exit $failed
