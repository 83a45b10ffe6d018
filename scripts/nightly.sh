#!/usr/bin/env bash
# What takes too long for every change: all tests in two further builds, the tests with the label "nightly", and the proof that the tests of
# docs/intentional-behaviour.md notice a change of what it lists.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/test.sh clang tsan
LABELS=nightly scripts/test.sh release
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
python3 tests/docs/intentional_behaviour.py prove . "$scratch"
