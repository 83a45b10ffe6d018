#!/usr/bin/env bash
# Fails if the plug-in shows an inline member, an inline function or a constant of these libraries to others.
#     hidden_members.sh <plug-in>
set -euo pipefail
for member in 'QN_String::tokenize' 'ArrayCore<.*::reserve' 'Vector3<.*::cross' 'Tuple2<.*::Tuple2' encoding::readStr; do
    nm -C "$1" | grep " t .*quarn::.*$member" >/dev/null || { echo "$1 does not contain $member"; exit 1; }
done
symbols=$(nm -D --defined-only "$1" | cut -d' ' -f2-)
# By their mangled names, since templates of others have arguments of ours. Meta-classes that a plug-in makes are its own.
! grep -E '^[WVuv] _Z(GVZ?|Z|T[A-Z])?NK?5quarn' <<<"$symbols" | grep -v '5quarn12QN_MetaClassI' | c++filt
