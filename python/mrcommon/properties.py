"""The property kinds: one class for each, below Ppty, with the names of C++."""
from __future__ import annotations

import math
import os
from typing import Any, Iterable, Mapping, Sequence, Union

from . import _core

_NEWEST_WORKSPACE = 0xFFFFFFFF  # pickled records are in the current layout, whatever the host is

Choices = Union[Mapping[str, int], Iterable[Sequence[Any]]]


class Ppty(_core.Property):
    """The base of all kinds: a named value with a type. Make one of the classes below it.

    Two properties are equal if they are of one kind and have the same record. Properties can be copied and pickled;
    `repr` gives an expression for an equal property. What a plug-in's kind has beside its value is not in the `repr`.
    """

    __slots__ = ()

    def __init__(self, name: str, *args: Any) -> None:
        super().__init__(self._kind(), name)

    @classmethod
    def _kind(cls) -> str:
        """Returns the name of the registered class, also for a class that a caller derived."""
        for base in cls.__mro__:
            if _classes.get(base.__name__) is base:
                return base.__name__
        raise TypeError(f"{cls.__name__} is not a property kind")

    @classmethod
    def from_bytes(cls, data: bytes, endian: bool = False, workspace: int | None = None) -> Ppty:
        """Returns a property of this class read from a record that fills `data`.

        Raises RecordError, before anything is read, if the record is damaged or bytes follow it. `workspace` is the
        version of the data, which decides between the layouts of an enumeration; None: the current one.
        """
        return _core.read_bytes(bytes(memoryview(data)), [cls._kind()], None, endian, workspace)[0]

    def __repr__(self) -> str:
        return f"{self.kind}({self.name!r}, {_written(self.value)})"

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Ppty):
            return NotImplemented
        return self.kind == other.kind and self.to_bytes() == other.to_bytes()

    __hash__ = None  # type: ignore[assignment]  # the value can change

    def __reduce__(self) -> tuple[Any, ...]:
        return _from_record, (self.kind, self.to_bytes())


def _written(value: Any) -> str:
    """Returns what `repr` does, but an expression for NaN and infinity too."""
    if isinstance(value, float) and not math.isfinite(value):
        sign = "-" if math.copysign(1, value) < 0 else ""
        return f"float('{sign}{abs(value)}')"
    if isinstance(value, tuple) and value:
        return f"({', '.join(map(_written, value))})"
    return repr(value)


class _Plain(Ppty):
    """A kind with one value."""

    __slots__ = ()

    def __init__(self, name: str, value: Any = None) -> None:
        super().__init__(name)
        if value is not None:
            self._store(value)


class _Ranged(Ppty):
    """A kind with inclusive bounds, which setting the value checks. As in C++, the constructor stores the value
    unchecked, and a new bound changes neither the value nor the other bound."""

    __slots__ = ()

    def __init__(self, name: str, value: Any = None, minimum: Any = None, maximum: Any = None) -> None:
        super().__init__(name)
        if value is not None:
            self._store(value)
        if minimum is not None:
            self._minimum = minimum
        if maximum is not None:
            self._maximum = maximum

    @property
    def minimum(self) -> Any:
        """The least value that setting accepts."""
        return self._minimum

    @minimum.setter
    def minimum(self, minimum: Any) -> None:
        self._minimum = minimum

    @property
    def maximum(self) -> Any:
        """The greatest value that setting accepts."""
        return self._maximum

    @maximum.setter
    def maximum(self, maximum: Any) -> None:
        self._maximum = maximum

    def __repr__(self) -> str:
        numbers = map(_written, (self.value, self.minimum, self.maximum))
        return f"{self.kind}({self.name!r}, {', '.join(numbers)})"


class PptyInt(_Plain):
    """An int of 32 bits."""

    __slots__ = ()


class PptyInt64(_Plain):
    """An int of 64 bits."""

    __slots__ = ()


class PptyFloat(_Plain):
    """A number in single precision."""

    __slots__ = ()


class PptyDouble(_Plain):
    """A number in double precision."""

    __slots__ = ()


class PptyBool(_Plain):
    """True or False."""

    __slots__ = ()


class PptyString(_Plain):
    """A str without NUL, stored as UTF-8."""

    __slots__ = ()


class PptyVector3F(_Plain):
    """Three numbers in single precision."""

    __slots__ = ()


class PptyVector3D(_Plain):
    """Three numbers in double precision."""

    __slots__ = ()


class PptyColor4F(_Plain):
    """Red, green, blue and opacity in single precision."""

    __slots__ = ()


