"""What readers see: the page's session, the example program, docstrings, and the picture."""
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


def test_pip_packs_this_version():
    pytest.importorskip("setuptools")
    assert run("setup.py", "--version", cwd=SOURCE / "python").stdout.split() == [mr.__version__]


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


def test_every_public_name_has_a_docstring():
    """A field has none of its own: that of its class names it."""
    missing = [name for name in mr.__all__ if not inspect.getdoc(getattr(mr, name))]
    for owner in filter(inspect.isclass, map(vars(mr).get, mr.__all__)):
        for member in set(dir(owner)) - set(dir(int)) - set(dir(ValueError)):
            raw = inspect.getattr_static(owner, member)
            own = inspect.getdoc(raw) if callable(raw) or isinstance(raw, (property, classmethod, staticmethod)) else None
            if not member.startswith("_") and not own and not re.search(rf"\b{member}\b", inspect.getdoc(owner)):
                missing.append(f"{owner.__name__}.{member}")
    assert missing == []


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
