"""Checking whole folders of frames, on one machine or on many."""
from __future__ import annotations

import contextlib
import itertools
import os
import uuid
from concurrent.futures import CancelledError, Executor, Future, ThreadPoolExecutor, as_completed
from dataclasses import dataclass, field
from typing import Any, Callable, Iterable, Iterator, Sequence, Union

from . import _core
from .errors import RecordError
from .frames import scan_frames
from .records import _named

Path = Union[str, "os.PathLike[str]"]
Checked = tuple[int, list["Fault"]]
Chunk = tuple[str, list[str], list[str], Union[int, None], bool, Union[int, None], str]
FILES_PER_CHUNK = 256  #: at most: a cluster spends milliseconds on each chunk
CHUNKS = 64  #: at least, so that all workers have something to do


@dataclass(frozen=True)
class Fault:
    """What is wrong with one file. `reason` is that of RecordError, or the system's words if the file cannot be read."""

    path: str
    field: str
    offset: int
    reason: str


@dataclass(frozen=True)
class MissingFrames:
    """The gaps of one sequence: `pattern` is a name such as "fluid.####.rec"; the ranges include both ends."""

    pattern: str
    ranges: list[tuple[int, int]]


@dataclass
class FolderReport:
    """What check_folder found: the number of `files` and their `bytes`, all `faults` sorted by path, and the `missing`
    frames of the sequences that have gaps."""

    files: int = 0
    bytes: int = 0
    faults: list[Fault] = field(default_factory=list)
    missing: list[MissingFrames] = field(default_factory=list)

    @property
    def good(self) -> bool:
        """Whether no file is faulty and no frame is missing."""
        return not self.faults and not self.missing


def _check_files(folder: str, names: Sequence[str], kinds: Sequence[str], repeat_from: int | None, endian: bool,
                 workspace: int | None, run: str) -> Checked:
    """Checks some files of a folder, in any process that can see it; returns their bytes and their faults.

    `run` differs between calls of check_folder: engines that keep results would take a second check for the first one.
    """
    size, faults = 0, []
    for name in names:
        path = os.path.join(folder, name)
        try:
            size += _core.check_file(path, kinds, repeat_from, endian, workspace)[1]
        except RecordError as error:
            faults.append(Fault(path, error.field, error.offset, error.reason))
            with contextlib.suppress(OSError):  # removed meanwhile
                size += os.stat(path).st_size
        except OSError as error:
            faults.append(Fault(path, "", 0, error.strerror or str(error)))
    return size, faults


def _chunks(names: Iterable[str], size: int) -> Iterator[list[str]]:
    left = iter(names)
    while chunk := list(itertools.islice(left, size)):
        yield chunk


def check_folder(folder: Path, kinds: Sequence[Any], executor: Executor | None = None,
                 progress: Callable[[int, int], Any] | None = None, *, endian: bool = False,
                 workspace: int | None = None) -> FolderReport:
    """Checks every frame file of the sequences in a folder and returns a report.

    `kinds` is that of read_records, a `...` at its end included. The files are checked in chunks by `executor`: threads
    of this process by default, or any executor of `concurrent.futures`, or one that a distributed engine offers, whose
    workers must see the folder under the same path. A chunk that an executor loses, because a worker was killed, is
    checked in this process, so that the report is always complete. `progress` is called with the files checked so far
    and the number of all files; an exception of it ends the check. A plug-in's kinds must be loaded in
    all workers; else their files are checked in this process. Raises OSError if the folder cannot be read and
    ValueError for an unknown kind.
    """
    root = os.path.abspath(os.fsdecode(folder))
    names, repeat_from = _named(kinds)
    for name in names:
        _core.Property(name, "")  # ValueError if there is no such kind, rather than one from every worker
    sequences = scan_frames(root).sequences
    report = FolderReport(files=sum(len(sequence) for sequence in sequences))
    report.missing = [MissingFrames(s.pattern, s.missing) for s in sequences if s.missing]
    own = ThreadPoolExecutor(max_workers=os.cpu_count()) if executor is None else None
    chunk_size = max(1, min(FILES_PER_CHUNK, report.files // CHUNKS))
    files_done, run = 0, uuid.uuid4().hex
    futures: dict[Future[Checked], Chunk] = {}
    try:
        for sequence in sequences:
            for files in _chunks(map(sequence.file_name, sequence), chunk_size):
                chunk = root, files, names, repeat_from, endian, workspace, run
                futures[_submit(own or executor, chunk)] = chunk
        for future in as_completed(futures):
            chunk = futures[future]
            size, faults = _result(future, chunk)
            report.bytes += size
            report.faults += faults
            files_done += len(chunk[1])
            if progress is not None:
                progress(files_done, report.files)
    finally:
        for future in futures:
            future.cancel()
        if own is not None:
            own.shutdown()
    report.faults.sort(key=lambda fault: fault.path)
    return report


def _submit(pool: Any, chunk: Chunk) -> Future[Checked]:
    """Submits one chunk; an executor that is broken gives a future that failed."""
    try:
        return pool.submit(_check_files, *chunk)  # type: ignore[no-any-return]
    except RuntimeError as error:
        failed: Future[Checked] = Future()
        failed.set_exception(error)
        return failed


def _result(future: Future[Checked], chunk: Chunk) -> Checked:
    """Returns what a worker found, or, if the executor lost it, what this process finds."""
    try:
        return future.result()
    except (Exception, CancelledError):
        return _check_files(*chunk)
