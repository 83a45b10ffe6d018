#!/usr/bin/env bash
# Fails if the libraries no longer export a symbol that the plug-in of a release was linked with.
#     offers.sh <symbols.txt> <library>...
#     offers.sh --record <plug-in> <symbols.txt> <library>...     writes the list, once, when the release is made
set -euo pipefail
plugin=
[ "$1" != --record ] || { plugin=$2; shift 2; }
wanted=$1
shift
export LC_ALL=C
offered=$(for library in "$@"; do nm -D --defined-only "$library"; done | awk '{print $NF}' | sort -u)
[ -z "$plugin" ] || comm -12 <(nm -D --undefined-only "$plugin" | awk '{print $NF}' | sort -u) - <<<"$offered" >"$wanted"
[ "$(wc -l <"$wanted")" -ge 50 ] || { echo "$wanted is too short to be the list of a release" >&2; exit 1; }
missing=$(comm -23 <(sort -u "$wanted") - <<<"$offered" | c++filt)
[ -z "$missing" ] && exit 0
printf 'no longer exported:\n%s\n' "$missing" >&2
exit 1
