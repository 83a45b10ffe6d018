"""Names of frame files: one name, and all the sequences of a folder."""
from __future__ import annotations

import enum
import os
from dataclasses import dataclass
from typing import Any, Callable, Iterable, Iterator, Sequence, Union

from . import _core

Path = Union[str, "os.PathLike[str]"]
Progress = Callable[[int], Union[bool, None]]


class FrameOrder(enum.IntEnum):
    """Where the frame is in a name. The values are stored in files.

    NAME_DOT_FRAME_DOT_EXT: fluid.00012.bin
    NAME_DOT_EXT_DOT_FRAME: fluid.bin.00012
    NAME_FRAME_DOT_EXT: fluid00012.bin
    NAME_UNDERSCORE_FRAME_DOT_EXT: fluid_00012.bin
    """

    NAME_DOT_FRAME_DOT_EXT = 0
    NAME_DOT_EXT_DOT_FRAME = 1
    NAME_FRAME_DOT_EXT = 2
    NAME_UNDERSCORE_FRAME_DOT_EXT = 3


class FrameSequence:
    """The frames of one sequence: those whose names differ in the frame only.

    Iterating gives the frames that exist, in order; `len` is their number, and `in` tests for one. Sequences can be
    compared and pickled. To make one, give head, tail, padding and ascending ranges that do not touch, else ValueError.
    """

    __slots__ = ("_sequence",)

    def __init__(self, head: str, tail: str, padding: int, ranges: Iterable[tuple[int, int]]) -> None:
        self._sequence = _core.FrameSequence(head, tail, padding, ranges)

    @classmethod
    def _wrap(cls, sequence: _core.FrameSequence) -> FrameSequence:
        made = object.__new__(cls)
        made._sequence = sequence
        return made

    @property
    def head(self) -> str:
        """What precedes the frame in every name."""
        return self._sequence.head

    @property
    def tail(self) -> str:
        """What follows the frame in every name."""
        return self._sequence.tail

    @property
    def padding(self) -> int:
        """The least number of characters of the frame, a minus sign counted."""
        return self._sequence.padding

    @property
    def ranges(self) -> list[tuple[int, int]]:
        """The frames that exist, as ascending (first, last) pairs, both included, that never touch."""
        return self._sequence.ranges

    @property
    def missing(self) -> list[tuple[int, int]]:
        """The gaps between the first and the last frame, as (first, last) pairs, both included."""
        return self._sequence.missing

    @property
    def first(self) -> int:
        """The first frame that exists."""
        return self._sequence.first

    @property
    def last(self) -> int:
        """The last frame that exists."""
        return self._sequence.last

    @property
    def pattern(self) -> str:
        """A name with number signs for the frame, such as "fluid.####.bin"."""
        return f"{self.head}{'#' * self.padding}{self.tail}"

    def file_name(self, frame: int) -> str:
        """Returns the name of a frame's file, exactly as it was found if the frame exists.

        Raises TypeError for what is no integer, and OverflowError beyond 64 bits.
        """
        return self._sequence.file_name(frame)

    def __len__(self) -> int:
        return len(self._sequence)

    def __contains__(self, frame: object) -> bool:
        return frame in self._sequence

    def __iter__(self) -> Iterator[int]:
        for first, last in self.ranges:
            yield from range(first, last + 1)

    def _fields(self) -> tuple[str, str, int, list[tuple[int, int]]]:
        return self.head, self.tail, self.padding, self.ranges

    def __repr__(self) -> str:
        return f"FrameSequence{self._fields()!r}"

    def __str__(self) -> str:
        frames = " ".join(str(a) if a == b else f"{a}-{b}" for a, b in self.ranges)
        return f"{self.pattern} {frames}"

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, FrameSequence):
            return NotImplemented
        return self._fields() == other._fields()

    __hash__ = None  # type: ignore[assignment]

    def __reduce__(self) -> tuple[Any, ...]:
        return FrameSequence, self._fields()


@dataclass(frozen=True)
class FrameScan:
    """The `sequences` among some names, sorted by head, tail and padding, and all `others`; `complete` is False if
    `progress` cancelled the scan."""

    sequences: list[FrameSequence]
    others: list[str]
    complete: bool


def _extensions(extensions: Iterable[str]) -> list[str]:
    if isinstance(extensions, str):
        raise TypeError("compound_extensions is a sequence of str, not a str")
    return list(extensions)


def _scan(found: tuple[list[_core.FrameSequence], list[str], bool]) -> FrameScan:
    sequences, others, complete = found
    return FrameScan([FrameSequence._wrap(sequence) for sequence in sequences], others, complete)


def scan_frames(folder: Path, negative_frames: bool = False, versions_are_names: bool = False,
                compound_extensions: Sequence[str] = (), progress: Progress | None = None) -> FrameScan:
    """Returns the sequences of a folder, which is read once; no file is opened.

    With `negative_frames`, a minus right before the digits belongs to the frame if nothing, a dot or an underscore
    precedes it. With `versions_are_names`, digits after a "v" that no letter precedes are no frame.
    `compound_extensions` are extensions with dots inside, such as "tar.gz".
    `progress` is called with the number of names so far, every thousand names or so: returning False cancels the scan,
    and an exception ends it. Raises OSError if the folder cannot be read. Other threads run during the scan.
    """
    return _scan(_core.scan_frames(folder, negative_frames, versions_are_names, _extensions(compound_extensions), progress))


def group_frames(names: Iterable[str], negative_frames: bool = False, versions_are_names: bool = False,
                 compound_extensions: Sequence[str] = (), progress: Progress | None = None) -> FrameScan:
    """Returns the sequences among names, without looking at the disk. The options are those of scan_frames.

    Raises TypeError for what is no name, and what `progress` raises.
    """
    return _scan(_core.group_frames(names, negative_frames, versions_are_names, _extensions(compound_extensions), progress))


def frame_name(name: str, frame: int, ext: str, padding: int = 5, order: FrameOrder = FrameOrder.NAME_FRAME_DOT_EXT,
               prefix: str = "") -> str:
    """Returns the name of a frame's file, such as "fluid00012.bin".

    `padding` is the least number of characters of the frame, its sign counted. Every dot of `ext` is dropped. Raises
    ValueError for an unknown order and OverflowError for a frame beyond 32 bits.
    """
    return _core.frame_name(name, frame, ext, padding, FrameOrder(order), prefix)