class PptyColor4D(_Plain):
    """Red, green, blue and opacity in double precision."""

    __slots__ = ()


class PptyArrayString(_Plain):
    """A list of str. `value` is a copy of the list: set it to change it."""

    __slots__ = ()


class PptyFile(_Plain):
    """The name of a file: a str."""

    __slots__ = ()


class PptyDirectory(_Plain):
    """The name of a folder: a str."""

    __slots__ = ()


class RIntPpty(_Ranged):
    """An int of 32 bits with bounds."""

    __slots__ = ()


class RInt64Ppty(_Ranged):
    """An int of 64 bits with bounds."""

    __slots__ = ()


class RFloatPpty(_Ranged):
    """A number in single precision with bounds."""

    __slots__ = ()


class RDoublePpty(_Ranged):
    """A number in double precision with bounds."""

    __slots__ = ()


class RangeVect3FPpty(_Ranged):
    """Three numbers in single precision, with bounds for each component."""

    __slots__ = ()


class RangeVect3DPpty(_Ranged):
    """Three numbers in double precision, with bounds for each component."""

    __slots__ = ()


class PptyEnum(Ppty):
    """A choice from a table of labels with numbers.

    `choices` is a mapping from label to number or a sequence of pairs; `value` a label or a number of the table, None
    for no choice, or a pair of both, which the constructor stores whatever the table has. The value reads as the label
    or None, and `index` as the number; setting takes a label, a number or None. An entry of a file's table that lacks its
    label or its number is not among the choices.
    """

    __slots__ = ()

    def __init__(self, name: str, choices: Choices = (),
                 value: str | int | tuple[str, int] | None = None) -> None:
        super().__init__(name)
        self.choices = choices
        if isinstance(value, tuple):
            label, number = value
            self._store_choice(label, number)
        elif value is not None:
            self.value = value

    @property
    def index(self) -> int:
        """The number of the choice; -1 if no choice was made."""
        return self._choice[1]

    @property
    def choices(self) -> Any:
        """The table, a list of (label, number). Set it to a mapping or to pairs; the choice then stays unchanged."""
        return self._choices

    @choices.setter
    def choices(self, choices: Choices) -> None:
        self._choices = choices.items() if isinstance(choices, Mapping) else choices

    def __repr__(self) -> str:
        pair, label = self._choice, self.value
        found = next((choice for choice in self.choices if choice[0] == label), None)
        value = label if label is None or found == pair else pair
        return f"{self.kind}({self.name!r}, {self.choices!r}, {value!r})"


_KINDS = (PptyInt, PptyInt64, PptyFloat, PptyDouble, PptyBool, PptyString, PptyVector3F, PptyVector3D, PptyColor4F,
          PptyColor4D, PptyArrayString, PptyFile, PptyDirectory, RIntPpty, RInt64Ppty, RFloatPpty, RDoublePpty,
          RangeVect3FPpty, RangeVect3DPpty, PptyEnum)

_classes: dict[str, type[Ppty]] = {kind.__name__: kind for kind in _KINDS}


def _class_named(kind: str) -> type[Ppty]:
    """Returns the class of a kind, made on first use if a plug-in registered the kind."""
    known = _classes.get(kind)
    if known is None:
        code = _core.Property(kind, "")._type_code  # ValueError if there is no such kind
        base = next((b for b in _KINDS if _core.Property(b.__name__, "")._type_code == code), None)
        known = type(kind, (base or _Plain,), {"__slots__": (), "__doc__": f"The kind {kind}, of a plug-in."})
        _classes[kind] = known
    return known


def _from_record(kind: str, record: bytes) -> Ppty:
    return _class_named(kind).from_bytes(record, workspace=_NEWEST_WORKSPACE)


def kinds() -> list[str]:
    """Returns the names of all property kinds, those of loaded plug-ins included."""
    return _core.kinds()


def make(kind: str, name: str, *args: Any, **kwargs: Any) -> Ppty:
    """Returns a new property of the kind with this name; the other arguments are those of its class.

    Raises ValueError if there is no such kind, and what the class raises.
    """
    return _class_named(kind)(name, *args, **kwargs)


def load_plugin(path: str | os.PathLike[str]) -> list[type[Ppty]]:
    """Loads a plug-in for the rest of the process and returns the classes of the kinds that it registered, none if it
    was loaded before.

    Raises ImportError with the platform's reason if it cannot be loaded.
    """
    before = set(_core.kinds())
    _core.load_plugin(os.path.abspath(path))
    return [_class_named(kind) for kind in _core.kinds() if kind not in before]
