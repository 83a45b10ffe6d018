#!/usr/bin/env bash
# Builds and runs every benchmark program, prints one table and writes it as JSON: all ratios are ours / fastest peer.
# Each program shows its own part on the standard error as soon as it has it, and which peers it leaves out, since they
# are not installed. Installs nothing.
# Usage: run.sh [JSON file] [option of Google Benchmark...]         (build/benchmarks.json by default)
#        BUILD=<folder> chooses the build folder, CPUS=<list> the processors (0 by default; empty for all)
set -eu
cd "$(dirname "$0")/.."
case "${1:-}" in
    '' | -*) json=build/benchmarks.json ;;
    *) json=$1; shift ;;
esac
build=${BUILD:-build/release}
parts=$(mktemp -d)
trap 'rm -r "$parts"' EXIT
cmake --preset release -B "$build" -DMRCOMMON_BUILD_BENCHMARKS=ON > "$parts/log" 2>&1 || {
    cat "$parts/log" >&2
    exit 1
}
grep 'is missing, bench\|Benchmark is missing' "$parts/log" >&2 || true
cmake --build "$build" --target benchmarks > "$parts/log" || {
    cat "$parts/log" >&2
    echo "run.sh: the benchmarks were not built: is Google Benchmark installed?" >&2
    exit 1
}
pin=()
if [ -n "${CPUS-0}" ] && command -v taskset > /dev/null; then pin=(taskset -c "${CPUS-0}"); fi
for program in "$build"/benchmarks/bench_*; do
    [ -x "$program" ] || continue
    "${pin[@]}" "$program" --json="$parts/${program##*/bench_}.json" "$@" >&2
    echo >&2
done
{
    compiler=$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$build/CMakeCache.txt")
    printf '{"date": "%s",\n' "$(date +%F)"
    printf ' "processor": "%s",\n' "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)"
    printf ' "compiler": "%s",\n' "$("$compiler" --version | head -n 1)"
    printf ' "themes": [\n'
    separator=
    for part in "$parts"/*.json; do
        printf '%s' "$separator"
        cat "$part"
        separator=,
    done
    echo ']}'
} > "$json"
benchmarks/tables.py "$json"
echo "written to $json"
