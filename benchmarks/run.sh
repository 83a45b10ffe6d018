#!/usr/bin/env bash
# Builds and runs every benchmark program, prints one table and writes it as JSON: all ratios are ours / fastest peer.
# Installs nothing: a peer that is not installed is left out, which the table says.
# Usage: run.sh [JSON file] [option of Google Benchmark...]         (build/benchmarks.json by default)
#        BUILD=<folder> chooses the build folder, CPUS=<list> the processors (0 by default; empty for all)
set -eu
cd "$(dirname "$0")/.."
case "${1:-}" in
    '' | -*) json=build/benchmarks.json ;;
    *) json=$1; shift ;;
esac
build=${BUILD:-build/release}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DMRCOMMON_BUILD_BENCHMARKS=ON > "$build.log" 2>&1 || {
    cat "$build.log" >&2
    exit 1
}
grep 'is missing' "$build.log" || true
rm "$build.log"
cmake --build "$build" --target benchmarks > /dev/null || {
    echo "run.sh: the benchmarks were not built: is Google Benchmark installed?" >&2
    exit 1
}
pin=()
if [ -n "${CPUS-0}" ] && command -v taskset > /dev/null; then pin=(taskset -c "${CPUS-0}"); fi
parts=$(mktemp -d)
trap 'rm -r "$parts"' EXIT
for program in "$build"/benchmarks/bench_*; do
    [ -x "$program" ] || continue
    "${pin[@]}" "$program" --json="$parts/${program##*/bench_}.json" "$@"
    echo
done
{
    echo '['
    separator=
    for part in "$parts"/*.json; do
        printf '%s' "$separator"
        cat "$part"
        separator=,
    done
    echo ']'
} > "$json"
echo "written to $json"
