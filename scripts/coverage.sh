#!/usr/bin/env bash
# Prints how much of src/ the quick tests reach, and the lines that none reaches.
#     scripts/coverage.sh                 builds the preset coverage, runs its tests, counts lines and branches
#     scripts/coverage.sh conditions      also the conditions (MC/DC) that the test programs decide; needs Clang 19
# The exit status is 1 if less than 99 % of the lines or 96 % of the branches are reached, or if a line is neither reached
# nor listed with its reason in scripts/coverage/exceptions.json.
set -euo pipefail
cd "$(dirname "$0")/.."

need() { # need <command>...
    for command in "$@"; do
        command -v "$command" >/dev/null || { echo "coverage.sh: $command is missing; see scripts/install-missing.sh coverage" >&2; exit 1; }
    done
}
need cmake ninja gcovr
[ $# -eq 0 ] || need clang++-19 llvm-profdata-19 llvm-cov-19

build=build/coverage
cmake --preset coverage
cmake --build "$build"
find "$build" -name '*.gcda' -delete
ctest --preset coverage --quiet --exclude-regex '^(shuffled|unprivileged|lint|docs)\.'
# Branches that only exceptions take are left out: the compiler adds one to nearly every call.
gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches --json "$build/coverage.json" "$build"
status=0
python3 scripts/coverage/report.py "$build/coverage.json" || status=1

if [ "${1:-}" = conditions ]; then
    build=build/conditions
    flags="-O0 -g1 -fprofile-instr-generate -fcoverage-mapping -fcoverage-mcdc"
    cmake -S . -B "$build" -G Ninja -D CMAKE_CXX_COMPILER=clang++-19 -D CMAKE_BUILD_TYPE=None -D CMAKE_CXX_FLAGS="$flags" \
        -D MRCOMMON_WERROR=OFF -D MRCOMMON_INSTALL=OFF \
        -DMRCOMMON_BUILD_{EXAMPLES,BENCHMARKS,FUZZERS,TOOLS,DOCS}=OFF
    mapfile -t programs < <(ninja -C "$build" -t targets all | sed -n 's/^tests\/\(\w*_test\): CXX_EXECUTABLE.*/\1/p')
    cmake --build "$build" --target "${programs[@]}"
    rm -rf "$build/profiles"
    for program in "${programs[@]}"; do
        (cd "$build/tests" && LLVM_PROFILE_FILE="../profiles/$program-%p.profraw" "./$program" --gtest_brief=1 >/dev/null)
    done
    llvm-profdata-19 merge -o "$build/profile" "$build"/profiles/*.profraw
    objects=()
    for object in "$build"/src/lib*.so "${programs[@]/#/$build/tests/}"; do objects+=(-object "$object"); done
    llvm-cov-19 export -summary-only -instr-profile "$build/profile" "${objects[@]:1}" -ignore-filename-regex '/(tests|include)/' |
        python3 -c 'import json, sys
for what, found in json.load(sys.stdin)["data"][0]["totals"].items():
    if what in ("lines", "branches", "mcdc"):
        print("Clang: {covered} of {count} {}: {percent:.1f} %".format(what, **found))'
fi
exit $status
