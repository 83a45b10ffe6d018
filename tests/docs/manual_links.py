#!/usr/bin/env python3
"""Fails if a page of the built manual links to a file or an anchor that does not exist, if the search misses a page, or if a
member has no description or one that shows how it was made.
    manual_links.py <folder of HTML>
"""
import html
import html.parser
import json
import pathlib
import re
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors, self.links = set(), []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.anchors.update(given[key] for key in ("id", "name") if given.get(key))
        self.links += [given[key] for key in ("href", "src", "data") if given.get(key)]


folder = pathlib.Path(sys.argv[1])
pages = {path.name: Page(path) for path in folder.glob("*.html")}
problems, followed = [], 0


def check(source, link):
    target = urllib.parse.urlsplit(link)
    if target.scheme in ("http", "https", "mailto", "javascript"):
        return
    name, anchor = urllib.parse.unquote(target.path) or source, urllib.parse.unquote(target.fragment)
    if not (folder / name).exists():
        problems.append(f"{source}: no such file: {link}")
    elif anchor and name in pages and anchor not in pages[name].anchors:
        problems.append(f"{source}: no such anchor: {link}")


for name, page in sorted(pages.items()):
    for link in sorted(set(page.links)):
        check(name, link)
        followed += 1
members = 0
for name, page in sorted(pages.items()):
    rows = re.findall(r'<tr class="mem(item|desc):([^"]*)">(.*?)</tr>', (folder / name).read_text(encoding="utf-8"), re.S)
    described = {anchor: html.unescape(re.sub("<[^>]*>", "", row)).strip() for kind, anchor, row in rows if kind == "desc"}
    for kind, anchor, row in rows if not name.startswith("dir_") else []:
        brief = described.get(anchor, "")
        if kind == "item" and " inherit " not in anchor and "=delete" not in row and (not brief or re.search(r"Example:|\\(?!n)|\{\{slot|^slots? \d", brief)):
            problems.append(f"{name}: {re.sub('<[^>]*>', '', row)} is described as '{brief}'")
        members += kind == "item"
words = json.loads((folder / "words.js").read_text(encoding="utf-8").split("=", 1)[1].strip().rstrip(";"))
for entry in words:
    check("words.js", entry[2])
indexed = {entry[2].split("#")[0] for entry in words if len(entry[3]) > 100}
problems += [f"the search does not find {name}" for name in pages if name.startswith(("index.", "md_")) and name not in indexed]
print("\n".join(problems) or f"{followed} links, {members} members and {len(words)} sections")
sys.exit(1 if problems or followed < 1000 or members < 500 else 0)
