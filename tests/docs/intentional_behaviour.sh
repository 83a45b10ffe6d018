#!/usr/bin/env bash
# Fails where docs/intentional-behaviour.md names a test that does not exist, or holds a row without one.
# Usage: intentional_behaviour.sh <top of the tree>
set -eu
cd "$1"
rows=$(grep '^| ' docs/intentional-behaviour.md | grep -v '^| What | ')
failed=0
held=0
while IFS= read -r row; do
    names=$(grep -o '`[A-Za-z_]*\.[A-Za-z0-9_]*`' <<< "${row##* | }" | tr -d '`') || {
        echo "no test: $row"
        failed=1
    }
    for name in $names; do
        held=$((held + 1))
        grep -qrE --include='*_test.cpp' "^(TYPED_)?TEST\(${name%.*}, ${name#*.}\)" tests || {
            echo "no such test: $name"
            failed=1
        }
    done
done <<< "$rows"
echo "$held tests named"
[ "$held" -ge 50 ] || failed=1
exit $failed
