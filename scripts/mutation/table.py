"""Proves the table of docs/intentional-behaviour.md: its tests fail if the behaviour changes."""
import json
import pathlib
import re

from mutation.build import CompileError, Planted

# Changes of the code, in the order of the page: `row` is the beginning of a row, or empty for another change of the row
# above; `search` is found exactly once in src/, in whichever file, where blanks and line ends match any white space. Only
# code is searched for, no comments, so that new wording and moved files leave a change valid.
MUTATIONS = [(m["row"], m["search"], m["replacement"])
             for m in json.loads(pathlib.Path(__file__).with_name("intentional.json").read_text())]


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
                problems.append(f"intentional.json: {len(fitting)} rows begin with: {start}")
        if row is not None:
            row.changes.append((search, replacement))
    for row in rows:
        if not row.changes:
            problems.append(f"intentional.json has no change for the row: {row.text[:60]}")
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


def filter_of(test):
    suite, name = test.split(".")
    return f"--gtest_filter={test}:{suite}/*.{name}"


def noticing(build, folder, file, text, tests, programs):
    """Returns which of the tests fail with this text of the file; a refusal by the compiler counts as all of them."""
    try:
        planted = Planted(build, folder, file, text)
        return {test for test in tests if planted.fails(programs[test], filter_of(test))}
    except CompileError as error:
        if not error.refused():
            raise
        return set(tests)


def prove(top, build, folder, wanted):
    """Makes each change and sees every named test fail for a change of its row. Returns the exit status."""
    rows, sources, programs, problems = check(top)
    rows = [row for row in rows if not wanted or any(row.text.startswith(start) for start in wanted)]
    original = Planted(build, folder)
    for test in sorted({test for row in rows for test in row.tests}):
        if original.fails(programs[test], filter_of(test)) or "[  PASSED  ] 0 tests" in original.said:
            problems.append(f"does not run or fails without any change: {test}")
    for row in rows if not problems else []:
        unnoticed = set(row.tests)
        for search, replacement in row.changes:
            path = place_of(search, sources)
            text = pattern_of(search).sub(lambda _, new=replacement: new, sources[path])
            try:
                unnoticed -= noticing(build, folder, str(path.relative_to(top)), text, sorted(unnoticed), programs)
            except CompileError as error:
                problems.append(f"does not compile: {search}\n{error}")
        problems += [f"notices no change: {test}: {row.text[:60]}" for test in sorted(unnoticed)]
        print(f"{'-' if unnoticed else '+'} {row.text[:90]}", *sorted(unnoticed), flush=True)
    print("\n".join(problems) or "every named test notices a change of its row")
    return 1 if problems else 0
