#!/usr/bin/env bash
# Runs a test program as a user whom file modes bind: as nobody if the caller is root, else as the caller.
#     unprivileged.sh <program> [<argument>...]
# Exits with 77 if nobody may not read the program's folder.
set -euo pipefail
[ "$(id -u)" -eq 0 ] || exec "$@"

as_nobody() { setpriv --reuid=65534 --regid=65534 --clear-groups -- "$@"; }
as_nobody test -x "$1" || { echo "nobody may not run $1"; exit 77; }
TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
chown 65534:65534 "$TMPDIR"
cd "$TMPDIR"
as_nobody "$@"
