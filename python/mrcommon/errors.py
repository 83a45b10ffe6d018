"""What reading a damaged file raises."""
from __future__ import annotations

from typing import Any


class RecordError(ValueError):
    """A record that cannot be read, or a damaged file. Raised before anything of the record is read.

    Attributes:
        field: the faulty field, such as "name" or "labels[3]"; empty if the fault is not inside a field.
        offset: where the field begins, in bytes from the beginning of the data.
        reason: "EndsEarly", "SizeBeyondFile", "Unterminated", "UnknownTag" or "NotSeekable" for a record,
            "TrailingBytes" if bytes follow the last one, "Damaged" for any other fault of a file of properties.
        path: the file, or None for bytes in memory.
    """

    def __init__(self, message: str, field: str = "", offset: int = 0, reason: str = "", path: str | None = None):
        super().__init__(message)
        self.field = field
        self.offset = offset
        self.reason = reason
        self.path = path

    def __str__(self) -> str:
        message = super().__str__()
        return message if self.path is None else f"{self.path}: {message}"

    def __reduce__(self) -> tuple[Any, ...]:
        return RecordError, (self.args[0], self.field, self.offset, self.reason, self.path)
