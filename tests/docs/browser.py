#!/usr/bin/python3
"""Opens pages of the manual in a headless browser, at the width of a desktop and of a phone. Fails on a script error, on
sideways scrolling, and if the search does not find what readers look for. Screenshots are left for people to look at.
    browser.py <chromium> <folder of HTML> <folder for screenshots>
"""
import pathlib
import sys

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.support.ui import WebDriverWait

PAGES = ["index.html", "md_docs_properties.html", "md_docs_rotations.html", "md_docs_records.html", "md_docs_frame_names.html",
         "md_docs_performance.html", "classDQuat.html", "classquarn_1_1PropertyList.html", "PropertyFile_8h.html"]
MANUAL_PAGE = "mrcommon-records.1.html"  # made if mandoc is installed
SIZES = {"desktop": (1280, 900), "phone": (390, 844)}
SEARCHES = {"disk full": "safe_reading", "scalar part": "rotations", "thread": "index", "unload plug-in": "plug_ins",
            "loadProperties": "namespacequarn", "PptyEnum": "PptyEnum"}
# What scrolls sideways or is cut. A row of boxes may also grow to the left, where nothing can be scrolled to.
WIDE = """
    const area = document.getElementById('doc-content') || document.body, edges = area.getBoundingClientRect();
    const outside = [...area.querySelectorAll('*')].filter((e) => {
        const place = e.getBoundingClientRect();
        return place.width > 0 && (place.left < edges.left - 1 || place.right > edges.right + 1)
            && !e.closest('.wide, .fragment, .memproto, pre');
    });
    const scrolls = [document.scrollingElement, area].filter((e) => e.scrollWidth > e.clientWidth + 1);
    return [...scrolls, ...outside].slice(0, 6).map((e) => `${e.tagName} ${e.id} ${e.className}`);"""
FIRST_IS_VISIBLE = """
    const link = document.querySelector('#manual-found a'), place = link.getBoundingClientRect();
    return link.contains(document.elementFromPoint(place.x + place.width / 2, place.y + 8));"""


def started(program):
    options = webdriver.ChromeOptions()
    options.binary_location = program
    for option in ("--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars"):
        options.add_argument(option)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("chromedriver"), options=options)


def search(browser, text):
    """Types into the search and returns the links that it shows."""
    browser.execute_script("const field = document.querySelector('#manual-search input'); field.value = arguments[0];"
                           "field.dispatchEvent(new Event('input'));", text)
    WebDriverWait(browser, 30).until(lambda b: b.execute_script(
        "return window.manualWords && !document.getElementById('manual-found').hidden"))
    return browser.execute_script("return [...document.querySelectorAll('#manual-found a')].map((a) => a.getAttribute('href'))")


def problems_at(browser, site, pictures, size):
    width, height = SIZES[size]
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                            {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": size == "phone"})

    def picture(name):
        browser.save_screenshot(str(pictures / f"{size}-{name}.png"))
    for page in PAGES + [MANUAL_PAGE] * (site / MANUAL_PAGE).exists():
        if not (site / page).exists():
            yield f"{page} does not exist"
        browser.get((site / page).as_uri())
        name = page.split(".")[0]
        for what in browser.execute_script(WIDE):
            yield f"{page} scrolls sideways at the width of a {size}: {what}"
        picture(name)
        if browser.execute_script("const f = document.querySelector('svg.figure'); f?.scrollIntoView(); return !!f;"):
            picture(name + "-figure")
        for entry in browser.get_log("browser"):
            yield f"{page}: {entry['message']}"
    browser.get((site / "index.html").as_uri())
    for text, target in SEARCHES.items():
        found = search(browser, text)
        if not any(target in link for link in found[:5]):
            yield f"the search for '{text}' finds {found[:5]}"
    if not browser.execute_script(FIRST_IS_VISIBLE):
        yield f"what the search finds cannot be seen at the width of a {size}"
    picture("search")
    for entry in browser.get_log("browser"):
        yield f"the search: {entry['message']}"


def main():
    program, site, pictures = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3])
    pictures.mkdir(parents=True, exist_ok=True)
    with started(program) as browser:
        problems = [problem for size in SIZES for problem in problems_at(browser, site, pictures, size)]
    print("\n".join(problems) or f"{len(PAGES)} pages, {len(SEARCHES)} searches")
    return 1 if problems else 0


sys.exit(main())
