#!/usr/bin/env python3
"""Writes the figures of benchmarks/run.sh into the tables of a page.

Usage: tables.py FIGURES.json [PAGE.md]        without a page, prints one table of all themes

Everything between a line "<!-- figures: THEME -->" and the next "<!-- end -->" is replaced: by the table of the theme, or by the
date, the processor and the compiler if THEME is "machine". Ratios over their goal are bold, and the page must give the reason:
the exit status is 1 if no item of its lists names such a row in its first words, as in "- `row`, `row`: ...".
"""
import json
import re
import sys

# The highest ratio of our time to that of the fastest peer that a row should have.
GOALS = {
    "rotations": {
        "product/double": 1.25, "product/float": 1.25, "inverse/double": 0.9, "inverse/float": 1.4, "slerp/double": 1.1,
        "squad/double": 1.05, "to-matrix/double": 1.05, "to-matrix/float": 1.15, "from-matrix/double": 1.0,
        "from-matrix/float": 1.0, "vector/double": 1.25, "vector/float": 1.25, "from-axis-angle/double": 1.05,
        "to-axis-angle/double": 1.05,
    },
    "identifiers": {
        "parse": 0.2, "print": 0.75, "sort_100000": 0.85, "compare_100000": 1.5, "increment": 1.05,
    },
    "text": {
        "format": 1.75, "format_10kB": 15, "tokenize_100000": 0.65, "replace_all_short": 0.9, "replace_all_100000": 0.6,
        "url_encode": 0.15, "tokenizer_1000": 0.9, "tokenizer_100000": 0.9, "frame_name": 1.0,
    },
    "properties": {
        "save_memory_10000": 0.8, "load_memory_10000": 0.85, "save_file_10000": 0.98, "load_file_10000": 0.95,
        "set_variant_10000": 0.8, "create_10000": 1.6, "clone_10000": 1.9, "destroy_10000": 2.3, "check_and_read_10000": 1.5,
    },
    "frames": {
        "range_middle_10000": 0.6, "range_end_10000": 0.01, "scan_folder_10000": 0.3,
    },
}


def in_order(row):
    """Sorts numbers in a row's name by their value."""
    return [(int(part), "") if part.isdigit() else (-1, part) for part in re.split(r"(\d+)", row["row"])]


def time_of(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def ratio_of(ratio):
    return f"{ratio:.1f}" if ratio >= 10 else f"{ratio:.2f}" if ratio >= 0.01 else f"{ratio:.4f}"


def is_over(theme, row):
    """Compares the ratio as it is printed, so that the page shows why a row is bold."""
    goal = GOALS.get(theme["theme"], {}).get(row["row"])
    return goal is not None and float(ratio_of(row["ratio"])) > goal


HEADER = ["Row", "Ours", "Fastest peer", "Ratio", "Goal", "Ratio to each"]


def cells(theme):
    for row in sorted(theme["rows"], key=in_order):
        times = row["nanoseconds"]
        each = ", ".join(f"{who} {ratio_of(times['ours'] / time)}" for who, time in times.items() if who != "ours")
        goal = str(GOALS.get(theme["theme"], {}).get(row["row"], ""))
        ratio = ratio_of(row["ratio"]) if "ratio" in row else ""
        ratio = f"**{ratio}**" if is_over(theme, row) else ratio
        yield [f"`{row['row']}`", time_of(times["ours"]), row.get("fastest", ""), ratio, goal, each]


def table(theme):
    head, *rows = ("| " + " | ".join(line) + " |" for line in [HEADER, *cells(theme)])
    return "\n".join([head, "|---" * len(HEADER) + "|", *rows])


def print_all(figures):
    """Prints one table with aligned columns."""
    lines = [HEADER, *(line for theme in figures["themes"] for line in cells(theme))]
    widths = [max(len(line[column]) for line in lines) for column in range(len(HEADER))]
    for line in lines:
        print("  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    with open(sys.argv[1], encoding="utf-8") as file:
        figures = json.load(file)
    if len(sys.argv) == 2:
        print_all(figures)
        return
    contents = {theme["theme"]: table(theme) for theme in figures["themes"]}
    contents["machine"] = f"Measured on {figures['date']}: {figures['processor']}, {figures['compiler']}."
    with open(sys.argv[2], encoding="utf-8") as file:
        page = file.read()

    def fill(match):
        theme = match.group(1)
        if theme not in contents:
            sys.exit(f"tables.py: {sys.argv[1]} has no figures of {theme}")
        return f"<!-- figures: {theme} -->\n{contents[theme]}\n<!-- end -->"

    page = re.sub(r"<!-- figures: (\w+) -->\n.*?<!-- end -->", fill, page, flags=re.DOTALL)
    with open(sys.argv[2], "w", encoding="utf-8") as file:
        file.write(page)
    explained = {row for item in re.findall(r"^- ((?:`[^`]+`[,:]?\s+(?:and\s+)?)+)", page, re.MULTILINE)
                 for row in re.findall(r"`([^`]+)`", item)}
    missing = [row["row"] for theme in figures["themes"] for row in theme["rows"]
               if is_over(theme, row) and row["row"] not in explained]
    if missing:
        sys.exit(f"tables.py: {sys.argv[2]} gives no reason for the rows over their goal: " + ", ".join(missing))


if __name__ == "__main__":
    main()
