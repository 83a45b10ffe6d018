#!/usr/bin/env bash
# Fails if a page links to a file that does not exist. Usage: links.sh <folder>
set -euo pipefail
cd "$1"
pages=$(find . -name '*.md' -not -path './build/*')
[ "$(wc -l <<<"$pages")" -ge 8 ] || { echo "too few pages: $pages"; exit 1; }
failed=0
while read -r page; do
    while read -r target; do
        [ -e "$(dirname "$page")/$target" ] || { echo "$page: no such file: $target"; failed=1; }
    done < <(grep -oE '\]\([^)#:]+' "$page" | cut -c3-)
done <<<"$pages"
exit $failed
