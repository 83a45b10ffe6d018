#!/usr/bin/env python3
"""Fails on a header that uses a name without including the header that declares it.
    check_includes.py [--fix] <src>          --fix adds the missing includes; clang-format -i then sorts them

Checked are the classes of this project that a header of their name defines, the export macros, and the names of the
standard library that are listed here. A forward declaration counts as well as an include.
"""
import pathlib
import re
import sys

STANDARD = {
    "algorithm": "std::(?:sort|min|max|copy|equal|lower_bound|clamp|find_if|all_of)\\b",
    "array": "std::array\\b",
    "atomic": "std::atomic\\b",
    "cmath": "std::(?:sqrt|sin|cos|acos|fabs|isnan|floor)\\b",
    "cstdio": "std::(?:FILE|printf|fread|fwrite|feof|ferror)\\b",
    "cstring": "std::(?:memcpy|memset|memcmp|memmove|strlen|strcmp)\\b",
    "functional": "std::function\\b",
    "initializer_list": "std::initializer_list\\b",
    "limits": "std::numeric_limits\\b",
    "map": "std::map\\b",
    "memory": "std::(?:unique_ptr|shared_ptr|make_unique)\\b",
    "string": "std::(?:string|to_string)\\b",
    "string_view": "std::string_view\\b",
    "type_traits": "std::(?:is_[a-z_]+|enable_if_t|conditional_t|decay_t|remove_[a-z]+_t|true_type|false_type)\\b",
    "typeinfo": "\\btypeid\\b",
    "utility": "std::(?:move|forward|swap|exchange|pair|index_sequence)\\b",
    "vector": "std::vector\\b",
}
OFFERED_TOO = {"utility": {"map", "memory", "string", "vector", "algorithm"}}  # std::move and std::pair come with these
MACROS = {
    "MRCommon/Export.h": "MRCOMMON_API|QN_BASIC_API|QN_FILEIO_API",
    "MRCommon/properties/QN_Class.h": "QN_CLASS_IDENTITY",
}


def code_of(text):
    """Returns the text without comments, string literals and preprocessor lines."""
    text = re.sub(r'"(?:\\.|[^"\\\n])*"|//[^\n]*|/\*.*?\*/', " ", text, flags=re.S)
    return re.sub(r"^\s*#.*?(?<!\\)$", " ", text, flags=re.M | re.S)


def missing_includes(headers):
    """Yields a header, the name that it uses and the header that it should include for it."""
    declared = dict(MACROS)
    for name, text in headers.items():
        stem = name.stem
        if re.search(rf"^(?:template <.*> )?(?:class|struct) (?:[A-Z_]+_API )?{stem}\b[^;]*{{", text, re.M):
            declared[str(name)] = stem
    for name, text in headers.items():
        included = set(re.findall(r"#\s*include\s*[<\"]([^>\"]+)", text))
        code = code_of(text)
        for header, pattern in declared.items():
            used = re.search(rf"\b(?:{pattern})\b", code)
            forward = re.search(rf"\b(?:class|struct) (?:[A-Z_]+_API )?(?:{pattern});", code)
            if used and not forward and header not in included | {str(name)}:
                yield name, used[0], header
        for header, pattern in STANDARD.items():
            used = re.search(pattern, code)
            if used and not included & ({header} | OFFERED_TOO.get(header, set())):
                yield name, used[0], header


def add_include(file, header):
    """Puts the include before the first one of its group: the headers of this project, or those of the standard."""
    lines = file.read_text().split("\n")
    group = r"#include <(?:MRCommon|qn_)" if "/" in header else r"#include <[a-z_]+>"
    at = next((i for i, line in enumerate(lines) if re.match(group, line)), None)
    if at is not None:
        lines.insert(at, f"#include <{header}>")
    elif "/" in header:
        at = next(i for i, line in enumerate(lines) if line.startswith("#define "))
        lines[at + 1 : at + 1] = ["", f"#include <{header}>"]
    else:
        at = max(i for i, line in enumerate(lines) if line.startswith(("#include ", "#define MRCOMMON_")))
        lines[at + 1 : at + 1] = ["", f"#include <{header}>"]
    file.write_text("\n".join(lines))


fix = sys.argv[1] == "--fix"
source = pathlib.Path(sys.argv[-1])
headers = {p.relative_to(source): p.read_text() for p in sorted(source.rglob("*.h"))}
if len(headers) < 50:
    sys.exit(f"{source}: only {len(headers)} headers, this is not the source tree")
found = list(missing_includes(headers))
for name, used, header in found:
    print(f"{name} uses {used} without including <{header}>")
    if fix:
        add_include(source / name, header)
sys.exit(1 if found and not fix else 0)
