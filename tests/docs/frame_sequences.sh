#!/usr/bin/env bash
# Fails unless docs/frame-names.md shows what the example frame_sequences prints, and what mrcommon-frames prints for
# the folder that the example leaves.
# Usage: frame_sequences.sh <top of the tree> <example frame_sequences> [<mrcommon-frames>]
set -euo pipefail
page=$(cd "$1" && pwd)/docs/frame-names.md
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/p" "$page" | sed '1d;$d'; }
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

"$2" cache > printed
diff -u --label "$page" <(block text) --label "its output" printed
[ $# -eq 3 ] || exit 0

mkdir bin
ln -s "$3" bin/mrcommon-frames
sed -n 's/^\$ //p' <(block console) > commands
[ -s commands ] || { echo "$page shows no command"; exit 1; }
while IFS= read -r command; do
    echo "\$ $command"
    PATH=$folder/bin:$PATH bash -c "$command" || true # a fault that was found is no failure here
done < commands > printed
diff -u --label "$page" <(block console) --label "their output" printed
