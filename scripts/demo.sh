#!/usr/bin/env bash
# One command on a fresh machine: installs what is missing, builds, and runs the example host on its scene.
# What it writes lies in build/demo afterwards.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-missing.sh build
cmake --preset release
cmake --build --preset release
build/release/examples/fountain/fountain examples/fountain/harbour.scene build/demo
