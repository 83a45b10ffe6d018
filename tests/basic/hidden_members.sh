#!/usr/bin/env bash
# Fails if the plug-in shows an inline member, an inline function or a constant of these libraries to others.
#     hidden_members.sh <plug-in>
set -euo pipefail
symbols=$(nm -DC --defined-only "$1" | cut -d' ' -f2-)
grep -q '^T useEverything$' <<<"$symbols" || { echo "$1 does not export its entry point"; exit 1; }
# A result type and a template's arguments may come first; instances of std:: templates are not ours to hide.
! grep -E '^[Wuv] ([^(]* )?quarn::' <<<"$symbols" | grep -vE '^. ([^(]*[ *&])?(std|__gnu_cxx)::'
