#!/usr/bin/env bash
# Builds the library and fingerprint.cpp with other compilers, optimisations, signs of plain char and for other
# machines, and compares what the programs print with what the libraries of a release build with GCC give. A variant whose
# compiler or emulator is missing is skipped with a line.
#     fingerprint.sh SOURCE-FOLDER LIBRARY-FOLDER
# Texts, records and arithmetic must agree everywhere. What depends on the platform's libm must agree among the
# variants of this machine only.
set -euo pipefail
source=$1 libraries=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

options=(-std=c++17 -I"$source/src" -I"$source/tests" -ffp-contract=off -pthread) # as the libraries are compiled
# All that the fingerprint calls.
mapfile -t files < <(find "$source/src" -name '*.cpp' ! -name 'LibLoader.cpp' ! -name 'PropertyFile.cpp' \
    ! -name 'AtomicFile.cpp' ! -name 'RecordCheck.cpp' ! -name 'RecordBytes.cpp')
files+=("$source/tests/portability/fingerprint.cpp")

# variant <name> <emulator or ""> <compiler> [<option>...]: prints into $scratch/<name>.txt
variants=()
variant() {
    local name=$1 emulator=$2
    shift 2
    for command in "$1" ${emulator:+"${emulator%% *}"}; do
        command -v "$command" >/dev/null || { echo "$name: skipped, $command is missing"; return; }
    done
    local folder=$scratch/$name
    mkdir "$folder"
    printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -I '{}' sh -c \
        'file=$1 folder=$2; shift 2; "$@" -c "$file" -o "$folder/$(echo "$file" | tr / _).o"' \
        - '{}' "$folder" "$@" "${options[@]}"
    "$@" "$folder"/*.o -o "$folder/fingerprint" -pthread -ldl
    $emulator "$folder/fingerprint" >"$scratch/$name.txt"
    variants+=("$name")
    echo "$name: $(tail -n 1 "$scratch/$name.txt")"
}

g++ -O3 "${options[@]}" "${files[-1]}" -o "$scratch/release" -L"$libraries" -Wl,-rpath,"$libraries" \
    -lMRCommon -lqn_basic -lqn_fileio
"$scratch/release" >"$scratch/release.txt"
variants+=(release)
variant gcc-O0-unsigned-char "" g++ -O0 -funsigned-char
variant clang-O2 "" clang++ -O2
variant aarch64-O1 "qemu-aarch64 -L /usr/aarch64-linux-gnu" aarch64-linux-gnu-g++ -O1
variant s390x-O1 "qemu-s390x -L /usr/s390x-linux-gnu" s390x-linux-gnu-g++ -O1
[ ${#variants[@]} -gt 1 ] || { echo "nothing to compare" >&2; exit 1; }

status=0
first=${variants[0]}
for name in "${variants[@]:1}"; do
    parts='texts|records|arithmetic'
    [[ $name == aarch64-* || $name == s390x-* ]] || parts+='|libm'
    diff <(grep -E "^($parts) " "$scratch/$first.txt") <(grep -E "^($parts) " "$scratch/$name.txt") ||
        { echo "$name differs from $first" >&2; status=1; }
done
for part in texts records arithmetic; do # a part that is missing everywhere would agree, too
    grep -q "^$part [0-9a-f]\{16\}$" "$scratch/$first.txt" || { echo "no $part" >&2; status=1; }
done
sed "s/^/$first: /" "$scratch/$first.txt"
exit $status
