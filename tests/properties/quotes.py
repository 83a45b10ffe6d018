#!/usr/bin/env python3
"""Fails where a page does not quote faithfully.

    quotes.py <top of the tree>

docs/records.md: the hex below a line with the name of a file here or in golden is the whole of that file.
docs/properties.md: every block of C++ is in examples/custom_property.cpp, line for line, whatever its indentation.
"""
import pathlib
import re
import sys

top = pathlib.Path(sys.argv[1])
golden = top / "tests/properties/golden"
short = []


def stripped(text):
    return "\n".join(line.strip() for line in text.splitlines())


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

example = stripped((top / "examples/custom_property.cpp").read_text())
blocks = re.findall(r"^```cpp\n(.*?)^```", (top / "docs/properties.md").read_text(), re.MULTILINE | re.DOTALL)
for block in blocks:
    if stripped(block) not in example:
        short.append(f"docs/properties.md: not in the example:\n{block}")

print(*short, f"{len(quoted)} records and {len(blocks)} excerpts compared", sep="\n")
sys.exit(short != [] or not quoted or not blocks)
