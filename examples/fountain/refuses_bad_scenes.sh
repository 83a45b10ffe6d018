#!/usr/bin/env bash
# The example host tells what is wrong in one line with file and line, exits with 2 and leaves no file behind.
# Usage: refuses_bad_scenes.sh <fountain>
set -u
fountain=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0

# refuses <expected message> <scene line>
refuses() {
    printf '# a comment\n\nPptyInt good 1\n%s\n' "$2" > "$folder/bad.scene"
    message=$("$fountain" "$folder/bad.scene" "$folder/out" 2>&1 >/dev/null)
    status=$?
    if [ "$message" != "$folder/bad.scene:4: $1" ] || [ $status -ne 2 ] || [ -e "$folder/out" ]; then
        printf 'line:     %s\nexpected: %s\ngot:      %s (exit status %d)\n' "$2" "$1" "$message" $status
        failed=1
    fi
}

refuses 'there is no property class PptyFlaot' 'PptyFlaot gravity -9.81'
refuses 'there is no property class QN_Class' 'QN_Class root 1'
refuses 'a property needs a class name, a name and a value' 'PptyFloat'
refuses 'the value lacks a number' 'PptyFloat gravity'
refuses '"9,81" is not a number' 'PptyFloat gravity 9,81'
refuses '"99999999999" is too large for this kind' 'PptyInt n 99999999999'
refuses '"5" is one word too many' 'PptyVector3F v 1 2 3 5'
refuses '"yes" is neither True nor False' 'PptyBool b yes'
refuses 'the value lies outside its bounds 0 .. 1' 'RFloatPpty opacity 1.5 0 1'
refuses 'the value lies outside its bounds (0, 0, 0) .. (1, 1, 1)' 'RangeVect3DPpty box 0 2 0 0 0 0 1 1 1'
refuses 'the table has no choice "Huge"' 'PptyEnum size Huge Small=1 Big=2'
refuses '"Small" is not of the form label=number' 'PptyEnum size Small Small'

refuses 'the plug-in /none.so cannot be loaded' 'PptyFile plugIn /none.so'

echo 'PptyInt particles 1' > "$folder/short.scene"
message=$("$fountain" "$folder/short.scene" "$folder/out" 2>&1 >/dev/null)
if [ $? -ne 2 ] || [ "$message" != 'the scene lacks the property frames, or it is of another kind' ] ||
    [ -e "$folder/out" ]; then
    echo "a scene without frames: $message"
    failed=1
fi
message=$("$fountain" "$folder/none.scene" "$folder/out" 2>&1 >/dev/null)
if [ $? -ne 2 ] || [ "$message" != "$folder/none.scene: No such file or directory" ]; then
    echo "a missing scene file: $message"
    failed=1
fi
exit $failed
