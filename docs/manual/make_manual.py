#!/usr/bin/env python3
"""Makes the manual: figures, Doxygen, and an index of the words on all pages.
    make_manual.py <Doxyfile> <folder> [--pages <folder>] [--sheet <PNG>] [--sequences <PNG>] [--dot <program>]
                   [--mandoc <program>] [--theme <folder>]

<folder>/html is the manual. The sheet is made half as large for the front page. What is not given or does not exist is
left out; the exit status is that of Doxygen.
"""
import argparse
import html
import html.parser
import json
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import zlib

sys.dont_write_bytecode = True  # leaves no folder in the tree
import figures

here = pathlib.Path(__file__).parent
SCRIPTS = ["manual.js"]
THEME_SCRIPTS = ["doxygen-awesome-darkmode-toggle.js", "doxygen-awesome-fragment-copy-button.js"]


def slug_of(heading):
    """Returns the anchor by which links between pages name a heading."""
    return re.sub(r"\s", "-", re.sub(r"[^\w\s-]", "", heading.strip().lower()))


def page_of(name):
    """Returns the file in which Doxygen shows a page of docs/."""
    return "index.html" if name == "index" else f"md_docs_{name.replace('-', '_')}.html"


def repair_references(folder):
    """Shortens links to members that Doxygen declares without an anchor, such as operators of a class at namespace scope, to
    links to the page. Links that people wrote are left as they are, for the tests to find."""
    anchors = {page.name: set(re.findall(r'(?:id|name)="([^"]+)"', page.read_text(encoding="utf-8"))) for page in folder.glob("*.html")}
    for page in folder.glob("*.html"):
        if page.name == "index.html" or page.name.startswith("md_"):
            continue

        def shortened(found):
            known = anchors.get(found[1] or page.name, {found[2]})
            return found[0] if found[2] in known else f'href="{found[1] or page.name}"'
        text = page.read_text(encoding="utf-8")
        page.write_text(re.sub(r'href="([\w.-]*)#([^"]+)"', shortened, text), encoding="utf-8")


def move_slots(folder):
    """Moves the slots of virtual operations, which header_comments.awk marks in the descriptions, into a column of the tables of
    members, also where those of a base are listed."""
    mark = re.compile(r"\{\{slot ([^}]*)\}\}\s*\.?")
    shown = r'<span class="slot" title="place in the virtual table">slot \1</span>'
    pages = {page: re.sub(r'title="[^"]*"', lambda tip: mark.sub("", tip[0]), page.read_text(encoding="utf-8"))
             for page in folder.glob("*.html")}
    slots = {}
    for text in pages.values():
        described = re.findall(r'<tr class="memdesc:(\w+)[^>]*>(.*?)</tr>', text, re.S)
        described += re.findall(r'<a id="(a[0-9a-f]{32,})"[^>]*></a>\s*<h2 class="memtitle">(.*?)(?=<a id="a[0-9a-f]{32}|$)', text, re.S)
        slots.update((anchor, found[0]) for anchor, content in described if (found := mark.search(content)))
    for page, text in pages.items():
        text = re.sub(r'(<tr class="memdesc:)(.*?)(</tr>)', lambda row: mark.sub("", row[0]), text, flags=re.S)
        text = re.sub(r'<tr class="memitem:(\w+)[^>]*>(?:(?!</tr>).)*<td class="memItemRight"[^>]*>',
                      lambda row: row[0] + mark.sub(shown, slots.get(row[1], "")), text, flags=re.S)
        page.write_text(mark.sub(shown, text), encoding="utf-8")


def half_of(png):
    """Returns a PNG of 8-bit RGB pixels at half the width and height; its rows must be unfiltered."""
    at, data, header = 8, b"", None
    while at < len(png):
        size, kind = struct.unpack(">I4s", png[at:at + 8])
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", png[at + 8:at + 8 + size])
        elif kind == b"IDAT":
            data += png[at + 8:at + 8 + size]
        at += size + 12
    width, height, depth, colours = header[:4]
    rows, stride = zlib.decompress(data), 3 * width + 1
    if (depth, colours) != (8, 2) or any(rows[::stride]):
        raise ValueError("not the PNG that the example host writes")
    half = bytearray()
    for y in range(0, height - 1, 2):
        upper, lower = (rows[(y + i) * stride + 1:(y + i + 1) * stride] for i in range(2))
        half.append(0)
        for x in range(0, 3 * (width - 1), 6):
            half += bytes((upper[x + c] + upper[x + 3 + c] + lower[x + c] + lower[x + 3 + c]) // 4 for c in range(3))

    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
    header = struct.pack(">IIBBBBB", width // 2, height // 2, 8, 2, 0, 0, 0)
    return png[:8] + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(half), 9)) + chunk(b"IEND", b"")


def make_figures(folder, given):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for name, draw in figures.FIGURES.items():
        (folder / f"{name}.svg").write_text(draw())
    for measured in sorted(given.pages.glob("*.json")):
        for theme, charts in figures.charts(measured).items():
            (folder / f"{measured.stem}-{theme}.svg").write_text(charts)
    for source in sorted(here.glob("*.dot")) if given.dot else []:
        drawn = subprocess.run([given.dot, "-Tsvg", source], check=True, capture_output=True, text=True).stdout
        drawn = re.sub(r"<!--.*?-->|<title>.*?</title>", "", drawn[drawn.index("<svg"):], flags=re.S)
        (folder / f"{source.stem}.svg").write_text(drawn.replace("<svg", '<svg class="figure"', 1))
    for page in sorted((given.pages / "man").glob("*.1")) if given.mandoc else []:
        made = subprocess.run([given.mandoc, "-Thtml", "-O", "style=manual.css", page], check=True, capture_output=True)
        (folder / f"{page.name}.html").write_bytes(made.stdout)
    if given.sheet and given.sheet.exists():
        (folder / "sheet.png").write_bytes(half_of(given.sheet.read_bytes()))
    if given.sequences and given.sequences.exists():
        shutil.copy(given.sequences, folder / "sequences.png")


