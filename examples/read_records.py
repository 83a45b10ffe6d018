#!/usr/bin/env python3
"""Reads records as docs/records.md describes them, without the library, and prints one line for each record.

    read_records.py <file>...
    PptyFloat.raw PptyFloat name="gravity" value=-9.8100004196166992
    scene.props Kelp schema=3 bytes=12

A file named <what>.props is a file of properties and gives a line for each entry.

A file is named <class>[-<what>].<raw|endian>, or ItemVariant[-<what>].raw, and holds one record of a little-endian
machine; "5087" in its name tells the workspace version, which is 5088 otherwise. Real numbers have 17 digits. A string
is shown without its last NUL; bytes that are not printable ASCII, quotes and backslashes are \\xNN; a string of size 0
is none. Fields stand in the order of the record. Where a byte-order-aware record is the name alone, so is the line.
"""
import pathlib
import struct
import sys
import zlib


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


def fields(record, kind, version):
    if kind == "ItemVariant":
        found = variant(record)
    else:
        found = {"name": record.string()}
        if kind == "PptyEnum":
            found.update(enumeration(record, version))
        elif kind in RANGED and record.raw:
            found.update((what, plain_reader(RANGED[kind])(record)) for what in ("value", "max", "min"))
        elif kind == "PptyArrayString" or record.raw:
            found["value"] = READERS[kind](record)
    if record.at != len(record.data):
        raise ValueError("bytes follow the record")
    return found


def entries(data):
    if zlib.crc32(data[:-4]) != int.from_bytes(data[-4:], "little"):
        raise ValueError("the checksum differs")
    file = Record(data[:-4], True)
    if file.take(8) != b"MRPROPS\n" or file.u32() != 1:
        raise ValueError("not a file of properties in format 1")
    for _ in range(file.u32()):
        kind, schema, (size,) = file.string()[:-1].decode(), file.u32(), file.plain("Q")
        record = file.take(size)
        is_known = kind in READERS or kind in RANGED or kind == "PptyEnum"
        yield kind, fields(Record(record, True), kind, 5088) if is_known else {"schema": schema, "bytes": size}
    if file.at != len(file.data):
        raise ValueError("bytes follow the last entry")


def records(path):
    if path.suffix == ".props":
        return entries(path.read_bytes())
    kind, version = path.name.split(".")[0].split("-")[0], 5087 if "5087" in path.name else 5088
    return [(kind, fields(Record(path.read_bytes(), path.suffix == ".raw"), kind, version))]


if __name__ == "__main__":
    for path in map(pathlib.Path, sys.argv[1:]):
        for kind, found in records(path):
            print(path.name, kind, *(f"{what}={shown(value)}" for what, value in found.items()))
