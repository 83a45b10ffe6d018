"""Files of records: raw ones, whose kinds the caller knows, and ones that describe themselves."""
from __future__ import annotations

import os
import tempfile
from typing import Any, Iterable, Sequence, Union

from . import _core
from .errors import RecordError
from .properties import Ppty

Path = Union[str, "os.PathLike[str]"]


class UnknownEntry:
    """An entry of a file whose class is not registered, as when a plug-in is missing. `save` stores it unchanged."""

    __slots__ = ("kind", "schema", "record")

    def __init__(self, kind: str, schema: int, record: bytes):
        self.kind = kind
        self.schema = schema
        self.record = record

    def __repr__(self) -> str:
        return f"UnknownEntry({self.kind!r}, {self.schema!r}, {self.record!r})"

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, UnknownEntry):
            return NotImplemented
        return (self.kind, self.schema, self.record) == (other.kind, other.schema, other.record)

    def __hash__(self) -> int:
        return hash((self.kind, self.schema, self.record))


def _names(kinds: Sequence[Any], repeat: bool) -> tuple[list[str], int | None]:
    """Returns the names of the kinds and the index from which they repeat, or None."""
    if isinstance(kinds, str):
        raise TypeError("kinds is a sequence of kinds, not a str")
    listed = list(kinds)
    endless = bool(listed) and listed[-1] is Ellipsis
    if endless:
        listed.pop()
    names = [kind if isinstance(kind, str) else kind.__name__ for kind in listed]
    if endless and repeat:
        raise ValueError("either ... or repeat, not both")
    if endless:
        return names, len(names) - 1
    return names, 0 if repeat else None


def _call(function: Any, path: Path, kinds: Sequence[Any], endian: bool, workspace: int | None, repeat: bool) -> Any:
    names, repeat_from = _names(kinds, repeat)
    try:
        return function(path, names, repeat_from, endian, workspace)
    except RecordError as error:
        error.path = os.fspath(path)
        raise


def read_records(path: Path, kinds: Sequence[Any], *, endian: bool = False, workspace: int | None = None,
                 repeat: bool = False) -> list[Ppty]:
    """Returns the properties of a file of records.

    `kinds` lists the kind of each record, by name or by class. A `...` at its end repeats the last kind until the file
    ends; `repeat` repeats the whole list. Every record is checked before it is read: RecordError has path, field,
    offset and reason. OSError is raised if the file cannot be opened.
    """
    return [Ppty._wrap(handle) for handle in _call(_core.read_file, path, kinds, endian, workspace, repeat)]


def check_records(path: Path, kinds: Sequence[Any], *, endian: bool = False, workspace: int | None = None,
                  repeat: bool = False) -> int:
    """Returns the number of records of a file, having checked all of them; the arguments are those of read_records.

    Raises RecordError for the first fault. Memory does not grow with the file.
    """
    return _call(_core.check_file, path, kinds, endian, workspace, repeat)


def write_records(path: Path, properties: Iterable[Ppty], *, endian: bool = False) -> None:
    """Writes the records of the properties to a file, which is the old one or the new one at any time."""
    target = os.path.realpath(os.fspath(path))
    records = b"".join(item.to_bytes(endian) for item in properties)
    descriptor, temporary = tempfile.mkstemp(prefix=".", suffix=".part", dir=os.path.dirname(target))
    try:
        with os.fdopen(descriptor, "wb") as file:
            file.write(records)
            file.flush()
            os.fsync(file.fileno())
        os.chmod(temporary, _mode_of(target))
        os.replace(temporary, target)
    except BaseException:
        os.unlink(temporary)
        raise


def _mode_of(path: str) -> int:
    try:
        return os.stat(path).st_mode & 0o7777
    except FileNotFoundError:
        mask = os.umask(0)
        os.umask(mask)
        return 0o666 & ~mask
