#!/usr/bin/env bash
# Runs a test program as a user whom file modes bind: as nobody if the caller is root, else as the caller.
#     unprivileged.sh <program> [<argument>...]
# Exits with 77 if nobody may not read the program or a file among its arguments.
set -euo pipefail
[ "$(id -u)" -eq 0 ] || exec "$@"

as_nobody() { setpriv --reuid=65534 --regid=65534 --clear-groups -- "$@"; }
for word in "$@"; do
    [ ! -e "$word" ] || as_nobody test -r "$word" || { echo "nobody may not read $word"; exit 77; }
done
TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
chown 65534:65534 "$TMPDIR"
cd "$TMPDIR"
as_nobody "$@"
