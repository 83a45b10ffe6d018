#!/usr/bin/env bash
# Fails if a public header has no example program, or if that is not built or does not include the header.
# Usage: examples.sh <top of the tree> <folder of the built examples>
set -eu
cd "$1"
failed=0
headers=$(cd src && find . -name '*.h' -not -path '*/detail/*' | sed 's,^\./,,')
[ "$(wc -l <<< "$headers")" -ge 50 ] || { echo "only ${headers} found"; exit 1; }
for header in $headers; do
    name=$(basename "$header" .h)
    if ! grep -qsF "#include <$header>" "examples/headers/$name.cpp"; then
        echo "$header: examples/headers/$name.cpp does not show it"
        failed=1
    elif [ ! -x "$2/example_$name" ]; then
        echo "examples/headers/$name.cpp: not built"
        failed=1
    fi
done
exit $failed
