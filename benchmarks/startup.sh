#!/usr/bin/env bash
# Measures what the libraries cost before main and a caller's compiler: relocations and their time by the dynamic linker's
# own statistics, static initialisers, the size of the stripped libraries, and the time to compile each heavy header.
# Usage: startup.sh                  BUILD=<folder> and CXX=<compiler> as for the build; 15 runs, medians
set -eu
export LC_ALL=C
cd "$(dirname "$0")/.."
build=${BUILD:-build/release}
cxx=${CXX:-c++}
libraries=(MRCommon qn_basic qn_fileio)
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

for library in "${libraries[@]}"; do
    [ -e "$build/src/lib$library.so" ] || {
        echo "startup.sh: $build/src/lib$library.so is missing: build the libraries first" >&2
        exit 1
    }
done

median() { sort -n | awk '{ value[NR] = $1 } END { print value[int((NR + 1) / 2)] }'; }

# link <name> <flag>...: a program without a line of its own, so that its start-up is that of what it is linked with
link() {
    local name=$1
    shift
    echo 'int main() {}' | "$cxx" -O2 -x c++ - -o "$work/$name" "$@"
}

# statistic <program> <line of the statistics>: the first number after the colon, as the linker prints it
statistic() {
    LD_LIBRARY_PATH="$build/src" LD_BIND_NOW=${3:-} LD_DEBUG=statistics "$work/$1" 2>&1 |
        sed -n "s/.*$2: *\([0-9]*\).*/\1/p" | head -n 1
}

echo "start-up (linker's statistics)       relocations   cycles, lazy    cycles, bound at start"
link empty
linked=(-L"$build/src" -Wl,--no-as-needed -lMRCommon -lqn_basic -lqn_fileio)
link linked "${linked[@]}"
for program in empty linked; do
    cycles() { for _ in $(seq 15); do statistic "$program" 'total startup time in dynamic loader' "${1:-}"; done | median; }
    printf '%-36s %11s %14s %25s\n' "$program" "$(statistic "$program" 'number of relocations')" "$(cycles)" "$(cycles 1)"
done

echo
echo "library             stripped bytes   relocations   by name   initialisers"
for library in "${libraries[@]}"; do
    file="$build/src/lib$library.so"
    strip -o "$work/stripped" "$file"
    all=$(readelf -rW "$file" | grep -c R_ || true)
    byName=$(readelf -rW "$file" | grep R_ | grep -vc RELATIVE || true)
    entries=$(readelf -SW "$file" | sed -n 's/.* \.init_array *INIT_ARRAY *[0-9a-f]* [0-9a-f]* \([0-9a-f]*\) .*/\1/p')
    printf '%-19s %14s %13s %9s %14s\n' "$library" "$(stat -c %s "$work/stripped")" "$all" "$byName" \
        "$((16#${entries:-0} / 8 - 1))" # one belongs to the compiler
done

echo
echo "header, compiled alone                            lines   milliseconds of the processor"
for header in "" string MRCommon/basic/QN_String.h MRCommon/math/Quat.h MRCommon/properties/Ppty.h \
    MRCommon/properties/MetaClasses.h MRCommon/properties/PropertyFile.h MRCommon/system/ByteId.h \
    MRCommon/text/StringTools.h MRCommon/frames/FileNameStitcher.h MRCommon/MRCommon.h; do
    { [ -z "$header" ] || echo "#include <$header>"; } > "$work/header.cpp"
    command=("$cxx" -std=c++17 -Isrc "$work/header.cpp")
    TIMEFORMAT='%3U'
    milliseconds=$(for _ in 1 2 3; do
        { time "${command[@]}" -fsyntax-only; } 2>&1 | sed 's/[.]//; s/^0*\([0-9]\)/\1/'
    done | median)
    printf '%-46s %8s %14s\n' "${header:-(none)}" "$("${command[@]}" -E -P | wc -l)" "$milliseconds"
done
