#!/usr/bin/env bash
# Builds and runs programs that use the library. The consumer program is built in C++17 and C++20, warnings being errors.
#     consume.sh package      <installed tree> <compiler> <scratch folder>    consumer, with find_package
#     consume.sh pkg-config   <installed tree> <compiler> <scratch folder>    consumer, with pkg-config only
#     consume.sh subdirectory <source tree>    <compiler> <scratch folder>    consumer, embeds the library and installs it
#     consume.sh examples     <installed tree> <compiler> <scratch folder>    the installed examples
#     consume.sh unloading    <installed tree> <compiler> <scratch folder>    pairs of plug-ins
set -euo pipefail
way=$1 tree=$2 compiler=$3 scratch=$4
here=$(cd "$(dirname "$0")" && pwd)
consumer=$here/consumer
rm -rf "$scratch"
mkdir -p "$scratch"

# Builds the project and runs its tests.
run_tests_of() {
    cmake -S "$1" -B "$scratch" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$tree"
    cmake --build "$scratch" -j2
    ctest --test-dir "$scratch" --output-on-failure --no-tests=error
}

programs=$scratch
libraries=$tree/lib # where the running program must find its libraries
case $way in
package)
    cmake -S "$consumer" -B "$scratch" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$tree"
    cmake --build "$scratch"
    ;;
subdirectory)
    cmake -S "$consumer" -B "$scratch" -DCMAKE_CXX_COMPILER="$compiler" -DMRCOMMON_SOURCE="$tree"
    cmake --build "$scratch"
    cmake --install "$scratch" --prefix "$scratch/installed"
    rm "$scratch"/MRCommon/src/*.so*
    programs=$scratch/installed/bin
    libraries=$programs/../lib
    ;;
examples)
    run_tests_of "$tree/share/doc/MRCommon/examples"
    exit
    ;;
unloading)
    run_tests_of "$here/unloading"
    exit
    ;;
pkg-config)
    export PKG_CONFIG_LIBDIR=$tree/lib/pkgconfig
    read -ra flags <<<"$(pkg-config --cflags --libs MRCommon)"
    for standard in 17 20; do # the flags ask for C++17; the last -std counts
        "$compiler" "$consumer/consumer.cpp" "${flags[@]}" -std=c++$standard -Wall -Wextra -Wpedantic -Wconversion \
            -Wshadow -Werror -Wl,-rpath,"$libraries" -o "$scratch/consumer_$standard"
    done
    ;;
esac

for standard in 17 20; do
    "$programs/consumer_$standard"
    for library in MRCommon qn_basic qn_fileio; do
        ldd "$programs/consumer_$standard" | grep -F "lib$library.so.1 => $libraries/" ||
            { echo "consumer_$standard uses another lib$library"; exit 1; }
    done
done
