#!/usr/bin/python3
"""Times the Python module beside pure Python and numpy: 100,000 records, and a million interpolations.

    PYTHONPATH=build/release/python benchmarks/python_bench.py

Prints the median of seven rounds, in which the competitors take turns; a round is one call. What counts is the time of the
processor, since everything here is done by one thread. The pure Python reader gives tuples, checks nothing but what struct
does, and knows one kind. The numpy reader needs names of one length.
"""
import math
import os
import random
import statistics
import struct
import tempfile
import time

import mrcommon as mr
import numpy as np

RECORDS, KEYS, ROUNDS = 100_000, 1_000_000, 7


def read_with_struct(path):
    with open(path, "rb") as file:
        data = file.read()
    at, found = 0, []
    while at < len(data):
        size, = struct.unpack_from("<I", data, at)
        name = data[at + 4:at + 3 + size].decode()
        found.append((name, struct.unpack_from("<3d", data, at + 4 + size)))
        at += size + 28
    return found


def read_with_numpy(path):
    return np.fromfile(path, [("size", "<u4"), ("name", "S11"), ("value", "<f8", 3)])


def slerp_with_numpy(t, p, q):
    cosine = (p * q).sum(axis=1, keepdims=True)
    angle, t = np.arccos(cosine), t[:, None]
    return (np.sin((1 - t) * angle) * p + np.sin(t * angle) * q) / np.sin(angle)


def slerp_in_python(t, p, q):
    found = []
    for at, a, b in zip(t, p, q):
        angle = math.acos(sum(x * y for x, y in zip(a, b)))
        u, v, whole = math.sin((1 - at) * angle), math.sin(at * angle), math.sin(angle)
        found.append([(u * x + v * y) / whole for x, y in zip(a, b)])
    return found


def units(seed):
    q = np.random.default_rng(seed).normal(size=(KEYS, 4))
    return q / np.sqrt((q * q).sum(axis=1, keepdims=True))


def compare(title, count, competitors):
    seconds = {name: [] for name in competitors}
    for _ in range(ROUNDS):
        for name in random.sample(list(competitors), len(competitors)):
            start = time.process_time()
            competitors[name]()
            seconds[name].append(time.process_time() - start)
    print(title)
    for name, times in seconds.items():
        median = statistics.median(times)
        print(f"  {name:<34}{1e3 * median:10.1f} ms {count / median / 1e6:10.2f} million/s")


def main():
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "records")
        mr.write_records(path, (mr.PptyVector3D(f"id{i:08}", (i, 0.5, -i)) for i in range(RECORDS)))
        found = mr.read_records(path, ["PptyVector3D", ...])
        assert read_with_struct(path) == [(p.name, p.value) for p in found]
        assert read_with_numpy(path)["value"].tolist() == [list(p.value) for p in found]
        compare(f"reading {RECORDS:,} records", RECORDS, {
            "mrcommon.read_records, checked": lambda: mr.read_records(path, ["PptyVector3D", ...]),
            "mrcommon.check_records": lambda: mr.check_records(path, ["PptyVector3D", ...]),
            "struct, tuples, not checked": lambda: read_with_struct(path),
            "numpy, one array, not checked": lambda: read_with_numpy(path)})
    t, p, q = np.random.default_rng(0).random(KEYS), units(1), units(2)
    assert np.allclose(slerp_with_numpy(t, p, q), mr.DQuat.slerp(t, p, q), atol=1e-9)
    lists = t.tolist(), p.tolist(), q.tolist()
    compare(f"{KEYS:,} interpolations", KEYS, {
        "mrcommon.DQuat.slerp, arrays": lambda: mr.DQuat.slerp(t, p, q),
        "numpy": lambda: slerp_with_numpy(t, p, q),
        "pure Python": lambda: slerp_in_python(*lists)})


if __name__ == "__main__":
    main()
