#!/usr/bin/env bash
# One command on a fresh machine: installs what is missing, builds, and runs the example host: a simulation and its verification.
# The results are in build/demo. Exits with 0 only if the simulation was verified.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-missing.sh build python
cmake --preset release -D MRCOMMON_BUILD_PYTHON=ON -D Python3_EXECUTABLE=/usr/bin/python3
cmake --build --preset release

fountain=build/release/examples/fountain/fountain
scene=examples/fountain/harbour.scene
"$fountain" "$scene" build/demo
"$fountain" --verify "$scene" build/demo/frames/harbour_fountain00030.rec
echo "The scene is saved in build/demo/harbour.props, the records and frames are in build/demo, the picture is build/demo/sheet.png"
echo "Paste this line to open the scene in Python; scene['gravity'] is then one of its properties:"
echo "    PYTHONPATH=build/release/python /usr/bin/python3 -ic 'import mrcommon as mr; mr.load_plugin(\"build/release/examples/fountain/libfountain_wind.so\"); scene = {p.name: p for p in mr.load(\"build/demo/harbour.props\")}; print(*map(repr, scene.values()), sep=\"\\n\")'"
