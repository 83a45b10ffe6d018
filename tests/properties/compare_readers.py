#!/usr/bin/env python3
"""Fails where the library and the reader that follows docs/records.md see different values in a file.

    compare_readers.py <print_records> <folder of records> <least number of files>
"""
import difflib
import pathlib
import subprocess
import sys

printer, folder, least = sys.argv[1], pathlib.Path(sys.argv[2]), int(sys.argv[3])
files = sorted(map(str, folder.iterdir()))
reader = [sys.executable, str(pathlib.Path(__file__).with_name("read_records.py"))]


def lines(command):
    return subprocess.run(command + files, check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()


read, printed = lines(reader), lines([printer])
difference = list(difflib.unified_diff(read, printed, "independent reader", "library", n=0, lineterm=""))
print(*difference, f"{len(read)} files compared", sep="\n")
sys.exit(difference != [] or len(read) != len(files) or len(read) < least)
