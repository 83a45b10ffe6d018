#!/usr/bin/env bash
# Runs all fuzz targets in turn and prints the executions and new paths of each.
#     fuzz.sh MINUTES        for so many minutes together, each target for the same share
# What they find beyond the seeds is kept in build/found and used again by the next run. An input that fails is
# build/found/<target>-crash-..., and makes the exit status 1; keep it in fuzz/corpus/<target> as "failed-..." with
# what corrects it.
set -euo pipefail
cd "$(dirname "$0")/.."

minutes=${1:-}
[[ $minutes =~ ^[1-9][0-9]*$ ]] || { echo "usage: fuzz.sh MINUTES" >&2; exit 2; }

mkdir -p build
cmake --preset fuzz >build/fuzz-configure.log || { cat build/fuzz-configure.log >&2; exit 1; }
cmake --build --preset fuzz
# Short call stacks of allocations, a small quarantine and inputs that are not weighted by rarity: so more of them run
# in the same time.
export ASAN_OPTIONS=malloc_context_size=2:quarantine_size_mb=16
shopt -s nullglob
targets=()
for folder in fuzz/corpus/*/; do targets+=("$(basename "$folder")"); done
seconds=$((minutes * 60 / ${#targets[@]}))
[ "$seconds" -gt 0 ] || seconds=1

status=0 all_runs=0
for target in "${targets[@]}"; do
    found=build/found/$target log=build/found/$target.log
    mkdir -p "$found"
    result=passed
    # SIGTERM: the programs under test take over SIGINT.
    timeout --foreground $((seconds + 120)) "build/fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -entropic=0 \
        -dict=fuzz/integers.dict -max_len=4096 -rss_limit_mb=1024 -malloc_limit_mb=512 -timeout=20 \
        -print_final_stats=1 -artifact_prefix="build/found/$target-" \
        "$found" "fuzz/corpus/$target" >"$log" 2>&1 || result=FAILED
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    new=$(sed -n 's/^stat::new_units_added: *//p' "$log")
    printf '%-16s %10s executions %6s new paths  %s\n' "$target" "${runs:-?}" "${new:-?}" "$result"
    all_runs=$((all_runs + ${runs:-0}))
    if [ "$result" = FAILED ]; then
        status=1
        grep -m 3 -E 'does not hold|ERROR|SUMMARY' "$log" >&2 || tail -n 3 "$log" >&2
    fi
done
echo "$all_runs executions"
exit $status
