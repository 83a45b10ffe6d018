#!/usr/bin/env bash
# What takes too long for every change: all tests in two further builds, the tests with the label "nightly", the proof that
# the tests of docs/intentional-behaviour.md notice a change of what it lists, and faults planted into the sources.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/test.sh clang tsan
LABELS=nightly scripts/test.sh release
scripts/install-missing.sh mutate
scripts/mutate.py --table
scripts/mutate.py --seed 7 --count 300
