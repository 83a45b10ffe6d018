#!/usr/bin/env bash
# One command on a fresh machine: installs what is missing, builds, runs all tests.
#     scripts/test.sh                 the presets asan and release, both with the Python module, the latter with the
#                                     slow checks (clang-tidy, each header by itself, the types of the exported
#                                     symbols); a build of the libraries, tools and examples with Clang; and the tests
#                                     of threads with the thread sanitizer
#     scripts/test.sh clang tsan      only these presets of CMakePresets.json
# Tests with the label "nightly" are left out (Valgrind, the Debian packages, a browser): see nightly.sh.
# With LABELS=nightly in the environment only those run. If ccache is installed, it is used.
# The last line counts the tests of all presets together. Any failure makes the exit status non-zero.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-missing.sh build test python python-test
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
fi
select=(-LE nightly)
[ -z "${LABELS:-}" ] || select=(-L "$LABELS")
log=$(mktemp)
trap 'rm -f "$log"' EXIT

threads=no
if [ $# -eq 0 ]; then
    set -- asan release
    threads=yes
    echo "== clang, without tests"
    cmake --preset clang -B build/clang-only -D MRCOMMON_BUILD_TESTS=OFF -D MRCOMMON_BUILD_BENCHMARKS=OFF \
        -D MRCOMMON_BUILD_FUZZERS=OFF
    cmake --build build/clang-only
fi

passed=0 failed=0 status=0
run_tests() { # run_tests <preset> [<ctest option>...]
    local preset=$1 summary bad all
    # The test preset would leave out the slow checks.
    ctest --test-dir "build/$preset" -j"$(nproc)" --output-on-failure --no-tests=error "${select[@]}" "${@:2}" | tee "$log" || status=1
    # "98% tests passed, 2 tests failed out of 120"
    summary=$(grep -E '^[0-9]+% tests passed' "$log") || { echo "no tests ran in the preset $preset" >&2; exit 1; }
    read -r bad all <<<"$(sed -E 's/.* ([0-9]+) tests? failed out of ([0-9]+)$/\1 \2/' <<<"$summary")"
    passed=$((passed + all - bad)) failed=$((failed + bad))
}

if [ "$threads" = yes ]; then
    echo "== tsan, the tests of threads"
    cmake --preset tsan
    cmake --build --preset tsan --target Threads_test
    run_tests tsan -R '^Threads\.'
fi
for preset in "$@"; do
    echo "== $preset"
    options=()
    case $preset in
    asan | release)
        options=(-D MRCOMMON_BUILD_PYTHON=ON -D Python3_EXECUTABLE=/usr/bin/python3 -D MRCOMMON_BUILD_BENCHMARKS=OFF)
        ;;
    esac
    cmake --preset "$preset" "${options[@]}"
    cmake --build --preset "$preset"
    run_tests "$preset"
done
echo "$passed passed, $failed failed"
exit $status
