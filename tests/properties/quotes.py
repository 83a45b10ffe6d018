#!/usr/bin/env python3
"""Fails if docs/records.md does not quote its records faithfully.

    quotes.py <top of the tree>

docs/records.md: the hex below a line with the name of a file here or in golden is the whole of that file.
"""
import pathlib
import re
import sys

top = pathlib.Path(sys.argv[1])
golden = top / "tests/properties/golden"
short = []


quoted, record = {}, None
for line in (top / "docs/records.md").read_text().splitlines():
    hex_bytes = re.match(r"    ((?:[0-9A-F]{2} ?)+)(?:  |$)", line)
    if re.fullmatch(r"    \S+\.(raw|endian|props)", line):
        record = quoted.setdefault(line.strip(), bytearray())
    elif record is not None and hex_bytes:
        record += bytes.fromhex(hex_bytes[1])
    else:
        record = None
for name, record in quoted.items():
    if record != (golden.parent if name.endswith(".props") else golden).joinpath(name).read_bytes():
        short.append(f"docs/records.md: {name} holds other bytes")

print(*short, f"{len(quoted)} records compared", sep="\n")
sys.exit(short != [] or not quoted)
