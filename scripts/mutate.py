#!/usr/bin/python3
"""Plants small faults into the sources, one at a time, and runs the tests that can notice them.

    mutate.py --seed 7 --count 300         faults of all kinds at places that the seed selects
    mutate.py --at src/a/b.cpp:12[:5]      all faults at a line or column
    mutate.py --change FILE OLD NEW        this change of a file
    mutate.py --table [ROW...]             proves docs/intentional-behaviour.md: every test that a row names fails for a
                                           change of the row (of all rows, or of those that begin with ROW)
    mutate.py --check                      the table's tests exist and its changes can be made; fast

Prints the faults that no test notices, with the lines before and after, and a closing count. Nothing is judged here: a
survivor is equivalent only if scripts/mutation/equivalent.json lists it with the reason. The exit status is 1 if less than
98 % of the others are noticed. Faults that do not compile are not counted, but a static assertion notices a fault.

The tree is copied and built unoptimised; a fault is compiled beside it, and only what contains the changed file. Tests run
in the order of their names and folders, the quick ones first, until one fails.
"""
import argparse
import concurrent.futures
import json
import pathlib
import queue
import random
import sys
import tempfile

from mutation.build import Build, CompileError, Planted
from mutation.table import check, prove

TOP = pathlib.Path(__file__).resolve().parent.parent
EQUIVALENT = pathlib.Path(__file__).parent / "mutation" / "equivalent.json"
LEAST = 98  # per cent


class Trial:
    """Plants faults in a build, several at once, and keeps the counts."""

    def __init__(self, build, scratch, jobs, verbose):
        self.build, self.verbose, self.jobs = build, verbose, jobs
        self.folders = queue.Queue()
        for job in range(jobs):
            self.folders.put(scratch / f"job{job}")
        self.equivalent = {(e["file"], e["line"], e["becomes"]) for e in json.loads(EQUIVALENT.read_text())}
        self.noticed = self.listed = self.survived = 0

    def noticed_by(self, fault, text):
        """Returns what notices the fault: a program, an assertion, "" if nothing does, or None if it does not compile."""
        folder = self.folders.get()
        try:
            planted = Planted(self.build, folder, fault.file, fault.planted_in(text), fault.function)
            for program in planted.order():
                if planted.fails(program):
                    return program
            return ""
        except CompileError as error:
            return "a static assertion" if error.refused() else None
        finally:
            self.folders.put(folder)

    def record(self, fault, text, noticed_by):
        """Returns whether the fault counts."""
        before, after = fault.lines(text)
        listed = (fault.file, before, after) in self.equivalent
        if noticed_by is None:
            verdict = "does not compile"
        elif noticed_by:
            self.noticed += 1
            verdict = f"noticed by {noticed_by}" + (", though listed as equivalent" if listed else "")
        elif listed:
            self.listed += 1
            verdict = "equivalent"
        else:
            self.survived += 1
            verdict = "SURVIVED"
        if self.verbose or verdict == "SURVIVED" or (noticed_by and listed):
            print("{}:{}:{}: {}: {}".format(fault.file, *fault.position(text), fault.kind, verdict))
            print(f"    - {before}\n    + {after}", flush=True)
        return noticed_by is not None

    def run(self, faults, count):
        """Plants faults until `count` of them compiled."""
        counted = 0
        texts = {fault.file: (self.build.tree / fault.file).read_text() for fault in faults}
        waiting = iter(faults)
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            running = {}
            while counted < count:
                while len(running) < count - counted and (fault := next(waiting, None)):
                    running[pool.submit(self.noticed_by, fault, texts[fault.file])] = fault
                if not running:
                    break
                for done in concurrent.futures.wait(running, return_when=concurrent.futures.FIRST_COMPLETED).done:
                    fault = running.pop(done)
                    counted += self.record(fault, texts[fault.file], done.result())

    def close(self):
        others = self.noticed + self.survived
        share = 100 * self.noticed / others if others else 100
        print(f"{others + self.listed} faults: {self.noticed} noticed, {self.listed} equivalent, {self.survived} survived: "
              f"{share:.1f} % of those that are not equivalent were noticed")
        return 0 if share >= LEAST else 1


def selected(options):
    """Returns the faults to plant and how many of them."""
    from mutation.places import Fault, faults_of
    if options.change:
        file, old, new = options.change
        text = (TOP / file).read_text()
        if text.count(old) != 1:
            sys.exit(f"mutate.py: found {text.count(old)} times in {file}: {old}")
        return [Fault(file, text.index(old), text.index(old) + len(old), "given", new)], 1
    if options.at:
        wanted = [(at.split(":") + [""])[:3] for at in options.at]
        files = sorted({file for file, _, _ in wanted})
        faults = [fault for place in faults_of(TOP, files) for fault in place]

        def asked(fault):
            line, column = map(str, fault.position((TOP / fault.file).read_text()))
            return any(fault.file == f and line == ln and column == (c or column) for f, ln, c in wanted)
        faults = [fault for fault in faults if asked(fault)]
        return faults, len(faults)
    files = sorted(str(p.relative_to(TOP)) for p in (TOP / "src").rglob("*") if p.suffix in (".h", ".cpp"))
    chance = random.Random(options.seed)
    places = faults_of(TOP, files)
    chance.shuffle(places)
    return [chance.choice(place) for place in places], options.count


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=7)
    parser.add_argument("--count", type=int, default=300)
    parser.add_argument("--at", action="append", metavar="FILE:LINE[:COLUMN]")
    parser.add_argument("--change", nargs=3, metavar=("FILE", "OLD", "NEW"))
    parser.add_argument("--table", nargs="*", metavar="ROW")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default="", metavar="TEST", help="run only this test program")
    parser.add_argument("--sanitize", default="", metavar="NAME", help="build with this sanitizer")
    parser.add_argument("--scratch", type=pathlib.Path, help="build in this folder, and keep it for the next run")
    parser.add_argument("--verbose", action="store_true", help="also print the faults that are noticed")
    options = parser.parse_args()

    if options.check:
        problems = check(TOP)[3]
        print("\n".join(problems) or "the tests of every row exist, and its changes can be made")
        return 1 if problems else 0
    with tempfile.TemporaryDirectory() as temporary:
        scratch = (options.scratch or pathlib.Path(temporary)).resolve()
        faults, count = ([], 0) if options.table is not None else selected(options)
        build = Build(TOP, scratch, options.jobs, options.sanitize, options.only)
        failing = build.measure(scratch / "job0")
        if failing:
            sys.exit(f"mutate.py: fails without any fault: {', '.join(failing)}")
        if options.table is not None:
            return prove(TOP, build, scratch / "job0", options.table)
        trial = Trial(build, scratch, options.jobs, options.verbose)
        trial.run(faults, count)
        return trial.close()


sys.exit(main())
