#!/usr/bin/env python3
"""Prints a page with the figures in the places that its comments name; line numbers stay.
    page_filter.py <folder of the figures> <page>

<!-- figure: NAME --> becomes NAME.svg, <!-- picture: NAME --> shows NAME.png, and <!-- page: NAME --> links to NAME.html. A
comment stays if there is no such file. Doxygen would take `$(NAME)` for a variable of the environment.
Links to files outside the folder of the pages become text: the manual does not contain them.
"""
import pathlib
import re
import sys

folder, page = map(pathlib.Path, sys.argv[1:])


def shown(found):
    kind, name = found.groups()
    file = folder / (name + {"figure": ".svg", "picture": ".png", "page": ".html"}[kind])
    if not file.exists():
        return found[0]
    if kind == "page":
        return f'\\htmlonly<a href="{file.name}">{name}</a>\\endhtmlonly'
    if kind == "picture":
        content = f'<img class="picture" src="{file.name}" alt="{name}"/>'
    else:
        content = " ".join(file.read_text().split())
    return f'\\htmlonly[block]<div class="wide">{content}</div>\\endhtmlonly'


sys.stdout.reconfigure(encoding="utf-8")
text = re.sub(r"<!-- (figure|picture|page): ([\w.-]+) -->", shown, page.read_text(encoding="utf-8"))
text = re.sub(r"\[([^]]*)\]\(\.\./[^)]*\)", r"\1", text)
print(re.sub(r"`(\$\([^`]*)`", r"<code>\\\1</code>", text), end="")
