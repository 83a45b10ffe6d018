#!/usr/bin/env bash
# Compiles every public header by itself, warnings being errors, and compares the list of installed headers with the tree.
#     headers.sh <src> "<installed header>..." <compiler> [<flag>...]
set -euo pipefail
cd "$1"
read -ra installed <<<"$2"
shift 2
failed=0
complain() { echo "$*"; failed=1; }

# Included by a line, as callers do: compilers warn about a header that is the main file.
includes() { "$@" -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -I. -x c++ - <<<"#include <$header>"; }

listed=$(printf '%s\n' "${installed[@]}" | LC_ALL=C sort)
public=$(find . -name '*.h' ! -path '*/detail/*' | sed 's,^\./,,')
reached=$("$@" -MM -I. MRCommon/MRCommon.h | tr -s ' \\' '\n' | grep '\.h$' | LC_ALL=C sort -u)
diff -u --label "headers that src/CMakeLists.txt installs" --label "headers that MRCommon.h includes" \
    - <(echo "$reached") <<<"$listed" || complain "the list and MRCommon.h must name the same headers"
while read -r header; do
    grep -qxF "$header" <<<"$listed" || complain "src/CMakeLists.txt does not install the public header $header"
    includes "$@" || complain "$header does not compile by itself"
done <<<"$public"

header=MRCommon/MRCommon.h
for flag in -fno-rtti -fno-exceptions; do
    grep -qF "MRCommon needs exceptions and run-time type information" <<<"$(includes "$@" $flag 2>&1)" ||
        complain "a caller with $flag is not told that it cannot work"
done
exit $failed
