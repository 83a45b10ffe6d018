#!/usr/bin/env bash
# Compares the types of the exported symbols (sizes, offsets, virtual slots, parameters) with baseline/.
#     types.sh [--update] <source folder> <scratch folder> <compiler> <library file>...
#                                             --update rewrites the baseline
#
# Types can only be read from debug information, which the release libraries lack. So a second build is made, with -g
# and without optimisation, so that the result does not depend on what was inlined. Its libraries export only the
# symbols that symbols.sh compares in the given release libraries; the weak inline ones would come and go with every
# change of a body.
set -euo pipefail
update=
[ "$1" != --update ] || { update=yes; shift; }
source=$1 scratch=$2 compiler=$3
shift 3
here=$(cd "$(dirname "$0")" && pwd)

mkdir -p "$scratch"
symbols=$("$here/symbols.sh" --mangled "$@")
printf '{ global:\n%s\nlocal: *; };\n' "$(sed 's/$/;/' <<<"$symbols")" >"$scratch/exported.map"
options=(-DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=None
    -DCMAKE_CXX_FLAGS="-O0 -g -ffile-prefix-map=$source=."
    -DCMAKE_SHARED_LINKER_FLAGS="-Wl,--version-script=$scratch/exported.map")
for option in TESTS EXAMPLES BENCHMARKS FUZZERS TOOLS DOCS; do options+=("-DMRCOMMON_BUILD_$option=OFF"); done
cmake -S "$source" -B "$scratch" "${options[@]}" >/dev/null
rm -f "$scratch"/src/*.so* # link again, since the list of symbols may have changed
cmake --build "$scratch" -j2

failed=0
for library in "$@"; do
    name=$(basename "$library")
    name=${name%%.so*}
    baseline=$here/baseline/$name.abi
    now=$scratch/$name.abi
    abidw --no-architecture --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed \
        --drop-undefined-syms --no-parameter-names --no-write-default-sizes --exported-interfaces-only \
        --type-id-style hash --headers-dir "$source/src" --drop-private-types \
        --out-file "$now" "$scratch/src/$name.so"
    if [ -n "$update" ]; then
        mkdir -p "$here/baseline"
        cp "$now" "$baseline"
    fi
    abidiff --no-show-locs --suppressions "$here/internal.abignore" "$baseline" "$now" || { echo "$name: its ABI changed, see docs/abi.md"; failed=1; }
done
exit $failed
