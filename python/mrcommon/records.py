"""Files of records: raw ones, whose kinds the caller knows, and ones that describe themselves."""
from __future__ import annotations

import contextlib
import itertools
import os
from typing import Any, Iterable, Sequence, Union

from . import _core
from .properties import Ppty

Path = Union[str, "os.PathLike[str]"]


class UnknownEntry:
    """An entry of a file whose class is not registered, as when a plug-in is missing. `save` stores it unchanged.

    `kind` is the name of the class, `schema` its version, and `record` the bytes.
    """

    __slots__ = ("kind", "schema", "record")

    def __init__(self, kind: str, schema: int, record: bytes) -> None:
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


def _named(kinds: Sequence[Any], repeat: bool = False) -> tuple[list[str], int | None]:
    """Returns the names of the kinds and the index from which they repeat, or None."""
    if isinstance(kinds, (str, bytes)):
        raise TypeError("kinds is a sequence of kinds, not a str")
    listed = list(kinds)
    endless = bool(listed) and listed[-1] is Ellipsis
    if endless and repeat:
        raise ValueError("either ... or repeat, not both")
    if endless:
        listed.pop()
    names = [_name(kind) for kind in listed]
    if endless:
        return names, max(len(names) - 1, 0)
    return names, 0 if repeat else None


def _name(kind: Any) -> str:
    if isinstance(kind, str):
        return kind
    if isinstance(kind, type) and issubclass(kind, Ppty):
        return kind._kind()
    raise TypeError(f"a kind is a str or a class below Ppty, not {kind!r}")


def read_records(path: Path, kinds: Sequence[Any], *, endian: bool = False, workspace: int | None = None,
                 repeat: bool = False) -> list[Ppty]:
    """Returns the properties of a file of records.

    `kinds` lists the kind of each record, by name or by class. A `...` at its end repeats the last kind until the file
    ends; `repeat` repeats the whole list. `endian` is as in Ppty.to_bytes. `workspace` is the version of the data, which
    decides between the layouts of an enumeration; None: the current one. A call with a version waits for other calls
    and makes them wait. Every record is checked before it is read. Raises RecordError for damaged records and OSError
    if the file cannot be read.
    """
    names, repeat_from = _named(kinds, repeat)
    return _core.read_file(path, names, repeat_from, endian, workspace)


def check_records(path: Path, kinds: Sequence[Any], *, endian: bool = False, workspace: int | None = None,
                  repeat: bool = False) -> int:
    """Returns the number of records of a file, having checked all of them; the arguments are those of read_records.

    Raises RecordError for the first fault, and OSError if the file cannot be read. Memory does not grow with the file.
    """
    names, repeat_from = _named(kinds, repeat)
    return _core.check_file(path, names, repeat_from, endian, workspace)[0]


def write_records(path: Path, properties: Iterable[Ppty], *, endian: bool = False) -> None:
    """Writes the records of the properties to a file, which is the old one or the new one at any time.

    The permissions of an old file are kept. Raises OSError if the file cannot be written; the old one then stays.
    """
    target = os.path.realpath(os.fsdecode(path))
    records = b"".join(item.to_bytes(endian) for item in properties)
    temporary, descriptor = _create_beside(target)
    try:
        with os.fdopen(descriptor, "wb") as file:
            file.write(records)
            file.flush()
            with contextlib.suppress(FileNotFoundError):
                os.fchmod(file.fileno(), os.stat(target).st_mode & 0o7777)
            os.fsync(file.fileno())
        os.replace(temporary, target)
    except BaseException:
        with contextlib.suppress(OSError):
            os.unlink(temporary)
        raise


_temporary_numbers = itertools.count()


def _create_beside(target: str) -> tuple[str, int]:
    """Creates a new file in the folder of another one."""
    while True:
        name = os.path.join(os.path.dirname(target), f".mrrecords-{os.getpid()}-{next(_temporary_numbers)}")
        with contextlib.suppress(FileExistsError):  # left over from a killed process
            return name, os.open(name, os.O_WRONLY | os.O_CREAT | os.O_EXCL | os.O_CLOEXEC, 0o666)


def load(path: Path) -> list[Ppty | UnknownEntry]:
    """Returns the properties of a file that describes itself, in order.

    An entry whose class is not registered becomes an UnknownEntry. Raises RecordError for a damaged file, ValueError for
    one that is not a file of properties or of a newer format, and OSError if it cannot be read. Damage is found before
    anything is returned.
    """
    return [UnknownEntry(*entry) if isinstance(entry, tuple) else entry for entry in _core.load_file(path)]


def save(path: Path, properties: Iterable[Ppty | UnknownEntry]) -> None:
    """Saves properties in a file that describes itself, which is the old one or the new one at any time.

    Raises OSError if the file cannot be written and TypeError for other entries; the old file then stays.
    """
    _core.save_file(path, [_plain(entry) for entry in properties])


def _plain(entry: Ppty | UnknownEntry) -> Ppty | tuple[str, int, bytes]:
    if isinstance(entry, UnknownEntry):
        return entry.kind, entry.schema, entry.record
    if isinstance(entry, Ppty):
        return entry
    raise TypeError(f"a property expected, not {type(entry).__name__}")
