#!/usr/bin/env bash
# Builds the libraries, tools and manual hardened, makes the Debian packages, unpacks them into a clean root, follows the
# manual's links and builds a consumer with the result.
#     deb.sh <source folder> <compiler> <scratch folder>
set -euo pipefail
source=$1 compiler=$2 scratch=$3
here=$(cd "$(dirname "$0")" && pwd)
fail() { echo "$*"; exit 1; }

rm -rf "$scratch"
cmake --preset hardened -S "$source" -B "$scratch/build" -D CMAKE_CXX_COMPILER="$compiler" -D MRCOMMON_BUILD_TESTS=OFF \
    -D MRCOMMON_BUILD_BENCHMARKS=OFF -D MRCOMMON_BUILD_FUZZERS=OFF \
    -D MRCOMMON_BUILD_PYTHON=AUTO -D Python3_EXECUTABLE=/usr/bin/python3
cmake --build "$scratch/build" --target all manual
cpack -G DEB --config "$scratch/build/CPackConfig.cmake" -B "$scratch/packages"
packages=("$scratch"/packages/*.deb)
modules=0 # the Python module is packed if it was made
[ ! -d "$scratch/build/python/mrcommon" ] || modules=1
[ ${#packages[@]} -eq $((4 + modules)) ] || fail "expected $((4 + modules)) packages: ${packages[*]}"
for package in "${packages[@]}"; do
    name=$(dpkg-deb -f "$package" Package)
    depends=$(dpkg-deb -f "$package" Depends)
    case $name in
    libmrcommon[0-9]*)
        [[ $depends == *libc6* && $depends == *libstdc++6* ]] || fail "$name depends on: $depends"
        [ "$(dpkg-deb --ctrl-tarfile "$package" | tar -xO ./shlibs | wc -l)" -ge 3 ] || fail "$name lacks shlibs"
        ;;
    libmrcommon-dev | mrcommon-tools) [[ $depends == libmrcommon[0-9]*" (= "* ]] || fail "$name depends on: $depends" ;;
    libmrcommon-doc) ;;
    python3-mrcommon)
        [[ $depends == *"libmrcommon"* && $depends == *"python3 (>= 3."* && $depends == *python3-numpy* ]] ||
            fail "$name depends on: $depends"
        ;;
    *) fail "unexpected package $name" ;;
    esac
    dpkg-deb -x "$package" "$scratch/unpacked"
done

if [ "$modules" -eq 1 ]; then
    PYTHONPATH=$scratch/unpacked/usr/lib/python3/dist-packages /usr/bin/python3 -B -c \
        'import mrcommon, sys; sys.exit(not mrcommon.__file__.startswith(sys.argv[1]) or mrcommon.PptyInt("a", 7).value != 7)' \
        "$scratch/unpacked" || fail "the unpacked module does not work"
fi

# The manual is packed with its picture and the pages of the programs.
manual=$scratch/unpacked/usr/share/doc/MRCommon/html
for file in index.html sheet.png mrcommon-records.1.html; do
    [ -s "$manual/$file" ] || fail "libmrcommon-doc lacks html/$file"
done
python3 "$here/../docs/manual_links.py" "$manual"

# What is packed is hardened. `grep -q` would end before nm has written everything, which then counts as failed.
for file in "$scratch"/unpacked/usr/lib/libMRCommon.so.*.* "$scratch"/unpacked/usr/bin/*; do
    for symbol in __stack_chk_fail __glibcxx_assert_fail; do
        nm -D "$file" | grep "$symbol" >/dev/null || fail "$file is built without $symbol"
    done
    readelf -d "$file" | grep BIND_NOW >/dev/null || fail "$file binds symbols late"
done

# Together the packages contain exactly the files of an installation.
diff -u --label files.txt --label packages "$here/files.txt" \
    <(cd "$scratch/unpacked/usr" && find . ! -type d ! -path './lib/python*' ! -path './share/doc/MRCommon/html/*' | sed 's,^\./,,' | LC_ALL=C sort)

"$here/consume.sh" package "$scratch/unpacked/usr" "$compiler" "$scratch/consumer"
"$here/consume.sh" pkg-config "$scratch/unpacked/usr" "$compiler" "$scratch/consumer"
