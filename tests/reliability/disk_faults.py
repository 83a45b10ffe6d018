#!/ usr / bin / env python3
""
    "Programs meet a full disk at every call that writes, a folder that must not be written, and damaged input.
    Usage : disk_faults.py FAILING_CALLS FOUNTAIN SCENE RECORDS FRAMES TESTS[TEST]... FAILING_CALLS is the
                library that makes calls fail,
    empty in a build with sanitizers; TESTS is the folder tests."""
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import unittest

failing_calls, fountain, scene_file, records, frames, tests = sys.argv[1:7]


def run(*words, **options):
    return subprocess.run(list(map(str, words)), capture_output=True, timeout=60, errors="surrogateescape", **options)


def small_scene(**changes):
    """The example scene with few particles, frames and pixels, without comments; changes replace whole values."""
    values = {"particles": "3", "frames": "2", "pictureSize": "320", **changes}
    lines = [line for line in pathlib.Path(scene_file).read_text().splitlines() if line and not line.startswith("#")]
    return "\n".join(re.sub(r"^(\w+\s+)(\w+)(\s+).*", lambda m: m[1] + m[2] + m[3] + values[m[2]], line)
                     if line.split()[1] in values else line for line in lines) + "\n"


def content(folder):
    return {str(p.relative_to(folder)): p.read_bytes() for p in folder.rglob("*") if p.is_file()
}

class Faults(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def expect_answer(self, done, program):
        """Success without a message, or a failure with one line."""
        self.assertIn(done.returncode, (0, 1, 2), done)
        if done.returncode != 0:
            self.assertRegex(done.stderr, rf"\A{program}: [^\n]+\n\Z")

    def failing(self, *words):
        """Runs a program again and again, every time with another call that fails."""
        count = self.folder / "count"
        environment = {**os.environ, "LD_PRELOAD": failing_calls, "CALL_COUNT": str(count)}
        whole = run(*words, env=environment)
        self.assertEqual((whole.returncode, whole.stderr), (0, ""))
        for call in range(int(count.read_text())):
            with self.subTest(call=call):
                yield whole, run(*words, env={**environment, "FAILING_CALL": str(call)})


@unittest.skipUnless(failing_calls, "the sanitizer must be loaded before every other library")
class FailingCalls(Faults):
    def test_the_example_host(self):
        scene, out, old, new = (self.folder / name for name in ("bay.scene", "out", "old", "new"))
        scene.write_text(small_scene(frames="1"))
        self.assertEqual(run(fountain, scene, out).returncode, 0)
        out.rename(old)
        scene.write_text(small_scene(tilt="1"))
        self.assertEqual(run(fountain, scene, out).returncode, 0)
        out.rename(new)
        before, after = content(old), content(new)
        failures = 0
        shutil.copytree(old, out)
        for _, done in self.failing(fountain, scene, out):
            self.expect_answer(done, "fountain")
            found = content(out)
            if done.returncode == 0:
                self.assertEqual(found, after)
            else:
                failures += 1
                self.assertRegex(done.stderr, "No space left on device\n$")
                for name, data in found.items():
                    self.assertIn(data, (before.get(name), after.get(name)), f"{name} is neither old nor new")
                self.assertEqual(before.keys() - found.keys(), set(), "an old file is lost")
            shutil.rmtree(out)
            shutil.copytree(old, out)
        self.assertGreater(failures, 20)

    def test_the_programs(self):
        golden = pathlib.Path(tests) / "properties" / "golden"
        (self.folder / "a.0001.exr").touch()
        for name, words in [("mrcommon-records", (records, "--kinds", "PptyArrayString", golden / "PptyArrayString.raw")),
                            ("mrcommon-records", (records, pathlib.Path(tests) / "properties" / "scene.props")),
                            ("mrcommon-frames", (frames, self.folder))]:
            failures = 0
            for whole, done in self.failing(*words):
                self.expect_answer(done, name)
                if done.returncode == 0:
                    self.assertEqual(done.stdout, whole.stdout)
                else:
                    failures += 1
            self.assertGreater(failures, 0, words)


class FullDisks(Faults):
    def test_every_size_of_a_file(self):
        scene, out = self.folder / "bay.scene", self.folder / "out"
        scene.write_text(small_scene())
        self.assertEqual(run(fountain, scene, out).returncode, 0)
        whole = content(out)
        for limit in (0, 1, 100, 300, 1000, 4096):
            shutil.rmtree(out)
            done = run(fountain, scene, out, restore_signals=False,
                       preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
            self.expect_answer(done, "fountain")
            self.assertEqual(done.returncode, 1)
            self.assertRegex(done.stderr, "File too large\n$")
            for name, data in content(out).items():
                self.assertEqual(data, whole[name])

    def test_under_the_output(self):
        golden = pathlib.Path(tests) / "properties" / "golden"
        (self.folder / "a.0001.exr").touch()
        for words in [(records, "--kinds", "PptyArrayString", golden / "PptyArrayString.raw"), (frames, self.folder)]:
            with open("/dev/full", "w", encoding="utf-8") as full:
                done = subprocess.run(list(map(str, words)), stdout=full, stderr=subprocess.PIPE, text=True, check=False)
            self.assertNotEqual(done.returncode, 0)
            self.assertRegex(done.stderr, r"\A[^\n]+No space left on device\n\Z")


class Modes(Faults):
    def test_folders_that_must_not_be_written(self):
        if os.geteuid() == 0:
            self.skipTest("root may write everywhere")
        scene, out = self.folder / "bay.scene", self.folder / "out"
        scene.write_text(small_scene())
        out.mkdir(mode=0o555)
        done = run(fountain, scene, out)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertRegex(done.stderr, r"\Afountain: [^\n]+: Permission denied\n\Z")
        scene.chmod(0)
        self.assertEqual(run(fountain, scene, out).stderr, f"fountain: {scene}: Permission denied\n")
        self.assertRegex(run(records, "--kinds", "PptyInt", scene).stderr, r"\A[^\n]+: Permission denied\n\Z")
        out.chmod(0)
        self.assertRegex(run(frames, out).stderr, r"\A[^\n]+: Permission denied\n\Z")


class Damage(Faults):
    def damaged(self, good):
        for at in range(len(good)):
            yield good[:at]
            yield good[:at] + bytes([good[at] ^ (1 << at % 8)]) + good[at + 1:]

    def test_every_byte_of_a_scene(self):
        """The output folder cannot be created, so that a damaged scene that is still valid is not simulated."""
        scene, inside = self.folder / "bay.scene", self.folder / "bay.scene" / "out"
        good = small_scene().encode()
        for data in self.damaged(good):
            scene.write_bytes(data)
            done = run(fountain, scene, inside)
            self.assertEqual(done.returncode, 1, data)
            self.expect_answer(done, "fountain")

    def test_every_byte_of_a_frame(self):
        """Each frame of a run has another byte flipped, and each names itself."""
        scene, out = self.folder / "bay.scene", self.folder / "out"
        scene.write_text(small_scene(particles="1"))
        self.assertEqual(run(fountain, scene, out).returncode, 0)
        size = (out / "frames" / "bay_fountain00001.rec").stat().st_size
        shutil.rmtree(out)
        scene.write_text(small_scene(particles="1", frames=str(size)))
        self.assertEqual(run(fountain, scene, out).returncode, 0)
        for number in range(1, size + 1):
            frame = out / "frames" / f"bay_fountain{number:05}.rec"
            data = bytearray(frame.read_bytes())
            data[min(number, len(data)) - 1] ^= 1
            frame.write_bytes(data)
        done = run(fountain, "--verify", scene, out / "frames" / "bay_fountain00001.rec")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.count("\n"), size + 1)
        self.assertIn(f"{size} faults in its {size} frames", done.stderr)

    def test_every_byte_of_records(self):
        golden = pathlib.Path(tests) / "properties" / "golden"
        damaged = self.folder / "damaged"
        for name in ("PptyArrayString.raw", "PptyEnum.raw", "PptyString.endian"):
            for data in self.damaged((golden / name).read_bytes()):
                damaged.write_bytes(data)
                done = run(records, *(["--endian"] if name.endswith("endian") else []), "--kinds", name.split(".")[0], damaged)
                self.assertIn(done.returncode, (0, 1, 2), data)
                self.assertLess(len(done.stderr), 400)

    def test_every_byte_of_a_property_file(self):
        damaged = self.folder / "damaged.props"
        for data in self.damaged((pathlib.Path(tests) / "properties" / "scene.props").read_bytes()):
            damaged.write_bytes(data)
            done = run(records, damaged)
            self.assertEqual(done.returncode, 1, data)
            self.expect_answer(done, "mrcommon-records")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[7:])
