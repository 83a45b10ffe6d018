#!/usr/bin/env python3
"""Fails on an include that points to a higher layer or to an unrelated folder. Usage: check_layers.py <src>

A folder may include itself and the folders listed for it, nothing else.
"""
import pathlib
import re
import sys

ALLOWED = {
    "Export": set(),
    "basic": {"Export"},
    "qn_fileio": {"Export"},
    "qn_basic": {"Export", "basic"},
    "streams": {"Export", "basic", "qn_fileio"},
    "text": {"Export", "basic"},
    "math": {"Export", "basic"},
    "host": {"Export", "basic"},
    "system": {"Export", "basic"},
    "frames": {"Export", "basic", "qn_fileio", "text"},
    "properties": {"Export", "basic", "qn_basic", "streams", "host"},
}
ALLOWED["MRCommon"] = set(ALLOWED)
NUMBER_PARSING = "MRCommon/text/detail/LeadingInteger.h"  # all that frames/ may include of text/


def folder_of(path):
    """Returns the folder that the rules know a file by: below MRCommon/ the subfolder, else the first part."""
    if len(path.parts) == 2 and path.parts[0] == "MRCommon":
        return "Export" if path.stem in ("Export", "Version") else "MRCommon"
    return path.parts[1] if path.parts[0] == "MRCommon" else path.parts[0]


def complaints(source):
    files = sorted(p for p in source.rglob("*") if p.suffix in (".h", ".cpp"))
    if len(files) < 10:
        yield f"{source}: only {len(files)} files, this is not the source tree"
    for file in files:
        own = file.relative_to(source)
        folder = folder_of(own)
        if folder not in ALLOWED:
            yield f"{own}: the folder {folder} belongs to no layer"
            continue
        for spelled in re.findall(r'#\s*include\s*[<"]((?:MRCommon|qn_basic|qn_fileio)/[^>"]+)[>"]', file.read_text()):
            target = pathlib.Path(spelled)
            if not (source / target).exists():
                yield f"{own} includes {spelled}, which does not exist"
            elif folder_of(target) not in ALLOWED[folder] | {folder}:
                yield f"{own} includes {spelled}, which is not below {folder}"
            elif (folder, folder_of(target)) == ("frames", "text") and spelled != NUMBER_PARSING:
                yield f"{own} includes {spelled}; of text/ it may use only the parsing of numbers"


found = list(complaints(pathlib.Path(sys.argv[1])))
print("\n".join(found) or "every include points to a lower layer")
sys.exit(1 if found else 0)
