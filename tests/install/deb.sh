#!/usr/bin/env bash
# Makes the Debian packages, unpacks them into a clean root, and builds a consumer with the result.
#     deb.sh <build folder> <compiler> <scratch folder>
set -euo pipefail
build=$1 compiler=$2 scratch=$3
here=$(cd "$(dirname "$0")" && pwd)
fail() { echo "$*"; exit 1; }

rm -rf "$scratch"
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$scratch/packages"
packages=("$scratch"/packages/*.deb)
[ ${#packages[@]} -eq 4 ] || fail "expected four packages: ${packages[*]}"
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
    *) fail "unexpected package $name" ;;
    esac
    dpkg-deb -x "$package" "$scratch/root"
done

# Together the packages contain exactly the files of an installation.
diff -u --label files.txt --label packages "$here/files.txt" \
    <(cd "$scratch/root/usr" && find . ! -type d | sed 's,^\./,,' | LC_ALL=C sort)

"$here/consume.sh" package "$scratch/root/usr" "$compiler" "$scratch/consumer"
"$here/consume.sh" pkg-config "$scratch/root/usr" "$compiler" "$scratch/consumer"
