"""Judges what gcovr counted: report.py <its JSON>. See scripts/coverage.sh."""
import json
import pathlib
import re
import sys

LEAST = {"lines": 99, "branches": 96}  # per cent
# A line without one of these has only branches that the compiler made for exceptions and does not call so.
DECIDES = re.compile(r"\b(if|for|while|switch|case)\b|\bdefault:|&&|\|\||\?")


def counted(file):
    """Returns the lines of a file with what was counted, without branches on lines that have no code of their own."""
    return [line for line in file["lines"] if not line.get("gcovr/noncode")]


def main():
    files = json.loads(pathlib.Path(sys.argv[1]).read_text())["files"]
    known = {(e["file"], e["line"]): False
             for e in json.loads(pathlib.Path(__file__).with_name("exceptions.json").read_text())}
    reached, of, problems = {"lines": 0, "branches": 0}, {"lines": 0, "branches": 0}, []
    for file in files:
        text = pathlib.Path(file["file"]).read_text().splitlines()
        for line in counted(file):
            of["lines"] += 1
            reached["lines"] += line["count"] > 0
            code = text[line["line_number"] - 1].strip()
            if DECIDES.search(code):
                of["branches"] += len(line["branches"])
                reached["branches"] += sum(branch["count"] > 0 for branch in line["branches"])
            if line["count"] == 0 and (file["file"], code) in known:
                known[file["file"], code] = True
            elif line["count"] == 0:
                problems.append(f"not reached: {file['file']}:{line['line_number']}: {code}")
    problems += [f"listed in exceptions.json, but reached or gone: {file}: {code}"
                 for (file, code), needed in known.items() if not needed]
    for what, least in LEAST.items():
        share = 100 * reached[what] / of[what]
        print(f"{reached[what]} of {of[what]} {what}: {share:.1f} %")
        if share < least:
            problems.append(f"less than {least} % of the {what}")
    print("\n".join(problems), end="\n" if problems else "")
    return 1 if problems else 0


sys.exit(main())
