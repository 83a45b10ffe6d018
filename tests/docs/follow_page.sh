#!/usr/bin/env bash
# Follows a page of docs/ in an empty folder. Usage: follow_page.sh <top of the tree> <build folder> <page>
# On the page `name`: precedes the contents of the file of this name; a block of sh is run; each line of a block of
# output is the end of a line that the block of sh before it printed. A block of console is only shown.
set -eu
page=$1/docs/$3.md
export BUILD=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

awk '
    /^`[^`]+`:$/ { name = substr($0, 2, length($0) - 3) }
    /^```/ && open { print "END_OF_BLOCK"; open = 0; next }
    /^```/ {
        if ($0 == "```console") { print "shown <<\"END_OF_BLOCK\"" }
        else if ($0 == "```sh") { print "run <<\"END_OF_BLOCK\""; ++commands }
        else if ($0 == "```output") { print "expect <<\"END_OF_BLOCK\""; ++outputs }
        else if (name != "") { print "cat > " name " <<\"END_OF_BLOCK\""; ++files }
        else { print FILENAME ": a block that is neither a file nor a command" > "/dev/stderr"; exit 1 }
        name = ""
        open = 1
        next
    }
    open
    END { if (files < 1 || commands < 1 || outputs < 1) exit 1 }
' "$page" | sed 's/<<"END_OF_BLOCK"/<<'"'END_OF_BLOCK'"'/' > "$folder/page"

run() {
    cat > ../block
    cat ../block
    bash -eu ../block > ../printed 2>&1 || { cat ../printed; exit 1; }
}
shown() { cat > /dev/null; }
expect() {
    while read -r line; do
        grep -q -- "$line\$" ../printed || { cat ../printed; echo "missing: $line"; exit 1; }
    done
}
mkdir "$folder/empty"
cd "$folder/empty"
. ../page
for made in build by-hand; do
    [ -e $made/libdrain.so ] || continue
    symbols=$(nm -D --defined-only $made/libdrain.so | grep -vc ' fountain') || true
    [ "$symbols" = 0 ] || { echo "the plug-in in $made exports $symbols further symbols"; exit 1; }
done
