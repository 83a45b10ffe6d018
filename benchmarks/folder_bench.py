#!/usr/bin/python3
"""Times mrcommon.check_folder with threads, processes and a local Dask cluster of one worker and of two.

    PYTHONPATH=build/release/python benchmarks/folder_bench.py

Makes 20,000 files of 101 records and prints the files per second of the best of three checks.
"""
import contextlib
import os
import tempfile
import time
from concurrent.futures import ProcessPoolExecutor, ThreadPoolExecutor

import mrcommon as mr

FILES, ROUNDS = 20_000, 3


def write_frames(folder):
    frame = [mr.PptyInt("particles", 100), *(mr.PptyVector3D(f"id{i:05}", (i, 0.5, -i)) for i in range(100))]
    record = b"".join(item.to_bytes() for item in frame)
    for number in range(FILES):
        with open(os.path.join(folder, f"spray.{number:05}.rec"), "wb") as file:
            file.write(record)
    return len(record)


@contextlib.contextmanager
def dask_cluster(workers):
    from distributed import Client, LocalCluster
    with LocalCluster(n_workers=workers, threads_per_worker=1, processes=True, dashboard_address=None) as cluster, \
            Client(cluster) as client:
        yield client.get_executor()


def best_rate(folder, executor):
    seconds = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        report = mr.check_folder(folder, ["PptyInt", "PptyVector3D", ...], executor)
        seconds.append(time.perf_counter() - start)
        assert report.files == FILES and report.good
    return FILES / min(seconds)


def main():
    with tempfile.TemporaryDirectory() as folder:
        print(f"{FILES:,} files of {write_frames(folder):,} bytes; files per second with 1 and with 2 workers")
        start = time.perf_counter()
        mr.scan_frames(folder)
        print(f"scanning the folder: {1e3 * (time.perf_counter() - start):.0f} ms")
        for executors in ThreadPoolExecutor, ProcessPoolExecutor, dask_cluster:
            rates = []
            for workers in 1, 2:
                with executors(workers) as executor:
                    rates.append(best_rate(folder, executor))
            print(f"{executors.__name__:<22}", *(f"{rate:10,.0f}" for rate in rates))


if __name__ == "__main__":
    main()
