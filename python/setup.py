"""Builds the extension with CMake: pip install ./python in a checkout. pyproject.toml has all that is constant."""
import os
import re
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

TOP = Path(__file__).resolve().parent.parent
HEADER = (TOP / "src/MRCommon/Version.h").read_text()
VERSION = ".".join(re.findall(r"^#define MRCOMMON_VERSION_[A-Z]+ ([0-9]+)", HEADER, re.MULTILINE))
ONLY_THE_MODULE = ["TESTS", "EXAMPLES", "BENCHMARKS", "FUZZERS", "TOOLS", "DOCS"]


class BuildWithCMake(build_ext):
    """Puts the extension and the libraries that it needs side by side into the package."""

    def build_extension(self, ext):
        package = Path(self.get_ext_fullpath(ext.name)).resolve().parent
        build = Path(self.build_temp).resolve() / "cmake"
        options = [f"-DMRCOMMON_BUILD_{what}=OFF" for what in ONLY_THE_MODULE]
        subprocess.run(["cmake", "-S", TOP, "-B", build, "-DCMAKE_BUILD_TYPE=Release", "-DMRCOMMON_BUILD_PYTHON=ON",
                        "-DMRCOMMON_WERROR=OFF", f"-DPython3_EXECUTABLE={sys.executable}", *options], check=True)
        subprocess.run(["cmake", "--build", build, "--target", "mrcommon_python", "--parallel", str(os.cpu_count() or 1)],
                       check=True)
        subprocess.run(["cmake", "--install", build, "--component", "wheel_python", "--prefix", package], check=True)


setup(version=VERSION, ext_modules=[Extension("mrcommon._core", [])], cmdclass={"build_ext": BuildWithCMake})
