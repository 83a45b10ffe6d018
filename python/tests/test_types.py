"""Type checkers accept the package, and its stub names what the extension has."""
import os
import re
import subprocess
import sys
from pathlib import Path

import mrcommon as mr
import pytest

pytest.importorskip("mypy")
PACKAGE = Path(mr.__file__).parent
SETTINGS = Path(os.environ["MRCOMMON_SOURCE"]) / "python/pyproject.toml"


def run(module, *arguments, **options):
    return subprocess.run([sys.executable, "-m", module, *map(str, arguments)], capture_output=True, text=True, **options)


def test_the_package_is_accepted_and_wrong_use_is_not(tmp_path):
    user = tmp_path / "user.py"
    user.write_text("import mrcommon as mr\n"
                    "names: list[str] = mr.kinds()\n"
                    "turn: mr.DQuat = mr.DQuat.slerp(0.5, mr.DQuat.IDENTITY, mr.DQuat()) * 2\n"
                    "copy: mr.Ppty = mr.PptyInt(\"a\", 1).with_name(\"b\")\n"
                    "(wind,) = mr.load_plugin(\"libwind.so\")\n"
                    "breeze: mr.Ppty = wind(\"breeze\", (1, 2, 3))\n"
                    "bad: int = mr.ByteId().uuid\n")
    checked = run("mypy", "--config-file", SETTINGS, "--cache-dir", tmp_path / "cache", user, PACKAGE, cwd=PACKAGE.parent)
    assert re.findall(r"error: (.*)", checked.stdout) == [
        'Incompatible types in assignment (expression has type "UUID", variable has type "int")  [assignment]'], checked.stdout


def test_the_stub_agrees_with_the_extension(tmp_path):
    allowed = tmp_path / "allowed"  # the classes' metaclass is pybind11's
    allowed.write_text("".join(f"mrcommon._core.{name}\n" for name in "ByteId DQuat FrameSequence Property Quat".split()))
    compared = run("mypy.stubtest", "mrcommon._core", "--allowlist", allowed, cwd=tmp_path,
                   env={**os.environ, "MYPYPATH": str(PACKAGE.parent)})
    assert compared.returncode == 0, compared.stdout
