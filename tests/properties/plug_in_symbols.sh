#!/usr/bin/env bash
# Fails if a plug-in exports a copy of an inline member of the property classes, which the next plug-in would bind
# and so keep the first one from being unloaded, or if it cannot be linked without optimisation.
# Usage: plug_in_symbols.sh <top of the tree> <folder of the libraries> <compiler>...
set -euo pipefail
tree=$1 libraries=$2
shift 2
plugIn=$(mktemp)
trap 'rm -f "$plugIn"' EXIT
copied='quarn::([A-Za-z0-9]*Ppty|ItemVariant|QN_Class|QN_Enum|QN_System_Enum|QN_MetaClass<quarn)\b'
copied+='|quarn::detail::(visitKind|newDefaultValue|tagIn)'
own='^(typeinfo |vtable for |)(Gale|Choice|quarn::QN_MetaClass<Gale>)\b|^typeinfo (name )?for Gale'
foreign='^(void |bool |)(std|__gnu_cxx)::'
failed=0
for compiler in "$@"; do
    for options in -O0 -O2 '-O0 -fvisibility=hidden'; do
        "$compiler" -std=c++17 $options -fPIC -shared -I"$tree/src" "$tree/tests/properties/plug_in.cpp" \
            -o "$plugIn" -Wl,--no-undefined -L"$libraries" -lMRCommon -lqn_basic -lqn_fileio
        symbols=$(nm -D --defined-only -C "$plugIn" | cut -d' ' -f3-)
        grep -qx 'vtable for Gale' <<< "$symbols" || { echo "$compiler $options: Gale is missing"; failed=1; }
        copies=$(grep -vE "$own|$foreign" <<< "$symbols" | grep -E "$copied" || true)
        [ -z "$copies" ] || { echo "$compiler $options exports"; echo "$copies"; failed=1; }
        [[ $options != *hidden* ]] || ! grep -q 'QN_MetaClass<' <<< "$symbols" || {
            echo "$compiler $options exports the meta-class of its own class"
            failed=1
        }
    done
done
exit $failed
