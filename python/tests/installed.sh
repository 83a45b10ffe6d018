#!/usr/bin/env bash
# Installs the module, as `cmake --install` and as the Debian package do, moves both trees and imports it from there.
#     installed.sh <build folder> <interpreter> <scratch folder>
set -euo pipefail
build=$1 python=$2 scratch=$3
rm -rf "$scratch"
for component in python debian_python; do
    for part in runtime "$component"; do
        cmake --install "$build" --prefix "$scratch/first" --component "$part" >/dev/null
    done
    mv "$scratch/first" "$scratch/$component"
    module=$(echo "$scratch/$component"/lib/python3*/*-packages)
    case $component in python) [[ $module == */site-packages ]] ;; *) [[ $module == */python3/dist-packages ]] ;; esac
    PYTHONPATH=$module "$python" - "$module" <<'END'
import sys, mrcommon
assert mrcommon.__file__.startswith(sys.argv[1]), mrcommon.__file__
libraries = {line.split()[-1] for line in open("/proc/self/maps") if "libMRCommon" in line}
assert len(libraries) == 1 and libraries.pop().startswith(sys.argv[1].split("/lib/python")[0]), libraries
assert mrcommon.PptyInt("a", 7).value == 7
END
done
