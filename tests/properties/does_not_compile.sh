#!/usr/bin/env bash
# Fails if code that could not work compiles, or if the compiler does not say what is wrong.
# Usage: does_not_compile.sh <top of the tree> <compiler>
set -uo pipefail
tree=$1 compiler=$2
failed=0

# refused <reason> <statement>: the compiler refuses the statement with this reason
refused() {
    local errors
    if errors=$("$compiler" -std=c++17 -fsyntax-only -I"$tree/src" -x c++ - 2>&1 <<< "
        #include <MRCommon/properties/BasicPpty.h>
        void statement() { $2; }"); then
        echo "compiles: $2"
        failed=1
    elif ! grep -q "$1" <<< "$errors"; then
        printf '%s\nis refused without "%s":\n%s\n' "$2" "$1" "$errors"
        failed=1
    fi
}

refused 'derive from a kind with one of the types' 'quarn::BasicPpty<short, quarn::Ppty::TYPE_INT> p("p")'
refused 'no variant holds a value of this type' 'quarn::ItemVariant v = quarn::ItemVariant::makeDefault<short>()'
refused 'no variant holds a value of this type' 'quarn::ItemVariant().as<short>()'
refused 'deleted' 'quarn::PptyBool("p").setValue("False")'
refused 'deleted' 'int i = 0; quarn::ItemVariant v(&i)'
exit $failed
