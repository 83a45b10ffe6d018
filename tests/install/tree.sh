#!/usr/bin/env bash
# Installs the build, moves the tree to <moved tree> and examines it: the list of files, the links of the pages, the
# SONAMEs and run paths, and that no file contains a path of the build machine.
#     tree.sh [--update] <build folder> <source folder> <moved tree>       --update rewrites files.txt
set -euo pipefail
update=
[ "$1" != --update ] || { update=yes; shift; }
build=$1 source=$2 tree=$3
here=$(cd "$(dirname "$0")" && pwd)
list=$here/files.txt
fail() { echo "$*"; exit 1; }

rm -rf "$tree" "$tree.first"
cmake --install "$build" --prefix "$tree.first" >/dev/null
mv "$tree.first" "$tree"

# The list does not name the manual and the Python module, which are installed only if they were made.
installed=$(cd "$tree" && find . ! -type d ! -path '*/doc/MRCommon/html/*' ! -path './lib/python*' | sed 's,^\./,,' | LC_ALL=C sort)
[ -z "$update" ] || echo "$installed" >"$list"
diff -u --label files.txt --label installed "$list" - <<<"$installed" ||
    fail "the installed files differ from tests/install/files.txt; if intentional, build the target update_lists"

"$here/../docs/links.sh" "$tree/share/doc/MRCommon"

for library in MRCommon qn_basic qn_fileio; do
    dynamic=$(readelf -d "$tree/lib/lib$library.so")
    grep -qE "SONAME.*\[lib$library\.so\.[0-9]+\]" <<<"$dynamic" || fail "lib$library has no numbered SONAME"
    grep -qF 'Library runpath: [$ORIGIN]' <<<"$dynamic" || fail "lib$library does not search its own folder"
done

for place in "$build" "$source" "$tree.first"; do
    ! grep -rlF "$place" "$tree" || fail "the files above contain the path $place"
done
