#!/usr/bin/env bash
# Fails if clang-format would change a source file of the tree. Usage: format.sh <clang-format>, from the top.
set -eu
find src tests examples benchmarks fuzz tools \( -name '*.h' -o -name '*.cpp' \) -print0 2>/dev/null |
    xargs -0 "$1" --dry-run --Werror
