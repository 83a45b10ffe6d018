"""Draws the figures of the manual as SVG, from the facts below and from measured numbers. They take the colour of the text
around them, so that they can be read in light and in dark."""
import html
import json

COLOURS = {"x": "#e0645c", "y": "#4fa75b", "z": "#4d87d6", "ours": "#4d87d6", "peer": "#9aa3ad"}


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


def bars(title, unit, rows):
    """A chart of (name, value) rows, as long as their values; the first one is ours."""
    most = max(value for _, value in rows) or 1
    parts = [label(4, 16, f"{title}, {unit}")]
    for i, (name, value) in enumerate(rows):
        y = 26 + 24 * i
        parts.append(label(146, y + 14, name, "end"))
        parts.append(box(152, y, round(300 * value / most, 1), 18, "", COLOURS["ours" if i == 0 else "peer"]))
        parts.append(label(158 + 300 * value / most, y + 14, f"{value:.4g}"))
    return svg(540, 32 + 24 * len(rows), parts)


def charts(path):
    """Returns the charts of each theme that benchmarks/run.sh wrote, by the theme's name: for each row the nanoseconds of the
    contenders. What has another shape is left out."""
    measured = json.loads(path.read_text())
    drawn = {}
    for theme in measured.get("themes", []) if isinstance(measured, dict) else []:
        for row in theme.get("rows", []):
            times = {name: value for name, value in row.get("nanoseconds", {}).items() if isinstance(value, (int, float))}
            ordered = sorted(times.items(), key=lambda time: (time[0] != "ours", time[1]))
            if len(ordered) > 1 and ordered[0][0] == "ours":
                drawn.setdefault(theme["theme"], []).append(bars(row["row"], "ns", ordered))
    facts = ", ".join(measured[key] for key in ("date", "processor", "compiler") if key in measured) if drawn else ""
    return {theme: "\n".join([f"<p>{html.escape(facts)}; measured with benchmarks/run.sh</p>", *parts]) for theme, parts in drawn.items()}


FIGURES = {"record": record, "name-orders": name_orders, "axis-orders": axis_orders}
