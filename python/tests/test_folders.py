"""check_folder: one report whatever the executor, also when a worker is killed."""
import os
import signal
import struct
import subprocess
import sys
import threading
from concurrent.futures import Future, ProcessPoolExecutor, ThreadPoolExecutor
from pathlib import Path

import mrcommon as mr
import pytest

KINDS = ["PptyInt", "PptyVector3D", ...]
MISSING = [mr.MissingFrames("fluid.####.rec", [(70, 72), (100, 100)])]


@pytest.fixture(scope="module")
def folder(tmp_path_factory):
    """400 frames, one of which ends early and one of which has a wrong length."""
    made = tmp_path_factory.mktemp("frames")
    record = mr.PptyInt("particles", 2).to_bytes() + 2 * mr.PptyVector3D("id", (1, 2, 3)).to_bytes()
    for frame in range(404):
        if frame not in (70, 71, 72, 100):
            (made / f"fluid.{frame:04}.rec").write_bytes(record)
    (made / "fluid.0007.rec").write_bytes(record[:-1])
    (made / "fluid.0300.rec").write_bytes(struct.pack("<I", 2**31) + record[4:])
    (made / "notes.txt").touch()
    return made


def expect_complete(report, folder):
    size = sum(os.path.getsize(path) for path in folder.glob("*.rec"))
    assert (report.files, report.bytes, report.good, report.missing) == (400, size, False, MISSING)
    assert report.faults == [mr.Fault(str(folder / "fluid.0007.rec"), "value", size // 400 - 24 + 1, "EndsEarly"),
                             mr.Fault(str(folder / "fluid.0300.rec"), "name", 0, "SizeBeyondFile")]


def test_threads_and_processes_find_the_same(folder):
    expect_complete(mr.check_folder(folder, KINDS), folder)
    for executor in ThreadPoolExecutor(3), ProcessPoolExecutor(2):
        with executor:
            expect_complete(mr.check_folder(str(folder), KINDS, executor), folder)


def test_what_an_executor_loses_is_checked_here(folder):
    class Losing(ThreadPoolExecutor):
        """Loses its first chunk, cancels its second, and accepts no more after its fourth."""
        calls = 0

        def submit(self, *work):
            self.calls += 1
            if self.calls > 4:
                raise RuntimeError("cannot schedule new futures")
            lost = Future()
            if self.calls == 1:
                lost.set_exception(OSError("the worker is gone"))
            elif self.calls == 2:
                lost.cancel()
                lost.set_running_or_notify_cancel()
            else:
                return super().submit(*work)
            return lost

    with Losing() as executor:
        expect_complete(mr.check_folder(folder, KINDS, executor), folder)
        assert executor.calls > 4


def test_a_second_check_is_not_answered_from_the_first(tmp_path):
    class Keeping(ThreadPoolExecutor):
        """Keeps its results, as distributed engines do."""
        kept = {}

        def submit(self, *work):
            if repr(work) not in self.kept:
                self.kept[repr(work)] = super().submit(*work)
            return self.kept[repr(work)]

    (tmp_path / "a.1.rec").touch()
    with Keeping() as executor:
        assert not mr.check_folder(tmp_path, KINDS, executor).good
        mr.write_records(tmp_path / "a.1.rec", [mr.PptyInt("particles", 0)])
        assert mr.check_folder(tmp_path, KINDS, executor).good


def test_processes_that_are_killed_leave_the_report_complete(folder):
    with ProcessPoolExecutor(2) as executor:
        executor.submit(os.getpid).result()
        os.kill(next(iter(executor._processes)), signal.SIGKILL)
        expect_complete(mr.check_folder(folder, KINDS, executor), folder)


def test_progress_counts_files_and_may_end_the_check(folder):
    calls = []
    mr.check_folder(folder, KINDS, progress=lambda done, total: calls.append((done, total)))
    assert calls[-1] == (400, 400) and calls == sorted(calls)
    with pytest.raises(ZeroDivisionError):
        mr.check_folder(folder, KINDS, progress=lambda done, total: 1 // 0)
    assert threading.active_count() == 1


def test_files_that_cannot_be_read_are_faults(tmp_path):
    (tmp_path / "a.1.rec").symlink_to("nowhere")
    report = mr.check_folder(tmp_path, KINDS)
    assert report.faults == [mr.Fault(str(tmp_path / "a.1.rec"), "", 0, "No such file or directory")]
    assert mr.check_folder(tmp_path, KINDS[:1], ThreadPoolExecutor(1)).files == 1


def test_wrong_arguments_are_found_before_a_file_is_opened(tmp_path):
    for kinds, error in ((["None"], ValueError), ("PptyInt", TypeError), ([7], TypeError), (7, TypeError)):
        with pytest.raises(error):
            mr.check_folder(tmp_path, kinds)


@pytest.mark.skipif("MRCOMMON_SANITIZED" in os.environ, reason="the cluster's processes take minutes with sanitizers")
def test_a_cluster_that_loses_a_worker_reports_all(folder, monkeypatch):
    monkeypatch.setattr("mrcommon.folders.FILES_PER_CHUNK", 1)
    distributed = pytest.importorskip("distributed")
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None,
                                  local_directory=folder.parent) as cluster, distributed.Client(cluster) as client:
        address, victim = next(iter(client.run(os.getpid).items()))
        unfinished = []

        def progress(done, total):
            if not unfinished:
                unfinished.append(client.processing()[address])
                os.kill(victim, signal.SIGKILL)

        report = mr.check_folder(folder, KINDS, client.get_executor(), progress)
        assert unfinished[0], "the worker was to be killed while chunks were its own"
        assert not Path(f"/proc/{victim}").exists() and report == mr.check_folder(folder, KINDS)
        expect_complete(report, folder)
        example = Path(os.environ["MRCOMMON_SOURCE"], "examples/cluster/check_frames.py")
        ran = subprocess.run([sys.executable, example, folder, "--scheduler", cluster.scheduler_address],
                             capture_output=True, text=True)
    assert ran.returncode == 1 and "\n400 files," in ran.stdout, ran.stderr
