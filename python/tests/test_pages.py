"""What readers see: the page's session, the example program, docstrings, type stubs, and the picture."""
import doctest
import inspect
import os
import re
import subprocess
import sys
from pathlib import Path

import mrcommon as mr
import pytest

SOURCE = Path(os.environ["MRCOMMON_SOURCE"])
CHECK_FRAMES = SOURCE / "examples/cluster/check_frames.py"


def run(*command, **options):
    return subprocess.run([sys.executable, *map(str, command)], capture_output=True, text=True, **options)


def test_the_page_works_from_top_to_bottom(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    page = (SOURCE / "docs/python.md").read_text()
    session = doctest.DocTestParser().get_doctest(re.sub(r"^```.*$", "", page, flags=re.M), {}, "python.md", None, 0)
    assert len(session.examples) > 25
    assert doctest.DocTestRunner().run(session).failed == 0


def write_frames(folder, count):
    for frame in range(1, count + 1):
        mr.write_records(folder / f"spray.{frame:04}.rec", [mr.PptyInt("particles", 0), mr.PptyVector3D("a", (1, 2, 3))])


def test_the_example_checks_folders(tmp_path):
    write_frames(tmp_path, 5)
    good = run(CHECK_FRAMES, tmp_path)
    assert (good.returncode, good.stderr) == (0, "") and re.match(r"5 files, 240 bytes, 0 faults", good.stdout)
    (tmp_path / "spray.0002.rec").unlink()
    (tmp_path / "spray.0003.rec").write_bytes(b"\x05")
    bad = run(CHECK_FRAMES, tmp_path, "--processes", 2)
    assert bad.returncode == 1 and "spray.0003.rec: name at byte 0: EndsEarly\nspray.####.rec: missing 2\n" in bad.stdout
    none = run(CHECK_FRAMES, tmp_path / "none")
    assert none.returncode == 2 and none.stderr == f"check_frames.py: {tmp_path}/none: No such file or directory\n"


def test_the_example_uses_a_cluster(tmp_path):
    distributed = pytest.importorskip("distributed")
    if "MRCOMMON_SANITIZED" in os.environ:
        pytest.skip("the cluster's processes take minutes with sanitizers")
    write_frames(tmp_path, 3)
    with distributed.LocalCluster(n_workers=1, threads_per_worker=1, processes=True, dashboard_address=None,
                                  local_directory=tmp_path) as cluster:
        ran = run(CHECK_FRAMES, tmp_path, "--scheduler", cluster.scheduler_address)
    assert ran.returncode == 0 and ran.stdout.startswith("3 files,"), ran.stderr


def test_every_public_name_has_a_docstring():
    missing = []
    for name in mr.__all__:
        value = getattr(mr, name)
        assert inspect.getdoc(value), name
        for member, raw in vars(value).items() if inspect.isclass(value) else ():
            if not member.startswith("_") and not (callable(raw) or isinstance(raw, (property, staticmethod))):
                continue
            if not member.startswith("_") and not inspect.getdoc(getattr(value, member)):
                missing.append(f"{name}.{member}")
    assert missing == []


def test_type_checkers_accept_the_package_and_its_stubs(tmp_path):
    pytest.importorskip("mypy")
    package = Path(mr.__file__).parent
    user = tmp_path / "user.py"
    user.write_text("import mrcommon as mr\n"
                    "names: list[str] = mr.kinds()\n"
                    "turn: mr.DQuat = mr.DQuat.slerp(0.5, mr.DQuat.IDENTITY, mr.DQuat()) * 2\n"
                    "bad: int = mr.ByteId().uuid\n")
    checked = run("-m", "mypy", "--config-file", SOURCE / "python/pyproject.toml", "--cache-dir", tmp_path / "cache",
                  user, package, cwd=package.parent)
    assert re.findall(r"error: (.*)", checked.stdout) == [
        'Incompatible types in assignment (expression has type "UUID", variable has type "int")  [assignment]'], checked.stdout
    allowed = tmp_path / "allowed"  # the classes' metaclass is pybind11's
    allowed.write_text("".join(f"mrcommon._core.{name}\n" for name in "ByteId DQuat FrameSequence Property Quat".split()))
    compared = run("-m", "mypy.stubtest", "mrcommon._core", "--ignore-missing-stub", "--allowlist", allowed, cwd=tmp_path,
                   env={**os.environ, "MYPYPATH": str(package.parent)})
    assert compared.returncode == 0, compared.stdout


def test_sequences_are_drawn_with_their_gaps(tmp_path):
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    axes = mr.plot_sequences(mr.group_frames([f"a.{i:03}.x" for i in (1, 2, 5)] + ["b7.y"]))
    assert [label.get_text() for label in axes.get_yticklabels()] == ["a.###.x", "b#.y"]
    bars = [[tuple(path.get_extents().intervalx) for path in bar.get_paths()] for bar in axes.collections]
    assert bars == [[(0.5, 2.5), (4.5, 5.5)], [(2.5, 4.5)], [(6.5, 7.5)], []]
    axes.figure.savefig(tmp_path / "sequences.png")
    assert (tmp_path / "sequences.png").stat().st_size > 1000
    assert mr.plot_sequences(mr.group_frames([]), axes) is axes
