"""Draws the figures of the manual as SVG, from the facts below and from measured numbers. They take the colour of the text
around them, so that they can be read in light and in dark."""
import html
import json
import math

COLOURS = {"x": "#e0645c", "y": "#4fa75b", "z": "#4d87d6", "ours": "#4d87d6"}


def svg(width, height, parts):
    return (f'<svg class="figure" viewBox="0 0 {width} {height}" width="{width}" height="{height}" role="img" '
            f'font-family="sans-serif" font-size="13">{"".join(parts)}</svg>')


def box(x, y, width, height, text="", fill="none", family="inherit"):
    return (f'<rect x="{x}" y="{y}" width="{width}" height="{height}" fill="{fill}" stroke="black" fill-opacity="0.55"/>'
            + label(x + width / 2, y + height / 2 + 5, text, "middle", family))


def label(x, y, text, anchor="start", family="inherit"):
    return f'<text x="{x}" y="{y}" text-anchor="{anchor}" font-family="{family}">{html.escape(str(text))}</text>'


def record():
    """The bytes of a plain float named "gravity"."""
    fields = [("08 00 00 00", "size of the name", "x"), ("67 72 61 76 69 74 79 00", '"gravity" and its NUL', "y"),
              ("C3 F5 1C C1", "the value, -9.81", "z")]
    parts, at = [], 0
    for data, meaning, colour in fields:
        digits = data.split()
        parts += [box(2 + 38 * (at + i), 22, 38, 28, byte, COLOURS[colour], "monospace") for i, byte in enumerate(digits)]
        parts.append(label(2 + 38 * (at + len(digits) / 2), 70, meaning, "middle"))
        parts.append(label(2 + 38 * at + 19, 14, at, "middle"))
        at += len(digits)
    return svg(612, 80, parts)


def name_orders():
    """The place of the frame in a name, for each order."""
    pieces = {"name": ("fluid", "x"), "frame": ("00012", "y"), "ext": ("bin", "z")}
    orders = ["name . frame . ext", "name . ext . frame", "name frame . ext", "name _ frame . ext"]
    parts = []
    for row, order in enumerate(orders):
        x, y = 80, 4 + 36 * row
        parts.append(label(4, y + 19, f"order {row}"))
        for piece in order.split():
            text, colour = pieces.get(piece, (piece, None))
            width = 12 + 9 * len(text)
            parts.append(box(x, y, width, 28, text, COLOURS.get(colour, "none"), "monospace"))
            x += width
    return svg(340, 148, parts)


def axis_orders():
    """The axes of the angles of getAngles, and the two matrices of one rotation."""
    parts = [label(80 + 40 * i + 17, 14, f"angle {i}" if i == 1 else i, "middle") for i in range(3)]
    for row, axes in enumerate(["xyz", "yzx", "zxy", "zyx", "xzy", "yxz"]):
        y = 22 + 30 * row
        parts.append(label(4, y + 17, f"order {row}"))
        parts += [box(80 + 40 * i, y, 34, 24, axis, COLOURS[axis]) for i, axis in enumerate(axes)]
    matrices = [("for columns: M·p", ["0 -1 0", "1 0 0", "0 0 1"]), ("for rows: p·M", ["0 1 0", "-1 0 0", "0 0 1"])]
    for number, (title, rows) in enumerate(matrices):
        left = 250 + 140 * number
        parts.append(label(left, 14, title))
        parts += [box(left + 34 * c, 22 + 30 * r, 34, 30, value, COLOURS["y"] if value == "1" and r < 2 else "none")
                  for r, row in enumerate(rows) for c, value in enumerate(row.split())]
    parts.append(label(250, 136, "a quarter turn about z takes x to y"))
    return svg(500, 206, parts)


PEERS = ["#d9822b", "#4fa75b", "#a667c9", "#e0645c", "#2fa3a3", "#b8a12f", "#8d6e63", "#7f8c9a"]


def times(row):
    """Returns the measured nanoseconds of a row, by who took them."""
    return {who: time for who, time in row.get("nanoseconds", {}).items() if isinstance(time, (int, float)) and time > 0}


