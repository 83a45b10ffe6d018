#!/usr/bin/python3
"""Checks the frames of the demo, or of any folder, on this machine or on a cluster.

    check_frames.py build/demo/frames                              the threads of this machine
    check_frames.py build/demo/frames --processes 4                processes of this machine
    check_frames.py /cache/shot --scheduler tcp://10.0.0.5:8786    a cluster, whose workers see the same folder

The frames are raw records: a PptyInt with the number of particles, then a PptyVector3D for each of them. Exit status 0:
all good, 1: faults or missing frames, 2: wrong usage or a folder that cannot be read.
"""
import argparse
import contextlib
import sys
import time
from concurrent.futures import ProcessPoolExecutor

import mrcommon as mr

KINDS = ["PptyInt", "PptyVector3D", ...]


@contextlib.contextmanager
def executor_of(options):
    """Gives the executor that the options ask for; None is check_folder's own."""
    if options.scheduler:
        from distributed import Client
        with Client(options.scheduler, timeout=10) as client:
            yield client.get_executor()
    elif options.processes:
        with ProcessPoolExecutor(options.processes) as executor:
            yield executor
    else:
        yield None


class ProgressBar:
    """A bar on a terminal's last line, drawn at most ten times a second; nothing where nobody watches."""

    def __init__(self):
        self.drawn = 0.0

    def __call__(self, done, total):
        if not sys.stderr.isatty() or (done < total and time.monotonic() - self.drawn < 0.1):
            return
        self.drawn = time.monotonic()
        bar = "#" * (40 * done // max(total, 1))
        print(f"\r[{bar:<40}] {done}/{total} files", end="" if done < total else "\n", file=sys.stderr, flush=True)


def show(report, seconds):
    for fault in report.faults:
        field = f"{fault.field} at byte {fault.offset}: " if fault.field else ""
        print(f"{fault.path}: {field}{fault.reason}")
    for missing in report.missing:
        print(f"{missing.pattern}: missing", *(str(a) if a == b else f"{a}-{b}" for a, b in missing.ranges))
    print(f"{report.files} files, {report.bytes:,} bytes, {len(report.faults)} faults, in {seconds:.2f} s")


def main():
    parser = argparse.ArgumentParser(description="Checks frames, on this machine or on a cluster.")
    parser.add_argument("folder", nargs="?", default="build/demo/frames")
    parser.add_argument("--scheduler", help="address of a Dask scheduler, such as tcp://10.0.0.5:8786")
    parser.add_argument("--processes", type=int, help="check in so many processes of this machine")
    options = parser.parse_args()
    start = time.perf_counter()
    try:
        with executor_of(options) as executor:
            report = mr.check_folder(options.folder, KINDS, executor, ProgressBar())
    except OSError as error:
        print(f"check_frames.py: {error.filename or options.scheduler}: {error.strerror or error}", file=sys.stderr)
        return 2
    show(report, time.perf_counter() - start)
    return 0 if report.good else 1


if __name__ == "__main__":
    sys.exit(main())
