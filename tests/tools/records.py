#!/usr/bin/env python3
"""Tests mrcommon-records as a user meets it.

    records.py <mrcommon-records> <top of the tree> <library with the class GustPpty, or ""> [<sanitizers>]
"""
import json
import os
import pathlib
import resource
import signal
import subprocess
import sys
import unittest
import zlib

from program import NAME, TOOL, TOP, Program, run

PLUG_IN = sys.argv[3]
SANITIZED = len(sys.argv) > 4
GOLDEN = TOP / "tests/properties/golden"
SCENE = str(TOP / "tests/properties/scene.props")
GRAVITY = 'PptyFloat name="gravity" value=-9.8100004196166992\n'
MODE = 'PptyEnum name="mode" label="High" index=20 labels=["Low", "High", "Turbo"] values=[10, 20, -7]\n'


def golden(*names):
    return b"".join((GOLDEN / name).read_bytes() for name in names)


def signed(content):
    return content[:-4] + zlib.crc32(content[:-4]).to_bytes(4, "little")


class Records(Program):
    def file(self, content, name="scene"):
        path = os.path.join(self.top, name)
        pathlib.Path(path).write_bytes(content)
        return path

    def test_prints_records_in_order(self):
        both = self.file(golden("PptyFloat.raw", "PptyEnum.raw"))
        self.gives(0, GRAVITY + MODE, "--kinds", "PptyFloat,PptyEnum", both)
        self.gives(0, "", "--check", "--kinds", "PptyFloat,PptyEnum", both)
        kinds = self.file(b"PptyFloat,\nPptyEnum\n", "kinds")
        self.gives(0, GRAVITY + MODE, "--kinds-from", kinds, both)
        left = len(golden("PptyEnum.raw"))
        self.complains(1, f"{both}: trailing bytes after the last record: {left}", "--kinds", "PptyFloat", both, output=GRAVITY)
        self.gives(0, MODE, "--workspace", "5087", "--kinds", "PptyEnum", str(GOLDEN / "PptyEnum-5087.raw"))
        mixed = self.file(golden("PptyFloat.endian", "ItemVariant-05.raw", "ItemVariant-13.raw"))
        self.gives(0, 'PptyFloat name="gravity"\nItemVariant tag=5 value=true\nItemVariant tag=13\n',
                   "--endian", "--kinds", "PptyFloat,ItemVariant,ItemVariant", mixed)
        other = self.file(golden("PptyFloat.raw"), "other")
        self.gives(0, f"{other}: {GRAVITY}" * 2, "--kinds", "PptyFloat", other, other)

    def test_repeats_the_kinds_to_the_end_of_the_file(self):
        pairs = self.file(golden("PptyFloat.raw", "PptyEnum.raw") * 3)
        self.gives(0, (GRAVITY + MODE) * 3, "--repeat", "--kinds", "PptyFloat,PptyEnum", pairs)
        self.gives(0, "", "--repeat", "--kinds", "PptyFloat", self.file(b"", "empty"))
        odd = self.file(golden("PptyFloat.raw"), "odd")
        self.complains(1, f"{odd}: record 2 (PptyEnum): name at byte 16: the data ends inside it",
                       "--repeat", "--kinds", "PptyFloat,PptyEnum", odd, output=GRAVITY)

    def test_prints_files_that_describe_themselves(self):
        self.gives(0, GRAVITY + "Kelp schema=3 bytes=12\n", SCENE)
        with open(SCENE, "rb") as scene:
            self.gives(0, GRAVITY + "Kelp schema=3 bytes=12\n", "-", stdin=scene)
        content = pathlib.Path(SCENE).read_bytes()
        damaged = self.file(signed(content[:42] + b"\xff" + content[43:]))
        reason = "entry 1 (PptyFloat): name at byte 42: its size exceeds the data that is left"
        self.complains(1, f"{damaged}: {reason}", damaged)
        raw = self.file(golden("PptyFloat.raw"), "raw")
        reason = f"{NAME}: {raw}: Not a property file; its kinds must be given\n"
        self.assertEqual(run(raw, SCENE), (1, f"{SCENE}: {GRAVITY}{SCENE}: Kelp schema=3 bytes=12\n", reason))

    def test_prints_json(self):
        def objects(*arguments):
            status, output, errors = run("--json", *arguments)
            self.assertEqual((status, errors), (0, ""))
            return [list(json.loads(line).items()) for line in output.splitlines()]

        def record(kind, *fields):
            path = str(GOLDEN / f"{kind}.raw")
            kind = kind.split("-")[0]
            self.assertEqual(objects("--kinds", kind, path), [[("file", path), ("offset", 0), ("kind", kind), *fields]])

        record("PptyEnum", ("name", "mode"), ("value", {"label": "High", "index": 20}),
               ("choices", [["Low", 10], ["High", 20], ["Turbo", -7]]))
        record("RIntPpty", ("name", "level"), ("value", 3), ("minimum", -10), ("maximum", 10))
        record("PptyArrayString", ("name", "layers"), ("value", ["sea", "", "foam, white", ""]))
        record("PptyInt64", ("name", "seed"), ("value", 1234567890123456789))
        record("PptyString", ("name", "author"), ("value", 'Ana M. "sea" \ufffd'))
        record("ItemVariant-09", ("tag", 9), ("value", [0, 0, 0, 1]))
        record("ItemVariant-12", ("tag", 12), ("value", {"label": "High", "index": 20}))
        self.assertEqual(objects(SCENE)[1], [("file", SCENE), ("offset", 79), ("kind", "Kelp"), ("schema", 3), ("bytes", 12)])
        endless = self.file(bytes.fromhex("0100000000 0000C07F"), "endless")
        self.assertEqual(objects("--kinds", "PptyFloat", endless)[0][-1], ("value", None))

    def test_prints_settings(self):
        content = bytes.fromhex("00000004 7365612F 00000005 00000003")
        self.gives(0, 'FileNameStitcher prefix="sea/" padding=5 order=3\n', "--settings", self.file(content))
        path = self.file(content[:11])
        self.complains(1, f"{path}: the settings end early", "--settings", path)
        path = self.file(b"\xff" + content[1:])
        self.complains(1, f"{path}: the length of the prefix exceeds the data that is left", "--settings", path)
        path = self.file(content + b"!")
        self.assertEqual(run("--check", "--settings", path)[2], f"{NAME}: {path}: trailing bytes after the settings: 1\n")

    def test_goes_on_after_bad_input(self):
        cut, whole = self.file(golden("PptyFloat.raw")[:-1], "cut"), self.file(golden("PptyFloat.raw"), "whole")
        self.complains(1, f"{cut}: record 1 (PptyFloat): value at byte 12: the data ends inside it",
                       "--kinds", "PptyFloat", cut, whole, output=f"{whole}: {GRAVITY}")
        self.complains(1, f"{self.top}/none: No such file or directory", f"{self.top}/none")
        self.complains(1, f"{self.top}: Is a directory", self.top)

    def test_takes_the_standard_input_where_it_can_be_positioned(self):
        both = self.file(golden("PptyInt.raw", "PptyFloat.raw"))
        with open(both, "rb") as file:
            os.lseek(file.fileno(), len(golden("PptyInt.raw")), os.SEEK_SET)
            self.gives(0, GRAVITY, "--kinds", "PptyFloat", "-", stdin=file)
        for kinds in ([], ["--kinds", "PptyFloat"]):
            status, output, errors = run(*kinds, "-", input=b"x")
            self.assertEqual((status, output), (1, ""))
            self.assertIn(f"{NAME}: -: records are read from files that can be positioned only", errors)

    def test_opens_plug_ins(self):
        status, output, errors = run("--plug-in", f"{self.top}/none.so", SCENE)
        self.assertEqual((status, output), (1, ""))
        self.assertRegex(errors, rf"^{NAME}: [^\n]*{self.top}/none\.so[^\n]*\n$")
        if PLUG_IN:
            record = bytes.fromhex("0200000061 00") + bytes(36) + bytes.fromhex("000000000000F03F")
            path = self.file(record)
            self.assertEqual(run("--kinds", "GustPpty", path)[0], 2)
            status, output, errors = run("--plug-in", PLUG_IN, "--kinds", "GustPpty", path)
            self.assertEqual((status, errors), (0, ""))
            self.assertEqual(output, 'GustPpty name="a" value=(0, 0, 0) max=(0, 0, 0) min=(0, 0, 0)\n')

    def test_explains_wrong_usage_in_one_line(self):
        for arguments in ([], ["--big", SCENE], ["--kinds", "PptyFlaot", SCENE], ["--kinds", "QN_Class", SCENE], ["--repeat", SCENE],
                          ["--settings", "--endian", SCENE], ["--workspace", "5o87", SCENE],
                          ["--kinds", "PptyInt", "--kinds-from", SCENE, SCENE]):
            self.refuses(*arguments)
        self.assertIn("unknown record class PptyFlaot", run("--kinds", "PptyFlaot", SCENE)[2])

    def test_lists_the_classes(self):
        self.assertIn("\n  PptyEnum\n", run("--help")[1])

    def test_ends_silently_when_the_pipe_closes(self):
        many = self.file(golden("PptyFloat.raw") * 20000)
        tool = subprocess.Popen([TOOL, "--repeat", "--kinds", "PptyFloat", many], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        tool.stdout.readline()
        tool.stdout.close()
        self.assertEqual((tool.wait(timeout=60), tool.stderr.read()), (-signal.SIGPIPE, b""))
        tool.stderr.close()

    def test_takes_little_memory_for_large_files(self):
        def limit():
            if not SANITIZED:
                resource.setrlimit(resource.RLIMIT_DATA, (2 ** 22, 2 ** 22))

        many = self.file(golden("PptyFloat.raw") * 100000)
        self.gives(0, "", "--check", "--repeat", "--kinds", "PptyFloat", many, preexec_fn=limit)
        huge = self.file((2 ** 23).to_bytes(4, "little") + b"x" * (2 ** 23 - 1) + b"\0\0\0\0")
        self.complains(1, f"{huge}: record 1 (PptyInt): value at byte {2 ** 23 + 4}: the data ends inside it",
                       "--check", "--kinds", "PptyInt", huge, preexec_fn=limit)

    def test_takes_little_more_memory_than_a_large_value(self):
        def limit():
            if not SANITIZED:
                resource.setrlimit(resource.RLIMIT_DATA, (2 ** 24 + 2 ** 22, 2 ** 24 + 2 ** 22))

        letters = ("\u00e9\u20ac\U0001F30A\"x" * 2 ** 21).encode()[:2 ** 24 - 1]
        letters = letters.decode(errors="ignore").encode()
        large = self.file(b"\2\0\0\0a\0" + (len(letters) + 1).to_bytes(4, "little") + letters + b"\0", "large")
        for options in ([], ["--json"], ["--check"]):
            status, output, errors = run(*options, "--kinds", "PptyString", large, preexec_fn=limit)
            self.assertEqual((status, errors), (0, ""), options)
            if options == ["--json"]:
                self.assertEqual(json.loads(output)["value"], letters.decode())
            elif options == []:
                escaped = "".join(chr(c) if 32 <= c < 127 and c != 34 else f"\\x{c:02x}" for c in letters)
                self.assertEqual(output, f'PptyString name="a" value="{escaped}"\n')


if __name__ == "__main__":
    del Program  # its tests run for each program
    unittest.main(argv=[sys.argv[0]])
