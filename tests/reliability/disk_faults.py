#!/usr/bin/env python3
"""Programs meet a full disk at every call that writes, folders that must not be written, and damaged input.
Usage: disk_faults.py FAILING_CALLS FOUNTAIN SCENE RECORDS FRAMES TESTS [TEST]...
FAILING_CALLS is the library that makes calls fail, empty in a build with sanitizers; TESTS is the folder tests."""
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
golden = pathlib.Path(tests) / "properties" / "golden"
property_file = pathlib.Path(tests) / "properties" / "scene.props"


def run(*words, **options):
    return subprocess.run(list(map(str, words)), capture_output=True, timeout=60, errors="surrogateescape", **options)


def small_scene(**changes):
    """The example scene with few particles, frames and pixels, without comments; changes replace whole values."""
    values = {"particles": "3", "frames": "2", "pictureSize": "320", **changes}
    lines = [line for line in pathlib.Path(scene_file).read_text().splitlines() if line and not line.startswith("#")]
    return "\n".join(re.sub(r"^(\w+\s+)(\w+)(\s+).*", lambda m: m[1] + m[2] + m[3] + values[m[2]], line)
                     if line.split()[1] in values else line for line in lines) + "\n"


def content(folder):
    return {str(p.relative_to(folder)): p.read_bytes() for p in folder.rglob("*") if p.is_file()}


class Faults(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.scene, self.out = self.folder / "bay.scene", self.folder / "out"

    def simulate(self, **changes):
        self.scene.write_text(small_scene(**changes))
        self.assertEqual(run(fountain, self.scene, self.out).returncode, 0)

    def expect_answer(self, done, program):
        """Success, or a failure with one line."""
        self.assertIn(done.returncode, (0, 1, 2), done)
        if done.returncode != 0:
            self.assertRegex(done.stderr, rf"\A{program}: [^\n]+\n\Z")

    def failing(self, *words):
        """Runs a program again and again, each time with another call that fails."""
        count = self.folder / "count"
        environment = {**os.environ, "LD_PRELOAD": failing_calls, "CALL_COUNT": str(count)}
        whole = run(*words, env=environment)
        self.assertEqual((whole.returncode, whole.stderr), (0, ""))
        for call in range(int(count.read_text())):
            with self.subTest(call=call):
                yield whole, run(*words, env={**environment, "FAILING_CALL": str(call)})


@unittest.skipUnless(failing_calls, "a sanitizer must be loaded before every other library")
class FailingCalls(Faults):
    def test_the_example_host(self):
        old, new = self.folder / "old", self.folder / "new"
        self.simulate(frames="1")
        self.out.rename(old)
        self.simulate(tilt="1")
        self.out.rename(new)
        before, after = content(old), content(new)
        failures = 0
        shutil.copytree(old, self.out)
        for _, done in self.failing(fountain, self.scene, self.out):
            self.expect_answer(done, "fountain")
            found = content(self.out)
            if done.returncode == 0:
                self.assertEqual(found, after)
            else:
                failures += 1
                self.assertRegex(done.stderr, "No space left on device\n$")
                for name, data in found.items():
                    self.assertIn(data, (before.get(name), after.get(name)), f"{name} is neither old nor new")
                self.assertEqual(before.keys() - found.keys(), set(), "an old file is lost")
            shutil.rmtree(self.out)
            shutil.copytree(old, self.out)
        self.assertGreater(failures, 20)

    def test_the_programs(self):
        (self.folder / "a.0001.exr").touch()
        for name, words in [("mrcommon-records", (records, "--kinds", "PptyEnum", golden / "PptyEnum.raw")),
                            ("mrcommon-records", (records, property_file)), ("mrcommon-frames", (frames, self.folder))]:
            failures = 0
            for whole, done in self.failing(*words):
                self.expect_answer(done, name)
                if done.returncode == 0:
                    self.assertEqual(done.stdout, whole.stdout)
                else:
                    failures += 1
            self.assertGreater(failures, 0, words)


class FullDisks(Faults):
    def test_every_kind_of_file_of_the_example_host(self):
        self.simulate()
        whole = content(self.out)
        for limit in (0, 1, 100, 300, 1000, 4096):
            shutil.rmtree(self.out)
            done = run(fountain, self.scene, self.out, restore_signals=False,
                       preexec_fn=lambda most=limit: resource.setrlimit(resource.RLIMIT_FSIZE, (most, most)))
            self.expect_answer(done, "fountain")
            self.assertRegex(done.stderr, "File too large\n$")
            for name, data in content(self.out).items():
                self.assertEqual(data, whole[name])


class Modes(Faults):
    def test_what_may_not_be_read_or_written(self):
        if os.geteuid() == 0:
            self.skipTest("root may read and write everything")
        self.scene.write_text(small_scene())
        self.out.mkdir(mode=0o555)
        done = run(fountain, self.scene, self.out)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertRegex(done.stderr, r"\Afountain: [^\n]+: Permission denied\n\Z")
        self.scene.chmod(0)
        self.assertEqual(run(fountain, self.scene, self.out).stderr, f"fountain: {self.scene}: Permission denied\n")
        for words in [(records, "--kinds", "PptyInt", self.scene), (records, self.scene)]:
            self.assertRegex(run(*words).stderr, r"\A[^\n]+: Permission denied\n\Z")
        self.out.chmod(0)
        self.assertRegex(run(frames, self.out).stderr, r"\A[^\n]+: Permission denied\n\Z")
        self.out.chmod(0o755)


class Damage(Faults):
    def test_every_byte_of_a_frame(self):
        """Each frame of a run has another byte flipped, and all are named."""
        self.simulate(particles="1", frames="1")
        size = next((self.out / "frames").glob("bay_fountain*.rec")).stat().st_size
        self.simulate(particles="1", frames=str(size))
        names = sorted((self.out / "frames").glob("bay_fountain*.rec"))
        for at, frame in enumerate(names):
            data = bytearray(frame.read_bytes())
            data[at % len(data)] ^= 1  # a later frame may be longer than the first
            frame.write_bytes(data)
        done = run(fountain, "--verify", self.scene, names[0])
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.count("\n"), size + 1)
        self.assertIn(f"{size} faults in its {size} frames", done.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[7:])
