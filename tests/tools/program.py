"""What the tests of both programs share: running the program, and the answers to expect."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

TOOL, TOP = sys.argv[1], pathlib.Path(sys.argv[2])
NAME = os.path.basename(TOOL)


def run(*arguments, **options):
    """Returns the exit status, the standard output and the standard error stream."""
    done = subprocess.run([TOOL, *arguments], capture_output=True, timeout=120, **options)
    return done.returncode, done.stdout.decode(errors="surrogateescape"), done.stderr.decode(errors="surrogateescape")


class Program(unittest.TestCase):
    def setUp(self):
        memory = "/dev/shm"  # thousands of files take seconds on a disk
        kept = tempfile.TemporaryDirectory(dir=memory if os.path.isdir(memory) else None)
        self.addCleanup(kept.cleanup)
        self.top = kept.name

    def gives(self, status, output, *arguments, **options):
        self.assertEqual(run(*arguments, **options), (status, output, ""))

    def complains(self, status, message, *arguments, output="", **options):
        self.assertEqual(run(*arguments, **options), (status, output, f"{NAME}: {message}\n"))

    def refuses(self, *arguments):
        """The usage is wrong, which one line says."""
        status, output, errors = run(*arguments)
        self.assertEqual((status, output), (2, ""), arguments)
        self.assertRegex(errors, rf"^{NAME}: [^\n]*see {NAME} --help\)?\n$")

    def test_prints_help_and_version(self):
        self.assertRegex(run("--version")[1], rf"^{NAME} \d+\.\d+\.\d+\n$")
        status, help_text, errors = run("--help")
        self.assertEqual((status, errors), (0, ""))
        options = set(re.findall(r"(?<![\w-])--[a-z-]+", help_text))
        self.assertGreaterEqual(options, {"--json", "--help", "--version"})
        page = (TOP / f"docs/man/{NAME}.1").read_text().replace(r"\-", "-")
        for text in (page, *((TOP / "tools/completion" / file).read_text() for file in (NAME + ".bash", "_" + NAME))):
            self.assertEqual(set(re.findall(r"(?<![\w-])--[a-z-]+", text)), options)
