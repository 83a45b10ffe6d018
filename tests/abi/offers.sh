#!/usr/bin/env bash
# Fails if the libraries no longer export a symbol that plug-ins of a release were linked with.
# Usage: offers.sh <symbols.txt> <library>...
set -euo pipefail
wanted=$1
shift
offered=$(mktemp)
trap 'rm -f "$offered"' EXIT
for library in "$@"; do nm -D --defined-only "$library"; done | awk '{print $NF}' | sort -u > "$offered"
[ "$(wc -l < "$wanted")" -ge 50 ] || { echo "$wanted is too short to be the list of a release" >&2; exit 1; }
missing=$(comm -23 <(sort -u "$wanted") "$offered" | c++filt)
[ -z "$missing" ] && exit 0
printf 'no longer exported:\n%s\n' "$missing" >&2
exit 1
