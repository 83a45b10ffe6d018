"""Checking whole folders of frames, on one machine or on many."""
from __future__ import annotations

import os
from concurrent.futures import Executor, Future, ThreadPoolExecutor, as_completed
from dataclasses import dataclass, field
from typing import Any, Callable, Iterable, Sequence, Union

from .errors import RecordError
from .frames import FrameSequence, scan_frames
from .records import check_records

__all__ = ["Fault", "FolderReport", "MissingFrames", "check_folder"]

Path = Union[str, "os.PathLike[str]"]
FILES_PER_CHUNK = 64


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
    """What check_folder found: all faults sorted by path, and the gaps of all sequences."""

    files: int = 0
    bytes: int = 0
    faults: list[Fault] = field(default_factory=list)
    missing: list[MissingFrames] = field(default_factory=list)

    @property
    def good(self) -> bool:
        """Whether no file is faulty and no frame is missing."""
        return not self.faults and not self.missing


def _check_files(folder: str, names: Sequence[str], kinds: Sequence[str], repeat_last: bool, endian: bool,
                 workspace: int | None) -> tuple[int, list[Fault]]:
    """Checks some files of a folder, in any process that can see it; returns their bytes and their faults."""
    wanted: list[Any] = [*kinds, ...] if repeat_last else list(kinds)
    size, faults = 0, []
    for name in names:
        path = os.path.join(folder, name)
        try:
            size += os.stat(path).st_size
            check_records(path, wanted, endian=endian, workspace=workspace)
        except RecordError as error:
            faults.append(Fault(path, error.field, error.offset, error.reason))
        except OSError as error:
            faults.append(Fault(path, "", 0, error.strerror or str(error)))
    return size, faults


def _pattern(sequence: FrameSequence) -> str:
    return f"{sequence.head}{'#' * sequence.padding}{sequence.tail}"


def _chunks(names: Iterable[str]) -> Iterable[list[str]]:
    chunk: list[str] = []
    for name in names:
        chunk.append(name)
        if len(chunk) == FILES_PER_CHUNK:
            yield chunk
            chunk = []
    if chunk:
        yield chunk


def check_folder(folder: Path, kinds: Sequence[Any], executor: Executor | None = None,
                 progress: Callable[[int, int], Any] | None = None, *, endian: bool = False,
                 workspace: int | None = None) -> FolderReport:
    """Checks every frame file of the sequences in a folder and returns a report.

    `kinds` is that of read_records, a `...` at its end included. The files are checked in chunks by `executor`: threads
    of this process by default, or any executor of `concurrent.futures`, or one that a distributed engine offers, whose
    workers must see the folder under the same path. A chunk that an executor loses, because a worker was killed, is
    checked in this process, so that the report is always complete. `progress` is called with the files checked so far
    and the number of all files; an exception of it ends the check. Raises OSError if the folder cannot be read.
    """
    root = os.path.abspath(os.fspath(folder))
    listed = list(kinds)
    repeat_last = bool(listed) and listed[-1] is Ellipsis
    names = [kind if isinstance(kind, str) else kind.__name__ for kind in listed if kind is not Ellipsis]
    sequences = scan_frames(root).sequences
    report = FolderReport(files=sum(len(sequence) for sequence in sequences))
    report.missing = [MissingFrames(_pattern(s), s.missing) for s in sequences if s.missing]

    def work(chunk: Sequence[str]) -> tuple[Any, ...]:
        return root, chunk, names, repeat_last, endian, workspace

    own = ThreadPoolExecutor(max_workers=os.cpu_count()) if executor is None else None
    pool: Executor = own if own is not None else executor  # type: ignore[assignment]
    files_done = 0
    futures: dict[Future, list[str]] = {}
    try:
        for sequence in sequences:
            for chunk in _chunks(sequence.file_name(frame) for frame in sequence):
                futures[_submit(pool, work(chunk))] = chunk
        for future in as_completed(futures):
            chunk = futures[future]
            size, faults = future.result() if future.exception() is None else _check_files(*work(chunk))
            report.bytes += size
            report.faults += faults
            files_done += len(chunk)
            if progress is not None:
                progress(files_done, report.files)
    finally:
        for future in futures:
            future.cancel()
        if own is not None:
            own.shutdown()
    report.faults.sort(key=lambda fault: fault.path)
    return report


def _submit(pool: Executor, work: tuple[Any, ...]) -> Future:
    """Submits one chunk; an executor that is broken gives a future that failed."""
    try:
        return pool.submit(_check_files, *work)
    except RuntimeError as error:
        failed: Future = Future()
        failed.set_exception(error)
        return failed
