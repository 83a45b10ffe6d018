#!/usr/bin/env bash
# Fails unless the README shows exactly this program and its output. Usage: readme.sh <README> <source> <program>
set -euo pipefail
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/p" "$readme" | sed '1d;$d'; }
readme=$1
diff -u --label "$2" "$2" --label README.md <(block cpp)
diff -u --label "its output" <("$3") --label README.md <(block text)
