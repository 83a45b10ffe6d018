#!/usr/bin/env python3
"""Checks the code blocks of the pages in docs/.

    code_blocks.py <top of the tree> <scratch folder> [<compiler> <include folder> <library folder> [<mrcommon-records>]]

- C++ with a main function is compiled and run, in the order of the page and in one folder; it must exit with 0. A block
  of output after it is what it prints.
- Other C++ is quoted from a file in examples/, line for line, whatever its indentation.
- A block of console that begins with mrcommon-records is what that prints.
- Further blocks of output, text or console are not code. Other tests compare some of these with what programs print. On a
  page that follow_page.sh follows, nothing is checked here.
Without a compiler only the kinds of blocks are checked.
"""
import pathlib
import re
import subprocess
import sys

top, scratch = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
compiler = sys.argv[3:6]
problems = []
FOLLOWED = {"getting-started", "plug-ins"}
programs = 0


def blocks_of(page):
    """Returns (line, language, text) of each fenced block."""
    found, start, language = [], None, ""
    lines = page.read_text().splitlines()
    for number, line in enumerate(lines, 1):
        if not line.startswith("```"):
            continue
        if start is None:
            start, language = number, line[3:]
        else:
            found.append((start, language, "\n".join(lines[start:number - 1]) + "\n"))
            start = None
    return found


def stripped(text):
    return "\n".join(line.strip() for line in text.splitlines())


def built_and_run(folder, source):
    include, library = compiler[1:]
    (folder / "block.cpp").write_text(source)
    command = [compiler[0], "-std=c++17", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Werror",
               f"-I{include}", "block.cpp", "-o", "block", f"-L{library}", f"-Wl,-rpath,{library}",
               "-lMRCommon", "-lqn_basic", "-lqn_fileio"]
    made = subprocess.run(command, cwd=folder, capture_output=True, text=True)
    if made.returncode != 0:
        return None, made.stderr
    run = subprocess.run(["./block"], cwd=folder, capture_output=True, text=True, errors="replace", timeout=60)
    if run.returncode != 0:
        return None, f"exit status {run.returncode}\n{run.stdout}{run.stderr}"
    return run.stdout, ""


examples = "\n".join(stripped(path.read_text()) for path in sorted((top / "examples").rglob("*.cpp")))
for page in sorted((top / "docs").glob("*.md")):
    blocks = blocks_of(page)
    if page.stem in FOLLOWED:
        continue
    folder = scratch / page.stem
    folder.mkdir(parents=True, exist_ok=True)
    printed = None
    for line, language, text in blocks:
        place = f"{page.name}:{line}"
        if language == "cpp" and re.search(r"^int main\(", text, re.M):
            programs += 1
            if compiler:
                printed, complaint = built_and_run(folder, text)
                if printed is None:
                    problems.append(f"{place}: {complaint}")
        elif language == "cpp":
            if stripped(text) not in examples:
                problems.append(f"{place}: neither a program nor quoted from an example")
        elif language == "output":
            if compiler and printed is not None and printed != text:
                problems.append(f"{place}: the program prints\n{printed}")
            printed = None
        elif language == "console" and text.startswith("$ mrcommon-records ") and sys.argv[6:]:
            command, expected = text.split("\n", 1)
            run = subprocess.run([sys.argv[6], *command.split()[2:]], cwd=folder, capture_output=True, text=True)
            if run.stdout != expected:
                problems.append(f"{place}: mrcommon-records prints\n{run.stdout}{run.stderr}")
        elif language not in ("text", "console", "python"):
            problems.append(f"{place}: a block of unknown kind '{language}'")
print("\n".join(problems) or f"{programs} programs")
sys.exit(1 if problems or programs < 8 else 0)
