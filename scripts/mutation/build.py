"""Builds a copy of the tree once, and beside it only what a changed file of src/ changes."""
import filecmp
import glob
import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import sys
import time


class CompileError(Exception):
    def refused(self):
        """Returns whether the compiler noticed the fault by an assertion, not by a mistake of grammar."""
        return "static assertion failed" in str(self) or "static_assert failed" in str(self)


def copy_if_changed(source, target):
    """A kept modification time could be older than an object that was compiled from another state of the file."""
    if not os.path.exists(target) or not filecmp.cmp(source, target, shallow=False):
        shutil.copyfile(source, target)
        shutil.copymode(source, target)


def compiled(argv, directory):
    run = subprocess.run(argv, cwd=directory, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
    if run.returncode != 0:
        raise CompileError(run.stdout)


class Build:
    """An unoptimised build of a copy of the tree. Nothing in it changes once it is built."""

    def __init__(self, top, folder, jobs, sanitizer="", only=""):
        self.tree, self.folder = folder / "tree", folder / "build"
        shutil.copytree(top, self.tree, dirs_exist_ok=True, copy_function=copy_if_changed,
                        ignore=shutil.ignore_patterns("build", ".git", "__pycache__"))
        off = ["BUILD_EXAMPLES", "BUILD_BENCHMARKS", "BUILD_TOOLS", "BUILD_DOCS", "WERROR", "INSTALL"]
        subprocess.run(["cmake", "-S", self.tree, "-B", self.folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                        "-DCMAKE_CXX_FLAGS=-O0", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", f"-DMRCOMMON_SANITIZE={sanitizer}",
                        *(f"-DMRCOMMON_{option}=OFF" for option in off)], check=True, stdout=subprocess.DEVNULL)
        programs = self.targets(r"((?:tests|fuzz)/(?:\w+_test|\w+_replay|damaged_length)): CXX_EXECUTABLE")
        self.programs = {target.split("/")[1]: target for target in programs if only in ("", target.split("/")[1])}
        self.libraries = self.targets(r"(src/lib\S+): CXX_SHARED_LIBRARY")
        subprocess.run(["ninja", f"-j{jobs}", "-C", self.folder, *self.programs.values(), "test_plugin", "test_plugin_unbound"],
                       check=True, stdout=subprocess.DEVNULL)
        commands = [shlex.split(entry["command"])
                    for entry in json.loads((self.folder / "compile_commands.json").read_text())]
        self.compiles = {words[words.index("-o") + 1]: words for words in commands}
        self.links = {target: self.link_of(target) for target in [*self.programs.values(), *self.libraries]}
        self.users = self.users_of_files()
        self.symbols = {name: self.symbols_of(name) for name in self.compiles if (self.folder / name).exists()}
        self.precompiled = self.precompile()
        self.seconds = {}

    def ninja(self, *words):
        return subprocess.run(["ninja", "-C", self.folder, *words], check=True, stdout=subprocess.PIPE, text=True).stdout

    def targets(self, pattern):

        return sorted(re.findall(f"^{pattern}", self.ninja("-t", "targets", "all"), re.M))

    def link_of(self, target):
        """Returns the command that links the target, without the shell's additions."""
        line = [line for line in self.ninja("-t", "commands", target).splitlines() if f" -o {target} " in line][-1]
        words = shlex.split(line)
        start = words.index("&&") + 1
        return words[start:words.index("&&", start)]

    def users_of_files(self):
        """Returns the objects that were compiled from each file of the tree."""
        users, current = {}, None
        for line in self.ninja("-t", "deps").splitlines():
            if line.startswith(" "):
                path = os.path.normpath(self.folder / line.strip())
                users.setdefault(path, set()).add(current)
            else:
                current = line.split(":")[0]
        return users

    def symbols_of(self, name):
        return subprocess.run(["nm", "-C", self.folder / name], check=True, stdout=subprocess.PIPE, text=True).stdout

    def containing(self, file, function):
        """Returns the objects that contain code of a function in a file: without optimisation each has its symbol."""
        users = self.users.get(str(self.tree / file), set())
        symbol = re.compile(rf"(?<![\w~]){re.escape(function)}(\[[^]]*\])? ?[<(]")
        return {name for name in users if not function or symbol.search(self.symbols[name])}

    def precompile(self):
        """Compiles GoogleTest's header, which takes longer than most tests; returns the options of the tests that use it."""
        header = self.folder / "precompiled.h"
        header.write_text("#include <gtest/gtest.h>\n")
        tests = [name for name in self.compiles if name.endswith("_test.cpp.o") and "GTEST_HAS_PTHREAD" in str(self.compiles[name])]
        words = list(self.compiles[tests[0]])
        words[-2:] = ["-x", "c++-header", str(header)]
        words[words.index("-o") + 1] = f"{header}.gch"
        compiled(words, self.folder)
        return {test: ["-include", str(header)] for test in tests}

    def arguments(self, program):
        """Returns the arguments of a test program, or the seeds of a fuzz target."""
        if program.startswith("fuzz_"):
            return [self.tree / "fuzz/corpus" / program.removeprefix("fuzz_").removesuffix("_replay")]
        return ["--gtest_brief=1"]

    def limit(self, program):
        """Returns after how many seconds a program counts as failed."""
        return 20 + 10 * self.seconds.get(program, 10)

    def measure(self, folder):
        """Runs every program without a fault; returns those that fail."""
        original, failing = Planted(self, folder), []
        for program in self.programs:
            start = time.monotonic()
            if original.fails(program):
                failing.append(program)
            self.seconds[program] = time.monotonic() - start
        return failing

class Planted:
    """The libraries and test programs with another text of a file, which differs only in the function if one is given."""

    def __init__(self, build, folder, file="", text="", function=""):
        self.build, self.folder, self.file = build, folder, file
        shutil.rmtree(folder, ignore_errors=True)
        (folder / "run").mkdir(parents=True)
        self.changed = set()  # the objects to compile
        if file:
            path = folder / file
            path.parent.mkdir(parents=True)
            path.write_text(text)
            self.changed = build.containing(file, function)
        self.binaries = {}
        for library in build.libraries:
            self.link(library, lambda words: next(w for w in words if w.startswith("-Wl,-soname,")).split(",")[2])

    def order(self):
        """Returns the programs in the order in which they may be expected to notice the change at least cost."""
        path = pathlib.PurePath(self.file)

        def key(program):
            near = any((self.build.tree / "tests" / part / f"{program}.cpp").exists() for part in path.parts)
            ready = self.changed.isdisjoint(self.build.links[self.build.programs[program]])
            return program != f"{path.stem}_test", not near, not ready, self.build.seconds.get(program, 0)
        return sorted(self.build.programs, key=key)

    def link(self, target, name_of):
        words = self.build.links[target]
        if self.changed.isdisjoint(words):
            return self.build.folder / target
        objects = [word for word in words if word in self.changed]
        words = [word for word in words if word not in objects[1:]]
        words[words.index(objects[0])] = self.compile(objects)
        binary = self.folder / name_of(words)
        words[words.index("-o") + 1] = str(binary)
        compiled(words, self.build.folder)
        return binary

    def compile(self, names):
        """Compiles the sources of objects that have the same options, as one source if there are several."""
        sources = []
        for name in names:
            source = pathlib.Path(self.build.compiles[name][-1])
            planted = self.folder / source.relative_to(self.build.tree)
            sources.append(planted if planted.exists() else source)
        path = self.folder / names[0].replace("/", "_")
        words = list(self.build.compiles[names[0]])
        if len(sources) > 1:
            words[-1] = str(path.with_suffix(".cpp"))
            path.with_suffix(".cpp").write_text("".join(f'#include "{source}"\n' for source in sources))
        else:
            words[-1] = str(sources[0])
        words[words.index("-o") + 1] = str(path)
        words[1:1] = [f"-I{self.folder / 'src'}", *self.build.precompiled.get(names[0], [])]
        compiled(words, self.build.folder)
        return str(path)

    def fails(self, program, *arguments):
        """Returns whether the program fails, in a folder of its own and with bounded time, memory and file sizes."""
        if program not in self.binaries:
            self.binaries[program] = self.link(self.build.programs[program], lambda _: program)
        limits = [] if any("-fsanitize" in word for word in self.build.links[self.build.programs[program]]) else ["--as=8589934592"]
        run = subprocess.Popen(
            ["prlimit", "--core=0", "--fsize=1073741824", *limits, self.binaries[program],
             *self.build.arguments(program), *arguments],
            cwd=self.folder / "run", env={**os.environ, "LD_LIBRARY_PATH": str(self.folder), "GTEST_FAIL_FAST": "1"},
            start_new_session=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        try:
            self.said = run.communicate(timeout=self.build.limit(program))[0].decode(errors="replace")
        except subprocess.TimeoutExpired:
            self.said = "it ran too long"
        finally:
            try:
                os.killpg(run.pid, signal.SIGKILL)  # also what the program started
            except ProcessLookupError:
                pass
            run.wait()
        for left in glob.glob(f"/dev/shm/mrcommon-{run.pid}-*"):
            shutil.rmtree(left, ignore_errors=True)
        return run.returncode != 0
