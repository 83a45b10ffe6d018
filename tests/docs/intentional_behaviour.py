#!/usr/bin/env python3
"""Checks that each row of docs/intentional-behaviour.md names tests that fail if the behaviour changes.
    intentional_behaviour.py check <top of the tree>              the tests exist, the changes can be made; fast
    intentional_behaviour.py prove <top of the tree> <scratch> [<row>...]
                                                                  makes each change in a copy of the tree and sees
                                                                  every named test fail for a change of its row
"""
import json
import pathlib
import re
import shutil
import subprocess
import sys

# Changes of the code, in the order of the page: `row` is the beginning of a row, or empty for another change of the row
# above; `search` is found exactly once in src/, in whichever file, where blanks and line ends match any white space. Only
# code is searched for, no comments, so that new wording and moved files leave a change valid.
MUTATIONS = [(m["row"], m["search"], m["replacement"])
             for m in json.loads(pathlib.Path(__file__).with_name("mutations.json").read_text())]


class Row:
    def __init__(self, line):
        self.text = line.strip("| \n")
        self.tests = re.findall(r"`([A-Za-z_]\w*\.\w+)`", line.rsplit(" | ", 1)[1])
        self.changes = []


def rows_of(top):
    """Returns the rows of the page with the changes that belong to them, and the complaints about either."""
    lines = (top / "docs/intentional-behaviour.md").read_text().splitlines()
    rows = [Row(line) for line in lines if line.startswith("| ") and not line.startswith("| What ")]
    problems, row = [], None
    for start, search, replacement in MUTATIONS:
        if start:
            fitting = [r for r in rows if r.text.startswith(start)]
            row = fitting[0] if len(fitting) == 1 else None
            if row is None:
                problems.append(f"mutations.json: {len(fitting)} rows begin with: {start}")
        if row is not None:
            row.changes.append((search, replacement))
    for row in rows:
        if not row.changes:
            problems.append(f"mutations.json has no change for the row: {row.text[:60]}")
        if not row.tests:
            problems.append(f"no test is named in the row: {row.text[:60]}")
    return rows, problems


def pattern_of(search):
    return re.compile(r"\s+".join(re.escape(word) for word in search.split()))


def place_of(search, sources):
    """Returns the only file that contains the text exactly once, else None."""
    found = {path: len(pattern_of(search).findall(text)) for path, text in sources.items()}
    places = [path for path, count in found.items() if count == 1]
    return places[0] if len(places) == 1 and sum(found.values()) == 1 else None


def programs_of(top):
    """Returns the test program of every test, by the test's name."""
    programs = {}
    for file in (top / "tests").rglob("*_test.cpp"):
        for suite, test in re.findall(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", file.read_text(), re.M):
            programs[f"{suite}.{test}"] = file.stem
    return programs


def check(top):
    rows, problems = rows_of(top)
    sources = {p: p.read_text() for p in sorted((top / "src").rglob("*")) if p.suffix in (".h", ".cpp")}
    programs = programs_of(top)
    for row in rows:
        problems += [f"no such test: {test}" for test in row.tests if test not in programs]
        problems += [f"not found exactly once in src/: {search}" for search, _ in row.changes if not place_of(search, sources)]
    if len(rows) < 50:
        problems.append(f"the page has only {len(rows)} rows")
    return rows, sources, programs, problems


class Copy:
    """A copy of the tree with an unoptimised build of its own."""

    def __init__(self, top, folder):
        self.top, self.build = folder / "tree", folder / "build"
        shutil.copytree(top, self.top, dirs_exist_ok=True, ignore=shutil.ignore_patterns("build", ".git"))
        options = ["EXAMPLES", "BENCHMARKS", "FUZZERS", "TOOLS", "DOCS"]
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        subprocess.run(
            ["cmake", "-S", self.top, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O0",
             "-DMRCOMMON_WERROR=OFF", "-DMRCOMMON_INSTALL=OFF", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", *launcher,
             *(f"-DMRCOMMON_BUILD_{option}=OFF" for option in options)],
            check=True, stdout=subprocess.DEVNULL)

    def make(self, programs):
        """Builds the programs; returns what the compiler says if it fails."""
        run = subprocess.run(["ninja", "-C", self.build, "MRCommon", "qn_basic", "qn_fileio", *sorted(programs)],
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        return run.stdout if run.returncode != 0 else ""

    def fails(self, program, test):
        suite, name = test.split(".")
        command = [self.build / "tests" / program, f"--gtest_filter={test}:{suite}/*.{name}"]
        try:
            run = subprocess.run(command, cwd=self.build / "tests", stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                 text=True, errors="replace", timeout=60)
        except subprocess.TimeoutExpired:
            return True
        if run.returncode == 0 and "[  PASSED  ] 0 tests" in run.stdout:
            sys.exit(f"{program} does not run {test}")
        return run.returncode != 0


def prove(top, scratch, wanted):
    rows, sources, programs, problems = check(top)
    if problems:
        return problems
    rows = [row for row in rows if not wanted or any(row.text.startswith(start) for start in wanted)]
    copy = Copy(top, scratch)
    failure = copy.make({programs[test] for row in rows for test in row.tests} | {"test_plugin"})
    if failure:
        return [f"the tree does not build\n{failure}"]
    problems += [f"fails without any change: {test}" for row in rows for test in row.tests if copy.fails(programs[test], test)]
    for row in rows:
        unnoticed = set(row.tests)
        for search, replacement in row.changes:
            file = place_of(search, sources)
            changed = copy.top / file.relative_to(top)
            changed.write_text(pattern_of(search).sub(lambda _: replacement, sources[file]))
            failure = copy.make({programs[test] for test in row.tests})
            if re.search("static assertion failed|static_assert failed", failure):
                unnoticed.clear()  # refused even earlier
            elif failure:
                problems.append(f"does not compile: {search}\n{failure}")
            else:
                unnoticed -= {test for test in unnoticed if copy.fails(programs[test], test)}
            changed.write_text(sources[file])
        problems += [f"notices no change: {test}: {row.text[:60]}" for test in sorted(unnoticed)]
        print(f"{'-' if unnoticed else '+'} {row.text[:90]}", *sorted(unnoticed), flush=True)
    return problems


top = pathlib.Path(sys.argv[2]).resolve()
if sys.argv[1] == "prove":
    found = prove(top, pathlib.Path(sys.argv[3]).resolve(), sys.argv[4:])
    if not found:
        print("every named test notices a change of its row")
else:
    found = check(top)[3]
    if not found:
        print("the tests of every row exist, and its changes can be made")
print("\n".join(found))
sys.exit(1 if found else 0)
