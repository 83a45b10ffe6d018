#!/usr/bin/env bash
# Fails when a library no longer offers a symbol that plug-ins of a release were linked against.
# Usage: release.sh <symbols.txt> <library>...
set -euo pipefail
wanted=$1
shift
offered=$(mktemp)
trap 'rm -f "$offered"' EXIT
for library in "$@"; do nm -D --defined-only "$library"; done | awk '{print $NF}' | sort -u > "$offered"
[ "$(wc -l < "$wanted")" -ge 50 ] || { echo "$wanted lists too little to be a release's list" >&2; exit 1; }
missing=$(comm -23 <(sort -u "$wanted") "$offered" | c++filt)
[ -z "$missing" ] && exit 0
printf 'no longer offered:\n%s\n' "$missing" >&2
exit 1
