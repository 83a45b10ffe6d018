#!/usr/bin/env python3
"""Fails on an include that points up the floors of the library. Usage: floors.py <src>

Floors, ground first:
  0  Export.h, qn_fileio, values and containers of basic/
  1  qn_basic
  2  basic/: streams and encodings
  3  text/, math/, system/ (no arrow among the three)
  4  properties/
  5  MRCommon.h
Beyond the floors: math/ never includes text, and qn_basic nothing but floor 0.
"""
import pathlib
import re
import sys

STREAMS = {"FileStream", "FileStreamRaw", "FileStreamEndian", "StreamEncoding"}


def floor_and_room(path):
    parts = path.parts
    if parts[0] == "qn_fileio" or path.stem == "Export":
        return 0, "qn_fileio"
    if parts[0] == "qn_basic":
        return 1, "qn_basic"
    room = parts[1]
    if room == "basic":
        return (2 if path.stem in STREAMS else 0), "basic"
    if room in ("text", "math", "system"):
        return 3, room
    if room == "properties":
        return 4, room
    if path.name == "MRCommon.h":
        return 5, "top"
    raise SystemExit(f"{path}: stands on no floor")


def complaints(source):
    files = sorted(p for p in source.rglob("*") if p.suffix in (".h", ".cpp"))
    if len(files) < 10:
        yield f"{source}: only {len(files)} files, this is not the source tree"
    for file in files:
        own = file.relative_to(source)
        own_floor, own_room = floor_and_room(own)
        for spelled in re.findall(r'#\s*include\s*[<"]((?:MRCommon|qn_basic|qn_fileio)/[^>"]+)[>"]', file.read_text()):
            target = pathlib.Path(spelled)
            if not (source / target).exists():
                yield f"{own} includes {spelled}, which does not exist"
                continue
            floor, room = floor_and_room(target)
            if floor > own_floor:
                yield f"{own} (floor {own_floor}) includes {spelled} (floor {floor})"
            elif floor == own_floor == 3 and room != own_room:
                yield f"{own} includes its neighbour {spelled}"
            elif own_floor == 4 and room == "text" and target.stem != "ConfigurationMngr":
                yield f"{own} may use of text/ the configuration singleton only, not {spelled}"


found = list(complaints(pathlib.Path(sys.argv[1])))
print("\n".join(found) or "every include points down")
sys.exit(1 if found else 0)
