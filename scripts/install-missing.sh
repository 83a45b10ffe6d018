#!/usr/bin/env bash
# Installs the Debian packages that a command needs and the machine lacks. Needs no network if none is missing.
#     install-missing.sh build           a compiler, CMake, Ninja
#     install-missing.sh build test      also what the tests use
#     install-missing.sh build python    also what the Python module needs; python-test: its tests
#     install-missing.sh mutate          what scripts/mutate.py needs; coverage: scripts/coverage.sh conditions
set -euo pipefail

missing=()
command_of() { command -v "$1" >/dev/null || missing+=("$2"); } # command_of <command> <package>
file_of() { [ -e "$1" ] || missing+=("$2"); }                   # file_of <file> <package>

for purpose in "$@"; do
    case $purpose in
    build)
        command_of g++ g++
        command_of cmake cmake
        command_of ninja ninja-build
        file_of /usr/include/CLI/CLI.hpp libcli11-dev
        file_of /usr/include/nlohmann/json.hpp nlohmann-json3-dev
        ;;
    test)
        file_of /usr/include/gtest/gtest.h libgtest-dev
        file_of /usr/include/benchmark/benchmark.h libbenchmark-dev
        command_of clang++ clang
        command_of clang-format clang-format
        command_of clang-tidy clang-tidy
        command_of valgrind valgrind
        command_of abidiff abigail-tools
        command_of doxygen doxygen
        command_of dot graphviz
        command_of mandoc mandoc
        command_of chromedriver chromium-driver
        file_of /usr/lib/python3/dist-packages/selenium python3-selenium
        file_of /usr/share/doxygen-awesome-css/doxygen-awesome.css doxygen-awesome-css
        command_of pkg-config pkg-config
        command_of make make
        command_of dpkg-shlibdeps dpkg-dev
        command_of file file
        command_of qemu-s390x qemu-user
        command_of aarch64-linux-gnu-g++ g++-aarch64-linux-gnu
        command_of s390x-linux-gnu-g++ g++-s390x-linux-gnu
        command_of python3 python3
        ;;
    python) # the module mrcommon: /usr/bin/python3 uses these packages, another interpreter in PATH would not
        file_of /usr/bin/python3-config python3-dev
        file_of /usr/include/pybind11/pybind11.h pybind11-dev
        file_of /usr/lib/python3/dist-packages/numpy python3-numpy
        ;;
    python-test)
        file_of /usr/lib/python3/dist-packages/pytest python3-pytest
        file_of /usr/lib/python3/dist-packages/hypothesis python3-hypothesis
        file_of /usr/lib/python3/dist-packages/distributed python3-distributed
        file_of /usr/lib/python3/dist-packages/matplotlib python3-matplotlib
        file_of /usr/lib/python3/dist-packages/mypy python3-mypy
        ;;
    mutate)
        file_of /usr/lib/python3/dist-packages/clang python3-clang-14
        ;;
    coverage)
        command_of gcovr gcovr
        command_of clang++-19 clang-19
        command_of llvm-cov-19 llvm-19
        file_of /usr/lib/llvm-19/lib/clang/19/lib/linux libclang-rt-19-dev
        ;;
    *) echo "install-missing.sh: unknown purpose $purpose" >&2; exit 2 ;;
    esac
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing ${missing[*]}"
[ "$(id -u)" -eq 0 ] || { echo "run as root, or install these packages first" >&2; exit 1; }
export DEBIAN_FRONTEND=noninteractive
apt-get update
# The packages that clang recommends contain the run-time libraries of its sanitizers and fuzzing engine.
apt-get install -y "${missing[@]}"
