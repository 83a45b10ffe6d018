#!/usr/bin/env bash
# mrcommon-records prints a file's records in order; what it cannot read it tells in one line, with exit status 2.
# Usage: records.sh <mrcommon-records> <folder of golden records>
set -u
tool=$1
golden=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
file=$folder/scene
failed=0

# gives <expected status> <expected output, both streams> <argument>...
gives() {
    expected=$1 text=$2
    shift 2
    got=$("$tool" "$@" 2>&1)
    status=$?
    if [ "$got" != "$text" ] || [ $status -ne "$expected" ]; then
        printf 'mrcommon-records %s\nexpected: %s\ngot:      %s (exit status %d)\n' "$*" "$text" "$got" $status
        failed=1
    fi
}

gravity='PptyFloat name="gravity" value=-9.8100004196166992'
mode='name="mode" label="High" index=20 labels=["Low", "High", "Turbo"] values=[10, 20, -7]'
usage='mrcommon-records: usage: mrcommon-records [--endian] [--workspace <version>] <file> <class>...'

cat "$golden"/PptyFloat.raw "$golden"/PptyEnum.raw > "$file"
gives 0 "$gravity"$'\n'"PptyEnum $mode" "$file" PptyFloat PptyEnum
gives 2 "$gravity"$'\n'"mrcommon-records: $file: bytes left over behind the last record: $(wc -c < "$golden"/PptyEnum.raw)" \
    "$file" PptyFloat
gives 2 "$gravity"$'\n'"mrcommon-records: $file: record 2 (PptyEnum) holds a size that the file cannot fill" --workspace 5087 "$file" PptyFloat PptyEnum
gives 0 "PptyEnum $mode" --workspace 5087 "$golden"/PptyEnum-5087.raw PptyEnum

# A variant's record is raw on both stream kinds.
cat "$golden"/PptyFloat.endian "$golden"/ItemVariant-05.raw > "$file"
gives 0 'PptyFloat name="gravity"'$'\n''ItemVariant tag=5 value=true' --endian "$file" PptyFloat ItemVariant

head -c 15 "$golden"/PptyFloat.raw > "$file"
gives 2 "mrcommon-records: $file: record 1 (PptyFloat) ends early" "$file" PptyFloat

# Sizes beyond the file: a text of 4 GiB less a byte, a list of as many texts.
printf '\377\377\377\377' > "$file"
gives 2 "mrcommon-records: $file: record 1 (PptyString) holds a size that the file cannot fill" "$file" PptyString
printf '\001\0\0\0\0\377\377\377\377' > "$file"
gives 2 "mrcommon-records: $file: record 1 (PptyArrayString) holds a size that the file cannot fill" "$file" PptyArrayString

gives 2 'mrcommon-records: there is no record class PptyFlaot' "$file" PptyFlaot
gives 2 'mrcommon-records: there is no record class QN_Class' "$file" QN_Class
gives 2 "mrcommon-records: $folder/none: No such file or directory" "$folder/none" PptyInt
gives 2 'mrcommon-records: "5o87" is no workspace version' --workspace 5o87 "$file" PptyInt
gives 2 "$usage"
gives 2 "$usage" "$file"
gives 2 "$usage" --workspace
gives 2 "$usage" --big "$file" PptyInt
exit $failed
