#!/usr/bin/env bash
# Compares what the libraries export with the lists in symbols/, one list for each library.
#     symbols.sh <library file>...            fails on any difference and on an internal name, strong or weak
#     symbols.sh --update <library file>...   rewrites the lists
#     symbols.sh --mangled <library file>...  prints the compared symbols as the linker knows them
#
# Compared are strong symbols, virtual tables, type information and VTTs, and of the weak members those of the
# library's own named explicit instances. Other weak symbols are inline functions, which come and go with the
# optimiser and which every caller compiles itself. A list contains a name once for each of its mangled names: a
# constructor, for example, twice.
set -euo pipefail
export LC_ALL=C
mode=compare
case $1 in --update | --mangled) mode=${1#--}; shift ;; esac
lists=$(cd "$(dirname "$0")" && pwd)/symbols

instances='quarn::(BasicPpty|BasePpty|RgdBasicPpty|RangePpty|RangeVectPpty|QN_MetaClass|ItemVariant::[A-Za-z]*T)<'
instances+='|quarn::Quaternion<(float|double)>::getAngles'
tables='(vtable|VTT|typeinfo|typeinfo name) for'
compared="^([TDBRG] |V $tables |[WVu] ([a-z ]+ )?($instances))" # a function template shows its result type
foreign="^. ($tables )?(std|__gnu_cxx|__cxxabiv1)::"
internal='\bdetail::|\(anonymous namespace\)'

# Every exported symbol with its type, a tab and its mangled name:
# "T quarn::FileStream::read(void*, unsigned long)<tab>_ZN5quarn10FileStream4readEPvm"
exported() {
    local symbols
    symbols=$(nm -D --defined-only "$1" | cut -d' ' -f2-)
    paste <(c++filt <<<"$symbols") <(cut -d' ' -f2 <<<"$symbols")
}

failed=0
complain() { echo "$1: $2"; failed=1; }
for library in "$@"; do
    name=$(basename "$library")
    name=${name%%.so*}
    everything=$(exported "$library")
    found=$(grep -E "$compared" <<<"$everything" | grep -vE "$foreign" | sort) || complain "$name" "exports nothing"
    names=$(cut -f1 <<<"$found")
    case $mode in
    mangled) cut -f2 <<<"$found" ;;
    update)
        mkdir -p "$lists"
        echo "$names" >"$lists/$name.txt"
        ;;
    compare)
        diff -u --label "symbols/$name.txt" --label "$name as built" "$lists/$name.txt" - <<<"$names" ||
            complain "$name" "the exported symbols changed; docs/abi.md says what to do"
        cut -f1 <<<"$everything" | grep -E "$internal" &&
            complain "$name" "the names above are internal and must not be exported"
        ;;
    esac
done
exit $failed
