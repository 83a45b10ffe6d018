"""Every wrong argument is an exception and never a crash, and no call keeps a reference."""
import gc
import inspect
import os
import random
import sys
import tracemalloc

import mrcommon as mr
import numpy as np
import pytest
from mrcommon import _core
from samples import KINDS, one_of_each

WRONG = [None, True, -1, 2**31, 2**70, 0.5, float("nan"), "", "x" * 300, "a\0b", "\ud800", b"", b"\xff" * 20, [], [None],
         [[1, 2], [3]], (1, 2, 3), (1, 2, 3, 4), {"a": 1}, {1: "a"}, object(), int, ..., lambda *a: 1 // 0,
         np.zeros((0, 4)), np.zeros((2, 4)), np.zeros((2, 3), complex), np.array(["a", "b"]), np.array(7), [("a", 1)],
         mr.PptyInt("p", 1), mr.DQuat(), mr.ByteId(), ["PptyInt"], ["PptyEnum", ...], sys.maxsize, -sys.maxsize - 1]
ROUNDS = 10 if "MRCOMMON_SANITIZED" in os.environ else 40
SKIPPED = {"load_plugin"}  # it would look for libraries of these names


def callables():
    """All functions, classes, methods and properties of the module and of its extension, by name."""
    for module in mr, _core:
        for name, value in vars(module).items():
            if name.startswith("_") or name in SKIPPED or inspect.ismodule(value):
                continue
            if callable(value):
                yield f"{module.__name__}.{name}", value
    bare = [kind.__new__(kind) for kind in (mr.PptyEnum, mr.RIntPpty, mr.DQuat, mr.ByteId, mr.FrameSequence)]  # no __init__
    samples = [*one_of_each(), mr.DQuat(), mr.Quat(1, 2, 3, 4), mr.ByteId("01"), _core.Property("PptyEnum", "p"),
               mr.group_frames(["a.1.x", "a.3.x"]).sequences[0], mr.RecordError("x"), mr.FolderReport(), *bare]
    for sample in samples:
        for name in dir(sample):
            raw = getattr(type(sample), name, None)
            if name in ("__class__", "__dict__") or raw is getattr(object, name, ...):
                continue
            if isinstance(raw, property):
                yield f"{type(sample).__name__}.{name}=", lambda value, s=sample, n=name: setattr(s, n, value)
                yield f"{type(sample).__name__}.{name}", lambda s=sample, n=name: getattr(s, n)
            elif callable(getattr(sample, name, None)):
                yield f"{type(sample).__name__}.{name}", getattr(sample, name)


@pytest.mark.filterwarnings("ignore")
def test_wrong_arguments_are_exceptions(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)  # for what takes a str for a path
    chance = random.Random(2031)
    expected = (TypeError, ValueError, OverflowError, AttributeError, IndexError, OSError, ZeroDivisionError, KeyError)
    calls = raised = 0
    for name, call in callables():
        for _ in range(ROUNDS):
            arguments = [chance.choice(WRONG) for _ in range(chance.randint(0, 5))]
            calls += 1
            try:
                call(*arguments)
            except expected as error:
                raised += 1
                assert isinstance(str(error), str)
            except BaseException as error:
                raise AssertionError(f"{name}{tuple(arguments)}: {error!r}")
    assert raised > calls / 2 > 40 * ROUNDS


def test_damaged_bytes_are_errors_or_properties():
    chance = random.Random(1)
    for sample in one_of_each():
        for endian in False, True:
            good = sample.to_bytes(endian)
            for _ in range(150):
                damaged = bytearray(good)
                for _ in range(chance.randint(1, 3)):
                    damaged[chance.randrange(len(damaged))] = chance.choice((0, 1, 0x7F, 0x80, 0xFF, chance.randrange(256)))
                kind = type(sample) if chance.random() < 0.8 else getattr(mr, chance.choice(KINDS))
                try:
                    read = kind.from_bytes(damaged[:chance.randint(0, 2 * len(good))], endian, chance.choice((None, 1, 9999)))
                except mr.RecordError as error:
                    assert error.reason and 0 <= error.offset <= len(good) and str(error)
                else:
                    str(read), repr(read), read.value, read.to_bytes()


def test_damaged_files_are_errors_or_entries(tmp_path):
    path = tmp_path / "scene.props"
    mr.save(path, one_of_each())
    good = path.read_bytes()
    chance = random.Random(7)
    for _ in range(300):
        damaged = bytearray(good[:chance.randint(1, len(good))] if chance.random() < 0.5 else good)
        damaged[chance.randrange(len(damaged))] ^= 1 << chance.randrange(8)
        path.write_bytes(damaged)
        for call in lambda: mr.load(path), lambda: mr.read_records(path, KINDS), lambda: mr.check_records(path, ["PptyEnum", ...]):
            with pytest.raises(ValueError):
                call()


def round_of_calls(path):
    made = one_of_each()
    mr.save(path, [*made, mr.UnknownEntry("K", 1, b"x")])
    mr.load(path)
    mr.write_records(path, made)
    mr.read_records(path, [p.kind for p in made])
    for call in (lambda: mr.load(path), lambda: mr.PptyInt.from_bytes(b"abc"), lambda: mr.load(path / "none"),
                 lambda: setattr(made[0], "value", "x"), lambda: mr.DQuat.slerp("x", 1, 2),
                 lambda: mr.group_frames(["a"] * 1000, progress=lambda n: 1 // 0), lambda: mr.ByteId("g")):
        with pytest.raises(Exception):
            call()
    mr.group_frames([f"a.{i}.x" for i in range(1000)], progress=lambda n: n).sequences[0].file_name(3)
    mr.DQuat.slerp(np.linspace(0, 1, 9), mr.DQuat(), mr.DQuat.IDENTITY).sum()
    mr.min_distance(np.ones((9, 3)), (0, 0, 0), (1, 0, 0)), mr.DQuat().elements, mr.ByteId("01").uuid, repr(mr.DQuat())
    for p in made:
        p.value = p.value
        repr(p), str(p), p.with_name("q")


def test_no_reference_is_kept(tmp_path):
    path = tmp_path / "file"
    singletons = (None, True, mr.RecordError, mr.PptyInt)
    for _ in range(30):  # until the allocator's pools and the caches are full
        round_of_calls(path)
    gc.collect()
    counts = [sys.getrefcount(x) for x in singletons]
    objects = len(gc.get_objects())
    tracemalloc.start()
    for _ in range(30):
        round_of_calls(path)
    gc.collect()
    before = tracemalloc.get_traced_memory()[0]
    for _ in range(50):
        round_of_calls(path)
    gc.collect()
    after = tracemalloc.get_traced_memory()[0]
    tracemalloc.stop()
    assert after - before < 50 * 56, "less than one of the smallest objects in each round"
    assert len(gc.get_objects()) - objects < 50
    assert all(abs(sys.getrefcount(x) - count) < 50 for x, count in zip(singletons, counts))


def resident_kilobytes():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * 4


def test_no_memory_of_the_library_is_kept():
    texts = ["x" * 100_000] * 10  # a megabyte for each property

    def make_many():
        for _ in range(ROUNDS):
            made = mr.PptyArrayString("list", texts)
            made.value = made.value
            mr.PptyArrayString.from_bytes(made.to_bytes())

    make_many()
    before = resident_kilobytes()
    make_many()
    assert resident_kilobytes() - before < 40_000
