#!/usr/bin/env bash
# Compiles every public header by itself, warnings being errors, and fails on one that MRCommon.h forgets.
#     headers.sh <src> <compiler> [<flag>...]
set -euo pipefail
cd "$1"
shift
headers=$(find . -name '*.h' ! -path '*/detail/*' | sed 's,^\./,,')
[ "$(wc -l <<<"$headers")" -ge 10 ] || { echo "this is not the source tree"; exit 1; }

reached=$("$@" -MM -I. MRCommon/MRCommon.h)
failed=0
while read -r header; do
    # Included by a line, as a caller would: compiled itself, a header is warned of being the main file.
    "$@" -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -I. -x c++ - <<<"#include <$header>" ||
        { echo "$header does not stand on its own"; failed=1; }
    grep -qF "$header" <<<"$reached" || { echo "MRCommon.h does not bring $header along"; failed=1; }
done <<<"$headers"
exit $failed