def comparison(rows):
    """Each row's times divided by ours, as points on a logarithmic axis: left of the line at 1 are those who are faster."""
    rows = [(row["row"], times(row)) for row in rows]
    ratios = [(name, {who: time / measured["ours"] for who, time in measured.items()})
              for name, measured in rows if len(measured) > 1 and "ours" in measured]
    if not ratios:
        return None
    peers = sorted({who for _, found in ratios for who in found} - {"ours"}, key=str.lower)
    colours = {"ours": COLOURS["ours"], **{peer: PEERS[i % len(PEERS)] for i, peer in enumerate(peers)}}
    lowest = math.floor(min(math.log10(ratio) for _, found in ratios for ratio in found.values()) - 0.05)
    highest = math.ceil(max(math.log10(ratio) for _, found in ratios for ratio in found.values()) + 0.05)
    left, width, bottom = 185, 450, 60 + 22 * len(ratios)

    def place(ratio):
        return round(left + width * (math.log10(ratio) - lowest) / (highest - lowest), 1)
    parts, x = [], 4
    for who, colour in colours.items():
        parts.append(f'<circle cx="{x + 5}" cy="11" r="5" fill="{colour}"/>' + label(x + 14, 15, who))
        x += 30 + 8 * len(who)
    for power in range(lowest, highest + 1):
        at, dashes = place(10**power), "" if power == 0 else ' stroke-dasharray="2 4" stroke-opacity="0.6"'
        parts.append(f'<line x1="{at}" x2="{at}" y1="46" y2="{bottom}" stroke="black"{dashes}/>'
                     + label(at, 40, "1" if power == 0 else f"{10.0**power:g}×", "middle"))
    for number, (name, found) in enumerate(ratios):
        y = 60 + 22 * number
        parts.append(label(left - 10, y + 5, name, "end"))
        parts.append(f'<line x1="{left}" x2="{left + width}" y1="{y}" y2="{y}" stroke="black" stroke-opacity="0.15"/>')
        for who in sorted(found, key=list(colours).index, reverse=True):
            parts.append(f'<circle cx="{place(found[who])}" cy="{y}" r="5" fill="{colours[who]}">'
                         f"<title>{html.escape(who)}: {found[who]:.3g}</title></circle>")
    return svg(max(x, left + width + 40), bottom + 6, parts)


def bars(rows):
    """Bars as long as the values of (name, value) rows."""
    most, left = max(value for _, value in rows) or 1, 8 * max(len(name) for name, _ in rows)
    parts = []
    for i, (name, value) in enumerate(rows):
        y, length = 4 + 24 * i, round(170 * value / most, 1)
        parts.append(label(left - 6, y + 14, name, "end"))
        parts.append(box(left, y, length, 18, "", COLOURS["ours"]))
        parts.append(label(left + length + 6, y + 14, f"{value:,}"))
    return svg(left + 230, 8 + 24 * len(rows), parts)


def caption(text):
    return f'<p class="caption">{html.escape(text)}</p>'


def charts(path):
    """Returns the charts of a file of measured numbers, by their names: one for each theme that benchmarks/run.sh wrote, or
    one for each entry of `charts`. What has another shape is left out."""
    measured = json.loads(path.read_text())
    drawn = {}
    if not isinstance(measured, dict):
        return drawn
    facts = ", ".join(measured[key] for key in ("date", "processor", "compiler") if key in measured)
    for theme in measured.get("themes", []):
        chart = comparison(theme.get("rows", []))
        if chart:
            drawn[theme["theme"]] = chart + caption(
                f"Times as multiples of ours: what is right of the line is slower. {facts}, benchmarks/run.sh docs/performance.json.")
    for chart in measured.get("charts", []):
        drawn[chart["name"]] = bars(list(chart["counts"].items())) + caption(
            f"{chart['title']}. {chart['date']}, {chart['machine']}, {chart['command']}.")
    return drawn


FIGURES = {"record": record, "name-orders": name_orders, "axis-orders": axis_orders}
