#!/usr/bin/env bash
# One command on a fresh machine: installs what is missing, builds, runs all tests.
#     scripts/test.sh                 the presets asan and release, the slow checks with the latter: Valgrind,
#                                     clang-tidy, each header by itself, the types behind the exported symbols
#     scripts/test.sh clang tsan      just these presets of CMakePresets.json
# The last line counts the tests of all presets together. Any failure makes the exit status non-zero.
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -gt 0 ] || set -- asan release

scripts/install-missing.sh build test
log=$(mktemp)
trap 'rm -f "$log"' EXIT

passed=0 failed=0 status=0
for preset in "$@"; do
    echo "== $preset"
    cmake --preset "$preset"
    cmake --build --preset "$preset"
    # Not by the test preset, which leaves the slow checks out.
    ctest --test-dir "build/$preset" -j"$(nproc)" --output-on-failure --no-tests=error | tee "$log" || status=1
    # "98% tests passed, 2 tests failed out of 120"
    summary=$(grep -E '^[0-9]+% tests passed' "$log") || { echo "no tests ran in the preset $preset" >&2; exit 1; }
    read -r bad all <<<"$(sed -E 's/.* ([0-9]+) tests? failed out of ([0-9]+)$/\1 \2/' <<<"$summary")"
    passed=$((passed + all - bad)) failed=$((failed + bad))
done
echo "$passed passed, $failed failed"
exit $status
