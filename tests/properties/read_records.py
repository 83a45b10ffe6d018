#!/usr/bin/env python3
"""Reads records as docs/records.md describes them, without the library, and prints one line for each file.

    read_records.py <file>...
    PptyFloat.raw PptyFloat name="gravity" value=-9.8100004196166992

A file is named <class>[-<what>].<raw|endian>, or ItemVariant[-<what>].raw, and holds one record of a little-endian
machine; "5087" in its name tells the workspace version, which is 5088 otherwise. Real numbers have 17 digits. A string
is shown without its last NUL; bytes that are not printable ASCII, quotes and backslashes are \\xNN; a string of size 0
is none. Fields stand in the order of the record. Where a byte-order-aware record is the name alone, so is the line.
"""
import pathlib
import struct
import sys


class Record:
    def __init__(self, data, raw):
        self.data, self.at, self.raw = data, 0, raw

    def take(self, count):
        if count > len(self.data) - self.at:
            raise EOFError("the record ends early")
        self.at += count
        return self.data[self.at - count:self.at]

    def plain(self, letters):  # in the order of the machine
        return struct.unpack("<" + letters, self.take(struct.calcsize("<" + letters)))

    def u32(self):
        return int.from_bytes(self.take(4), "little" if self.raw else "big")

    def i32(self):
        return int.from_bytes(self.take(4), "little" if self.raw else "big", signed=True)

    def string(self):
        return self.take(self.u32())

    def strings(self):
        return [self.string() for _ in range(self.u32())]

    def block(self):
        return list(self.plain(f"{self.u32()}i"))


def shown(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, float):
        return "%.17g" % value
    if isinstance(value, bytes):
        if not value:
            return "none"
        text = value[:-1] if value[-1] == 0 else value
        return '"' + "".join(chr(b) if 32 <= b < 127 and b not in b'"\\' else f"\\x{b:02x}" for b in text) + '"'
    if isinstance(value, list):
        return "[" + ", ".join(map(shown, value)) + "]"
    if isinstance(value, tuple):
        return "(" + ", ".join(map(shown, value)) + ")"
    return str(value)


def plain_reader(letters):
    def read(record):
        values = record.plain(letters)
        return values[0] if len(values) == 1 else values
    return read


READERS = {  # by class, and by tag for what a variant holds
    "PptyInt": plain_reader("i"), 1: plain_reader("i"),
    "PptyInt64": plain_reader("q"), 2: plain_reader("q"),
    "PptyFloat": plain_reader("f"), 3: plain_reader("f"),
    "PptyDouble": plain_reader("d"), 4: plain_reader("d"),
    "PptyBool": plain_reader("?"), 5: plain_reader("?"),
    "PptyString": Record.string, 6: Record.string,
    "PptyFile": Record.string, "PptyDirectory": Record.string,
    "PptyVector3F": plain_reader("3f"), 7: plain_reader("3f"),
    "PptyVector3D": plain_reader("3d"), 8: plain_reader("3d"),
    "PptyColor4F": plain_reader("4f"), 9: plain_reader("4f"),
    "PptyColor4D": plain_reader("4d"), 10: plain_reader("4d"),
    "PptyArrayString": Record.strings, 11: Record.strings,
    12: lambda record: (record.string(), record.i32()),
}
RANGED = {"RIntPpty": "i", "RInt64Ppty": "q", "RFloatPpty": "f", "RDoublePpty": "d",
          "RangeVect3FPpty": "3f", "RangeVect3DPpty": "3d"}


def variant(record):
    tag = record.u32()
    return {"tag": tag, "value": READERS[tag](record)} if tag in READERS else {"tag": tag}


def enumeration(record, version):
    stored = version > 5087 and record.u32() > 1
    label = record.string() if stored else b"\0"
    index, labels, values = record.i32(), record.strings(), record.block()
    if not stored:
        label = next((text for text, number in zip(labels, values) if number == index), label)
    return {"label": label, "index": index, "labels": labels, "values": values}


def fields(path, kind):
    record = Record(path.read_bytes(), path.suffix == ".raw")
    if kind == "ItemVariant":
        found = variant(record)
    else:
        found = {"name": record.string()}
        if kind == "PptyEnum":
            found.update(enumeration(record, 5087 if "5087" in path.name else 5088))
        elif kind in RANGED and record.raw:
            found.update((what, plain_reader(RANGED[kind])(record)) for what in ("value", "max", "min"))
        elif kind == "PptyArrayString" or record.raw:
            found["value"] = READERS[kind](record)
    if record.at != len(record.data):
        raise ValueError("something stands behind the record")
    return found


if __name__ == "__main__":
    for name in map(pathlib.Path, sys.argv[1:]):
        kind = name.name.split(".")[0].split("-")[0]
        print(name.name, kind, *(f"{what}={shown(value)}" for what, value in fields(name, kind).items()))
