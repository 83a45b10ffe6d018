#!/usr/bin/env python3
"""Fails where the library and the reader that follows docs/records.md see different values in a file.

    compare_readers.py <mrcommon-records> <folder of records> <least number of files> <file of properties>...
"""
import difflib
import pathlib
import subprocess
import sys

printer, folder, least = sys.argv[1], pathlib.Path(sys.argv[2]), int(sys.argv[3])
files = sorted(folder.iterdir()) + list(map(pathlib.Path, sys.argv[4:]))
reader = [sys.executable, str(pathlib.Path(__file__).parents[2] / "examples" / "read_records.py")]


def lines(command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()


def library(path):  # the program knows nothing of the files' names
    kind = path.name.split(".")[0].split("-")[0]
    if path.suffix == ".props":
        return [f"{path.name} {line}" for line in lines([printer, str(path)])]
    options = ["--endian"] * (path.suffix == ".endian") + ["--workspace", "5087"] * ("5087" in path.name)
    return [f"{path.name} {line}" for line in lines([printer, *options, "--kinds", kind, str(path)])]


read = lines(reader + list(map(str, files)))
printed = [line for path in files for line in library(path)]
difference = list(difflib.unified_diff(read, printed, "independent reader", "library", n=0, lineterm=""))
print(*difference, f"{len(files)} files compared", sep="\n")
sys.exit(difference != [] or len(read) < len(files) or len(files) < least)
