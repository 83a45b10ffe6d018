#!/usr/bin/env bash
# Builds and runs the consumer program in C++17 and in C++20, warnings being errors.
#     consume.sh package      <installed tree> <compiler> <scratch folder>    find_package
#     consume.sh pkg-config   <installed tree> <compiler> <scratch folder>    pkg-config alone
#     consume.sh subdirectory <source tree>    <compiler> <scratch folder>    add_subdirectory
#     consume.sh examples     <installed tree> <compiler> <scratch folder>    builds and runs the installed examples
set -euo pipefail
way=$1 tree=$2 compiler=$3 scratch=$4
consumer=$(cd "$(dirname "$0")/consumer" && pwd)
rm -rf "$scratch"
mkdir -p "$scratch"

libraries=$tree/lib # where the running program must have its libraries from
case $way in
package)
    cmake -S "$consumer" -B "$scratch" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$tree"
    cmake --build "$scratch"
    ;;
subdirectory)
    cmake -S "$consumer" -B "$scratch" -DCMAKE_CXX_COMPILER="$compiler" -DMRCOMMON_SOURCE="$tree"
    cmake --build "$scratch"
    libraries=$scratch/MRCommon/src
    ;;
examples)
    cmake -S "$tree/share/doc/MRCommon/examples" -B "$scratch" -DCMAKE_CXX_COMPILER="$compiler" \
        -DCMAKE_PREFIX_PATH="$tree"
    cmake --build "$scratch" -j2
    ctest --test-dir "$scratch" --output-on-failure --no-tests=error
    exit
    ;;
pkg-config)
    export PKG_CONFIG_LIBDIR=$tree/lib/pkgconfig
    read -ra flags <<<"$(pkg-config --cflags --libs MRCommon)"
    for standard in 17 20; do
        "$compiler" -std=c++$standard -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
            "$consumer/consumer.cpp" "${flags[@]}" -Wl,-rpath,"$libraries" -o "$scratch/consumer_$standard"
    done
    ;;
esac

for standard in 17 20; do
    "$scratch/consumer_$standard"
    for library in MRCommon qn_basic qn_fileio; do
        ldd "$scratch/consumer_$standard" | grep -F "lib$library.so.1 => $libraries/" ||
            { echo "consumer_$standard has lib$library from elsewhere"; exit 1; }
    done
done
