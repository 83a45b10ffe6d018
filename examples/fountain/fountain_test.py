#!/usr/bin/env python3
"""The example host reports an error in one line, with exit status 1 or 2, and leaves no temporary file.
Usage: fountain_test.py FOUNTAIN SCENE"""
import contextlib
import ctypes
import os
import pathlib
import pty
import re
import resource
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

fountain, scene_file = sys.argv[1], sys.argv[2]


def small_scene(**changes):
    """The example scene with few particles, frames and pixels; changes replace whole values."""
    values = {"particles": "60", "frames": "14", "pictureSize": "320", **changes}
    lines = pathlib.Path(scene_file).read_text().splitlines()
    return "\n".join(re.sub(r"^(\w+\s+)(\w+)(\s+).*", lambda m: m[1] + m[2] + m[3] + values[m[2]], line)
                     if len(line.split()) > 2 and line.split()[1] in values else line for line in lines)


def loader_reason(library):
    """Why the library cannot be loaded, in the platform's words."""
    try:
        ctypes.CDLL(str(library))
    except OSError as error:
        return str(error)
    raise AssertionError(f"{library} can be loaded")


class Fountain(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.scene = self.folder / "bay.scene"
        self.scene.write_text(small_scene())
        self.out = self.folder / "out"

    def run_fountain(self, *words, **options):
        return subprocess.run([fountain, *map(str, words)], capture_output=True, text=True, timeout=60, **options)

    def simulate(self):
        done = self.run_fountain(self.scene, self.out)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return done.stdout

    def verify(self):
        return self.run_fountain("--verify", self.scene, self.frame(7))

    def frame(self, number):
        return self.out / "frames" / f"bay_fountain{number:05}.rec"

    def expect_refusal(self, done, message, status=1):
        self.assertEqual((done.stderr, done.returncode), (f"fountain: {message}\n", status))

    def expect_no_temporaries(self):
        finished = (".rec", ".raw", ".endian", ".png", ".scene", ".props")
        self.assertEqual([p for p in self.folder.rglob("*") if p.is_file() and p.suffix not in finished], [])


class Scenes(Fountain):
    def refuses(self, line, message):
        with self.subTest(line):
            self.scene.write_text("# a comment\n\nPptyInt good 1\n" + line + "\n")
            self.expect_refusal(self.run_fountain(self.scene, self.out), f"{self.scene}:4: {message}")
            self.assertFalse(self.out.exists())

    def test_lines_that_are_no_properties(self):
        self.refuses("PptyFlaot gravity -9.81", "unknown property class PptyFlaot")
        self.refuses("QN_Class root 1", "unknown property class QN_Class")
        self.refuses("PptyFloat", "a property needs a class name, a name and a value")
        self.refuses("PptyInt good 2", "good: given twice")
        self.refuses("PptyString title a\0b", "the line contains a NUL")
        self.refuses("PptyFile plugIn /none.so", f"the plug-in /none.so cannot be loaded: {loader_reason('/none.so')}")

    def test_values_that_do_not_fit_their_class(self):
        self.refuses("PptyFloat gravity", "gravity: the value lacks a number")
        self.refuses("PptyFloat gravity 9,81", 'gravity: "9,81" is not a number')
        self.refuses("PptyFloat gravity 0x1p3", 'gravity: "0x1p3" is not a number')
        self.refuses("PptyFloat gravity 1e39", 'gravity: "1e39" is too large for this kind')
        self.refuses("PptyInt n 99999999999", 'n: "99999999999" is too large for this kind')
        self.refuses("PptyVector3D v 1 2 3 5", 'v: "5" is one word too many')
        self.refuses("PptyBool b yes", 'b: "yes" is neither True nor False')
        self.refuses("RFloatPpty opacity 1.5 0 1", "opacity: 1.5 is outside 0 .. 1")
        self.refuses("RangeVect3DPpty box 0 2 0 0 0 0 1 1 1", "box: (0, 2, 0) is outside (0, 0, 0) .. (1, 1, 1)")
        self.refuses("PptyEnum size Huge Small=1 Big=2", 'size: the table has no choice "Huge"')
        self.refuses("PptyEnum size Small Small", 'size: "Small" is not of the form label=number')

    def test_numbers_that_would_exhaust_memory_or_never_end(self):
        self.refuses("PptyInt64 pictureSize 100", "pictureSize: 100 is outside 320 .. 8192")
        self.refuses("PptyInt particles -1", "particles: -1 is outside 1 .. 1e+07")
        self.refuses("PptyDouble timeStep 0", "timeStep: 0 is outside 1e-06 .. 1")
        self.refuses("PptyDouble timeStep 1e308", "timeStep: 1e308 is outside 1e-06 .. 1")
        self.refuses("PptyDouble timeStep nan", 'timeStep: "nan" is not a number')
        self.refuses("RIntPpty subSteps 4 1 9999", "subSteps: 9999 is outside 1 .. 1000")
        self.refuses("PptyVector3D nozzle 0 -1e9 0", "nozzle: -1e9 is outside -1000 .. 1000")
        self.refuses("RangeVect3FPpty aSize 1 1 0 0 0 0 9 9 9", "aSize: 0 is outside 0.001 .. 1000")
        self.refuses("PptyEnum drawing None None=0", "drawing: 0 is outside 1 .. 64")
        self.refuses("PptyFloat tilt 3.1500003", "tilt: 3.1500003 is outside -3.15 .. 3.15")
        self.refuses("PptyFloat other 1e10", "other: 1e10 is outside -1e+09 .. 1e+09")

    def test_scenes_that_cannot_be_simulated(self):
        for text, message in [("PptyInt particles 1", "the scene lacks the property frames"),
                              (small_scene().replace("PptyInt         frames", "PptyFloat frames"),
                               "frames: the class PptyFloat does not fit this property"),
                              (small_scene(firstId="no-id"),
                               "firstId: no identifier in hexadecimal digits, or all of them are 0"),
                              (small_scene(camera="0.1 0.8 5"),
                               "camera: must be at least 0.1 m above the sea, and as far from x, y = 0.1, 0.8"),
                              ("#" * (2 << 20), "larger than a scene may be (1 MiB)")]:
            with self.subTest(message):
                self.scene.write_text(text)
                self.expect_refusal(self.run_fountain(self.scene, self.out), f"{self.scene}: {message}")
                self.assertFalse(self.out.exists())

    def test_files_that_cannot_be_read(self):
        none = self.folder / "none.scene"
        self.expect_refusal(self.run_fountain(none, self.out), f"{none}: No such file or directory")
        self.expect_refusal(self.run_fountain(self.folder, self.out), f"{self.folder}: Is a directory")

    def test_scenes_that_exceed_memory_or_disk(self):
        self.scene.write_text(small_scene(diskLimit="1000  0 1000"))
        self.assertRegex(self.run_fountain(self.scene, self.out).stderr,
                         rf"^fountain: {self.scene}: the scene takes \d+ kB of disk, its diskLimit is 1000 B\n$")
        self.scene.write_text(small_scene(particles="10000000", frames="99999",
                                          diskLimit="1000000000000000 0 1000000000000000"))
        self.assertRegex(self.run_fountain(self.scene, self.out).stderr,
                         rf"^fountain: {self.scene}: the scene takes \d+ TB of disk, available are \d+ .?B\n$")
        self.assertFalse(self.out.exists())

    def test_scenes_that_exceed_the_memory_limit_of_the_process(self):
        def limited():
            resource.setrlimit(resource.RLIMIT_AS, (1 << 30, 1 << 30))
        if self.run_fountain("--help", preexec_fn=limited).returncode != 0:
            self.skipTest("the program does not start within 1 GiB of addresses, as with a sanitizer")
        self.scene.write_text(small_scene(pictureSize="8192", diskLimit="1000000000 0 1000000000"))
        self.assertRegex(self.run_fountain(self.scene, self.out, preexec_fn=limited).stderr,
                         rf"^fountain: {self.scene}: the scene takes \d+ MB of memory, available are 1074 MB\n$")

    def test_wrong_usage(self):
        for words, message in [((), "a scene and an output folder are needed"),
                               (("--verify", "a"), "a scene and one of its frames are needed"),
                               (("--verfy", "a", "b"), "--verfy: unknown option"),
                               (("--set", "a.props", "gravity"), "a property file and NAME=VALUE are needed"),
                               (("a", ""), "a scene and an output folder are needed"),
                               (("a", "b", "c"), "a scene and an output folder are needed")]:
            self.expect_refusal(self.run_fountain(*words), f"{message} (see fountain --help)", 2)
        self.assertIn("usage: fountain", self.run_fountain("--help").stdout)


class Verifying(Fountain):
    def test_an_untouched_run_is_equal(self):
        self.scene.write_text(small_scene(tilt="3.15"))  # the bound itself, which no float represents
        self.assertIn("pictureSize  PptyInt64        320 ", self.simulate())
        done = self.verify()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("frames 1 to 14, reloaded and equal to a new run\n", done.stdout)

    def test_names_every_faulty_frame(self):
        self.simulate()
        whole = self.frame(9).read_bytes()
        self.frame(3).unlink()
        self.frame(5).write_bytes(b"")
        self.frame(8).write_bytes(self.frame(8).read_bytes()[:50])
        self.frame(9).write_bytes(whole[:-1] + bytes([whole[-1] ^ 1]))
        self.frame(10).write_bytes(b"\xff" * len(self.frame(10).read_bytes()))  # sizes of 4 GiB
        self.frame(12).write_bytes(self.frame(12).read_bytes() + b"x")
        self.frame(13).unlink()
        self.frame(13).mkdir()
        self.frame(15).write_bytes(whole)
        done = self.verify()
        size = self.frame(14).stat().st_size
        faults = [f"{self.frame(3)}: is missing", f"{self.frame(5)}: is empty",
                  rf"{self.frame(8)}: ends after 50 of \d+ bytes",
                  f"{self.frame(9)}: differs from a new run of the scene at byte {len(whole) - 1}",
                  f"{self.frame(10)}: differs from a new run of the scene at byte 0",
                  f"{self.frame(12)}: continues after its last particle",
                  f"{self.frame(13)}: Is a directory",
                  f"{self.frame(15)}: follows the last frame of the scene",
                  f"{self.scene}: 8 faults in its 14 frames"]
        self.assertRegex(done.stderr, "^" + "".join(f"fountain: {fault}\n" for fault in faults) + "$")
        self.assertEqual(done.returncode, 1)
        self.assertNotIn("equal", done.stdout)

    def test_misses_the_last_frames_and_the_named_one(self):
        self.simulate()
        for number in (7, 13, 14):
            self.frame(number).unlink()
        self.expect_refusal(self.verify(), "\nfountain: ".join(
            [f"{self.frame(n)}: is missing" for n in (7, 13, 14)] + [f"{self.scene}: 3 faults in its 14 frames"]))

    def test_refuses_a_file_that_is_no_frame(self):
        other = self.out / "frames" / "bay.rec"
        self.expect_refusal(self.run_fountain("--verify", self.scene, other),
                            f"{other}: is not one of the scene's frames, {self.frame(1)} to {self.frame(14)}")


class SavedScenes(Fountain):
    """The plug-in is a copy that a test can remove."""

    def setUp(self):
        super().setUp()
        built = pathlib.Path(fountain).with_name("libfountain_wind.so")
        self.plug_in = self.folder / "wind.so"
        shutil.copy(built, self.plug_in)
        self.scene.write_text(small_scene(plugIn=str(self.plug_in)))
        self.simulate()
        self.saved = self.out / "bay.props"

    def gust(self):
        """Where the wind's entry begins in the saved scene, and its class, schema, size and record."""
        file = self.saved.read_bytes()
        start = file.index(b"\x09\0\0\0GustPpty\0")
        size = struct.unpack_from("<Q", file, start + 17)[0]
        return start, file[start:start + 25 + size]

    def rewrite_gust(self, entry):
        """Replaces the wind's entry, with a checksum that fits."""
        start, old = self.gust()
        file = self.saved.read_bytes()[:-4]
        file = file[:start] + entry + file[start + len(old):]
        self.saved.write_bytes(file + struct.pack("<I", zlib.crc32(file)))

    def set(self, assignment):
        return self.run_fountain("--set", self.saved, assignment)

    def refuses_saved(self, message):
        self.expect_refusal(self.run_fountain(self.saved, self.folder / "other"), f"{self.saved}: {message}")
        self.assertFalse((self.folder / "other").exists())

    def test_are_scenes_like_their_text(self):
        again = self.folder / "again"
        self.assertEqual(self.run_fountain(self.saved, again).returncode, 0)
        self.assertEqual((again / "bay.props").read_bytes(), self.saved.read_bytes())
        self.assertEqual(self.run_fountain("--verify", self.saved, self.frame(7)).returncode, 0)

    def test_keep_the_properties_of_a_missing_plug_in(self):
        entry = self.gust()[1][:-8] + struct.pack("<d", 2.5)  # a period that no code sets
        self.rewrite_gust(entry)
        whole = self.saved.read_bytes()
        self.plug_in.rename(self.folder / "gone")
        self.refuses_saved(f"the plug-in {self.plug_in} cannot be loaded: {loader_reason(self.plug_in)}")
        done = self.set("gravity=-5")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertNotEqual(self.saved.read_bytes(), whole)
        self.assertEqual(self.gust()[1], entry)

        (self.folder / "gone").rename(self.plug_in)
        done = self.run_fountain("--records", self.saved, self.folder / "other")
        self.assertRegex(done.stdout, r"(?m)^gravity +PptyFloat +-5 ")
        self.assertRegex(done.stdout, r"(?m)^wind +GustPpty +\(2\.2, 0\.4, 0\) in ")
        self.assertIn(entry[25:], (self.folder / "other/scene.raw").read_bytes())
        self.assertEqual((self.folder / "other/bay.props").read_bytes(), self.saved.read_bytes())

    def test_are_unchanged_by_a_value_that_does_not_fit(self):
        whole = self.saved.read_bytes()
        for assignment, message in [("gravity=x", 'gravity: "x" is not a number'),
                                    ("speed=41 0 40", "speed: 41 is outside 0 .. 40"),
                                    ("wind=1 1 1", "the scene lacks the property wind"),
                                    ("none=1", "the scene lacks the property none")]:
            self.expect_refusal(self.set(assignment), f"{self.saved}: {message}")
        self.expect_refusal(self.run_fountain("--set", self.scene, "gravity=1"), f"{self.scene}: Not a property file")
        self.assertEqual(self.saved.read_bytes(), whole)

    def test_are_refused_if_the_record_of_the_plug_in_is_damaged(self):
        entry = self.gust()[1]
        self.rewrite_gust(entry[:17] + struct.pack("<Q", len(entry) - 25 - 3) + entry[25:-3])
        self.assertRegex(self.run_fountain(self.saved, self.out).stderr,
                         rf"^fountain: {self.saved}: entry \d+ \(GustPpty\): gustPeriod at byte \d+: "
                         "the data ends inside it\n$")

    def test_are_refused_if_a_text_would_be(self):
        whole = self.saved.read_bytes()
        entry = self.gust()[1]
        nan, huge = struct.pack("<f", float("nan")), struct.pack("<f", 2e9)
        value = len(entry) - 8 - 9 * 4
        for damaged, message in [(entry[:value] + nan + entry[value + 4:], 'wind: "nan" is not a number'),
                                 (entry[:-12] + huge + entry[-8:], "wind: 2e+09 is outside -1e+09 .. 1e+09"),
                                 (entry.replace(b"\5\0\0\0wind\0", b"\5\0\0\0tilt\0"), "tilt: given twice"),
                                 (entry.replace(b"GustPpty", b"LullPpty"),
                                  "unknown property class, or an older one than the file's: LullPpty")]:
            with self.subTest(message):
                self.saved.write_bytes(whole)
                self.rewrite_gust(damaged)
                self.refuses_saved(message)


class Writing(Fountain):
    def test_a_full_disk_under_standard_output(self):
        with open("/dev/full", "w") as full:
            for words in [("--help",), (self.scene, self.out)]:
                done = subprocess.run([fountain, *words], stdout=full, stderr=subprocess.PIPE, text=True)
                self.expect_refusal(done, "standard output: No space left on device")

    def test_a_file_that_the_disk_does_not_take(self):
        def limited():  # no file above 4,000 bytes; without the signal the call fails
            resource.setrlimit(resource.RLIMIT_FSIZE, (4000, 4000))
        done = self.run_fountain(self.scene, self.out, preexec_fn=limited, restore_signals=False)
        self.assertRegex(done.stderr, r"^fountain: .*\.(rec|png): cannot be written: File too large\n$")
        self.assertEqual(done.returncode, 1)
        self.expect_no_temporaries()

    def test_a_run_that_is_ended_by_a_signal(self):
        self.scene.write_text(small_scene(particles="20000"))
        for attempt in range(12):
            run = subprocess.Popen([fountain, self.scene, self.out], stdout=subprocess.DEVNULL)
            with contextlib.suppress(subprocess.TimeoutExpired):
                run.wait(0.02 + 0.007 * attempt)
            run.terminate()
            self.assertIn(run.wait(), (0, -signal.SIGTERM))
            self.expect_no_temporaries()

    def test_a_folder_that_cannot_be_created(self):
        self.out.write_text("a file")
        inside = self.out / "folder"
        self.expect_refusal(self.run_fountain(self.scene, inside), f"{inside}: cannot be created: Not a directory")

    def test_runs_at_once_in_one_folder(self):
        runs = [subprocess.Popen([fountain, self.scene, self.out], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                 text=True) for _ in range(6)]
        for run in runs:
            self.assertEqual((run.communicate()[1], run.returncode), ("", 0))
        self.assertEqual(self.verify().returncode, 0)
        self.expect_no_temporaries()


class Progress(Fountain):
    def on_terminal(self, *words):
        ours, theirs = pty.openpty()
        run = subprocess.Popen([fountain, *words], stdout=subprocess.PIPE, stderr=theirs)
        os.close(theirs)
        shown = b""
        try:
            while block := os.read(ours, 4096):
                shown += block
        except OSError:  # the terminal's end
            pass
        os.close(ours)
        run.communicate()
        self.assertEqual(run.returncode, 0)
        return shown.decode()

    def test_is_rewritten_in_place_on_a_terminal(self):
        shown = self.on_terminal(self.scene, self.out) + self.on_terminal("--verify", self.scene, self.frame(1))
        for work in ("drawing", "simulating", "verifying"):
            self.assertRegex(shown, rf"\r{work} \d+/\d+, \d+ s left")
        self.assertNotIn("\n", shown)
        self.assertRegex(shown, r"\r +\r$")

    def test_is_absent_in_a_pipe(self):
        self.assertNotIn("\r", self.simulate())  # which also expects an empty standard error stream


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