class Sections(html.parser.HTMLParser):
    """The text of a page, by section. Programs are left out, except on pages that people wrote."""

    def __init__(self, with_programs):
        super().__init__()
        self.with_programs = with_programs
        self.title, self.sections = "", [["", "", []]]  # [heading, anchor, words]
        self.heading = self.depth = self.skipped = 0
        self.in_title = self.in_contents = False

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        anchor = given.get("id") or given.get("name") or (given.get("href") or "")[1:]
        if tag == "title":
            self.in_title = self.title == ""  # those of figures follow
        if tag == "div" and (given.get("class") or "").split()[:1] in (["contents"], ["manual-text"]):
            self.in_contents = True
        if tag in ("h1", "h2", "h3") and self.in_contents:
            self.heading = True
            self.sections.append(["", "", []])
        elif tag == "a" and self.heading and not self.sections[-1][1]:
            self.sections[-1][1] = anchor
        if tag in ("script", "style", "svg") or (self.skipped == 0 and "fragment" in (given.get("class") or "") and not self.with_programs):
            self.skipped, self.depth = tag, 0
        if tag == self.skipped:
            self.depth += 1

    def handle_endtag(self, tag):
        if tag == "title":
            self.in_title = False
        if tag in ("h1", "h2", "h3"):
            self.heading = False
        if tag == self.skipped:
            self.depth -= 1
            self.skipped = self.skipped if self.depth else 0

    def handle_data(self, data):
        if self.in_title:
            self.title += data
        elif self.in_contents and not self.skipped:
            if self.heading:
                self.sections[-1][0] += data.replace("◆\u00a0", "")
            else:
                self.sections[-1][2].append(data)


def finish(folder, scripts, styled):
    """Adds the scripts and the anchors of headings to every page, and writes the index of words."""
    tags = "".join(f'<script src="{script}"></script>\n' for script in scripts)
    if styled:
        tags += "<script>DoxygenAwesomeFragmentCopyButton.init();</script>\n"
    words = []
    for page in sorted(folder.glob("*.html")):
        text = page.read_text(encoding="utf-8")
        written = page.name == "index.html" or page.name.startswith("md_")

        def with_anchor(found):
            plain = html.unescape(re.sub(r"<[^>]*>", "", found[3]))
            return f'<{found[1]}{found[2]}><a class="anchor" id="{slug_of(plain)}"></a>{found[3]}</{found[1]}>'
        if written:
            text = re.sub(r'href="(?:docs/)?([a-z-]+)\.md(#[^"]*)"', lambda found: f'href="{page_of(found[1])}{found[2]}"', text)
            text = re.sub(r"<(h[1-3])([^>]*)>(.*?)</\1>", with_anchor, text, flags=re.S)
        text = re.sub(r"(<table class=\"(?:markdownTable|doxtable|memberdecls|fieldtable|params|directory)\".*?</table>)", r'<div class="wide">\1</div>', text, flags=re.S)
        if "jquery.js" in text:  # made by Doxygen
            page.write_text(text.replace("</head>", tags + "</head>", 1), encoding="utf-8")

        if re.match(r"(dir_|files|functions|globals|annotated|classes|hierarchy|namespaces|pages|graph_)|.*-members", page.name):
            continue
        reader = Sections(written)
        reader.feed(text)
        title = re.sub(r"^MRCommon: ", "", reader.title).strip()
        for heading, anchor, content in reader.sections:
            joined = " ".join(" ".join(content).split())
            if heading or joined:
                words.append([title, " ".join(heading.split()), page.name + ("#" + anchor if anchor else ""), joined, int(written)])
    (folder / "words.js").write_text("var manualWords = " + json.dumps(words, ensure_ascii=False, separators=(",", ":")) + ";\n",
                                     encoding="utf-8")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("doxyfile", type=pathlib.Path)
    parser.add_argument("folder", type=pathlib.Path)
    for name in ("pages", "sheet", "sequences", "theme"):
        parser.add_argument(f"--{name}", type=pathlib.Path)
    for name in ("dot", "mandoc"):
        parser.add_argument(f"--{name}")
    parser.add_argument("--doxygen", default="doxygen")
    given = parser.parse_args()
    site = given.folder / "html"
    shutil.rmtree(site, ignore_errors=True)
    make_figures(given.folder / "figures", given)
    status = subprocess.run([given.doxygen, given.doxyfile]).returncode
    if status != 0:
        return status
    for made in (given.folder / "figures").iterdir():
        if made.suffix != ".svg": # these are in the pages
            shutil.copy(made, site)
    scripts = [*SCRIPTS, *(THEME_SCRIPTS if given.theme else [])]
    for script in scripts:
        shutil.copy((here if script in SCRIPTS else given.theme) / script, site)
    repair_references(site)
    move_slots(site)
    finish(site, scripts, bool(given.theme))
    return 0


sys.exit(main())
