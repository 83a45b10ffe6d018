#!/usr/bin/env python3
"""Tests mrcommon-frames as a user meets it. Usage: frames.py <mrcommon-frames> <top of the tree> [<sanitizer>...]"""
import json
import os
import pathlib
import pty
import re
import resource
import signal
import subprocess
import sys
import time
import unittest

from program import NAME, TOOL, Program, run

SANITIZED = bool(sys.argv[3:])

signal.signal(signal.SIGINT, signal.default_int_handler)  # it may be ignored where the tests run in the background


class Frames(Program):
    def setUp(self):
        super().setUp()
        self.shot = self.folder("shot", {f"fluid.{i:04}.exr": 100 for i in (1, 2, 3, 5, 6)} | {"take_7.bin": 5, "notes.txt": 9})

    def folder(self, name, sizes):
        path = os.path.join(self.top, name)
        os.makedirs(path)
        for file, size in sizes.items():
            with open(os.path.join(os.fsencode(path), os.fsencode(file)), "wb") as out:
                out.write(b"x" * size)
        return path

    def test_lists_sequences(self):
        fluid, take = "fluid.####.exr  1-3 5-6  (missing 4)\n", "take_#.bin  7\n"
        self.gives(0, fluid + take, self.shot)
        self.gives(1, fluid, "--missing", self.shot)
        self.gives(0, fluid + take + "notes.txt\n", self.shot, "--others")
        whole = self.folder("whole", {"a.1.x": 1, "a.2.x": 1})
        self.gives(0, "", "--missing", whole)
        self.gives(0, f"{self.shot}/{fluid}{self.shot}/{take}{whole}/a.#.x  1-2\n", self.shot, whole)
        self.gives(0, "", self.folder("empty", {}))
        self.gives(0, "a.#.x  1\n", self.folder("[a,b]", {"a.1.x": 1}))

    def test_prints_json(self):
        status, output, errors = run("--json", "--others", self.shot)
        self.assertEqual((status, errors), (0, ""))
        lines = [json.loads(line) for line in output.splitlines()]
        self.assertEqual(list(lines[0].items()), [
            ("folder", self.shot), ("head", "fluid."), ("tail", ".exr"), ("padding", 4), ("first", 1), ("last", 6), ("count", 5),
            ("ranges", [[1, 3], [5, 6]]), ("missing", [[4, 4]])])
        self.assertEqual(lines[1]["missing"], [])
        self.assertEqual(lines[2:], [{"folder": self.shot, "other": "notes.txt"}])

    def test_checks_sizes(self):
        sizes = [900, 0, 100, 90, 1100, 110, 10, 120, 5000, 4000, 40000]
        odd = self.folder("odd", {f"f.{i:02}.x": size for i, size in enumerate(sizes)} | {"twin.1": 10, "twin.2": 99, "one.1": 1})
        faults = ["f.01.x  empty", "f.04.x  1100 bytes beside 90 and 110", "f.06.x  10 bytes beside 110 and 120"]
        self.gives(1, "\n".join(faults) + "\n", "--check", odd)
        pair = self.folder("pair", {"p.1": 10, "p.2": 100, "q.1": 20, "q.2": 20, "q.3": 200, "r.1": 0})
        self.gives(1, "p.1  10 bytes beside 100\np.2  100 bytes beside 10\nq.3  200 bytes beside 20 and 20\nr.1  empty\n", "--check", pair)
        self.gives(0, "", "--check", self.shot)
        self.gives(1, "fluid.####.exr  1-3 5-6  (missing 4)\n", "--check", "--missing", self.shot)
        status, output, _ = run("--check", "--json", odd)
        self.assertEqual((status, [json.loads(line) for line in output.splitlines()][:2]), (1, [
            {"folder": odd, "file": "f.01.x", "size": 0, "beside": []},
            {"folder": odd, "file": "f.04.x", "size": 1100, "beside": [90, 110]}]))
        os.symlink("gone", os.path.join(self.shot, "fluid.0004.exr"))
        self.complains(1, f"{self.shot}/fluid.0004.exr: No such file or directory", "--check", self.shot)

    def test_passes_options_on(self):
        names = b"a_-3.x\nb_v2.x\nc.4.tar.gz\nd5.tar.xz\n"
        self.gives(0, "a_-#.x  3\nb_v#.x  2\n", "-", input=names)
        self.gives(0, "a_##.x  -3\nb_v#.x  2\n", "--negative", "-", input=names)
        self.gives(0, "a_-#.x  3\n", "--versions-are-names", "-", input=names)
        self.gives(0, "a_-#.x  3\nb_v#.x  2\nc.#.tar.gz  4\nd#.tar.xz  5\n", "--extension", "tar.gz", "--extension=tar.xz", "-", input=names)

    def test_reads_names(self):
        self.gives(0, "./d/a.#.x  1-2\nb#  7\n", "-", input=b"./d/a.1.x\n\nb7\n./d/a.2.x")
        self.gives(0, "", "--check", "-", cwd=self.shot, input=b"take_7.bin\nfluid.0001.exr\n")
        self.complains(1, "take_8.bin: No such file or directory", "--check", "-", cwd=self.shot, input=b"take_8.bin\n")
        with open(os.devnull, "wb") as unreadable:
            self.complains(1, "-: Bad file descriptor", "-", stdin=unreadable)

    def test_survives_every_name(self):
        strange = self.folder("strange", {"ü\n.1.x": 1, "b\udcff\x1b.1.x": 1, "q\"\\.1.x": 1})
        self.gives(0, "b\udcff\\x1b.#.x  1\nq\"\\x5c.#.x  1\nü\\x0a.#.x  1\n", strange)
        heads = [json.loads(line)["head"] for line in run("--json", strange)[1].splitlines()]
        self.assertEqual(heads, ["b\ufffd\x1b.", "q\"\\.", "ü\n."])

    def test_refuses_wrong_usage_in_one_line(self):
        see = f"(see {NAME} --help)"
        self.complains(2, f"FOLDER is required {see}")
        self.complains(2, f"The following argument was not expected: --jsn {see}", "--jsn", self.shot)
        for wrong in (["--extension"], ["--json=maybe", "x"], ["--others\n", "x"]):
            self.refuses(*wrong)

    def test_reports_folders_and_goes_on(self):
        none, file = self.top + "/none", self.shot + "/notes.txt"
        status, output, errors = run(none, self.shot, file)
        self.assertEqual((status, output.splitlines()[1]), (1, f"{self.shot}/take_#.bin  7"))
        self.assertEqual(errors, f"{NAME}: {none}: No such file or directory\n{NAME}: {file}: Not a directory\n")

    def test_reports_folders_without_permission(self):
        closed = self.folder("closed", {})
        os.chmod(closed, 0)
        os.chmod(self.top, 0o755)
        nobody = {"user": 65534} if os.getuid() == 0 else {}
        try:
            self.complains(1, f"{closed}: Permission denied", closed, **nobody)
        except PermissionError:
            self.skipTest("only root may reach the program")

    def test_reports_output_that_cannot_be_written(self):
        for arguments in (["--help"], [self.shot], ["--json", self.shot]):
            with open("/dev/full", "wb") as full:
                done = subprocess.run([TOOL, *arguments], stdout=full, stderr=subprocess.PIPE, timeout=60)
            self.assertEqual((done.returncode, done.stderr.decode()), (1, f"{NAME}: standard output: No space left on device\n"))

    def test_ends_silently_with_a_closed_pipe(self):
        for ignored in (False, True):
            reader, writer = os.pipe()
            os.close(reader)
            done = subprocess.run([TOOL, self.shot], stdout=writer, stderr=subprocess.PIPE, timeout=60, restore_signals=not ignored)
            os.close(writer)
            self.assertEqual((done.returncode, done.stderr), (-signal.SIGPIPE, b""))

    def test_ends_with_130_after_an_interrupt(self):
        names = "".join(f"{i}.head.1.x\n" for i in range(1000)).encode()
        for before in (b"", names):  # waiting for the first name, then for the next
            process = subprocess.Popen([TOOL, "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            process.stdin.write(before)
            process.stdin.flush()
            self.wait_until_asleep(process.pid)
            process.send_signal(signal.SIGINT)
            process.wait(60)
            self.assertEqual((process.returncode, process.stdout.read(), process.stderr.read()), (130, b"", b""))
            process.stdin.close()
            process.stdout.close()
            process.stderr.close()

    def test_ignores_interrupts_where_its_parent_does(self):
        process = subprocess.Popen([TOOL, "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                   preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_IGN))
        self.wait_until_asleep(process.pid)
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.communicate(b"a.1.x\n", timeout=60), (b"a.#.x  1\n", None))
        self.assertEqual(process.returncode, 0)

    def test_prints_whole_lines_only_before_an_interrupt(self):
        names = "".join(f"{i:05}{'long' * 20}.1.x\n" for i in range(5000)).encode()
        process = subprocess.Popen([TOOL, "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        process.stdin.write(names)
        process.stdin.close()
        self.wait_until_asleep(process.pid)  # in the output, since nobody reads the pipe
        process.send_signal(signal.SIGINT)
        output = process.stdout.read().decode()
        self.assertEqual(process.wait(60), 130)
        process.stdout.close()
        lines = output.split("\n")
        self.assertEqual(lines.pop(), "")
        self.assertTrue(0 < len(lines) < 5000)
        self.assertTrue(all(re.fullmatch(r"\d{5}(long){20}\.#\.x  1", line) for line in lines))

    def wait_until_asleep(self, pid):
        """Waits until the process has done what it can and waits for its pipe."""
        looks = 0
        for _ in range(1000):
            time.sleep(0.02)
            state = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0]
            looks = looks + 1 if state == "S" else 0
            if looks == 5:
                return
        self.fail("never waits for its pipe")

    def test_shows_progress_on_a_terminal_only(self):
        names = b"a.1.x\n" * 2500
        self.gives(0, "a.#.x  1\n", "-", input=names)
        terminal, end = pty.openpty()
        done = subprocess.run([TOOL, "-"], input=names, stdout=subprocess.PIPE, stderr=end, timeout=60)
        os.close(end)
        shown = b""
        try:
            while part := os.read(terminal, 4096):
                shown += part
        except OSError:  # how Linux reports that the other end is closed
            pass
        os.close(terminal)
        self.assertEqual(done.stdout, b"a.#.x  1\n")
        self.assertEqual(shown, b"\r\033[K-: 1000 names\r\033[K-: 2000 names\r\033[K")

    @unittest.skipIf(SANITIZED, "sanitizers need memory of their own")
    def test_needs_at_most_32_bytes_a_frame(self):
        count = 17000  # just past a power of two, where a growing list holds most
        few, many = (self.folder(f"with{n}", {f"fluid.{i:05}.exr": 0 for i in range(n)}) for n in (1, count))

        def succeeds(folder, kilobytes):
            limit = kilobytes * 1024
            done = subprocess.run([TOOL, "--missing", folder], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                  preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_DATA, (limit, limit)))
            return done.returncode == 0

        little, enough = 64, 64 * 1024
        self.assertTrue(succeeds(few, enough))
        while little + 4 < enough:
            middle = (little + enough) // 2
            little, enough = (little, middle) if succeeds(few, middle) else (middle, enough)
        self.assertFalse(succeeds(many, enough))
        self.assertTrue(succeeds(many, enough + count * 32 // 1024))


del Program  # its tests run for each program
unittest.main(argv=sys.argv[:1])
