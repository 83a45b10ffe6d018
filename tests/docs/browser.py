#!/usr/bin/env python3
"""Opens pages of the manual in a headless browser, at the width of a desktop and of a phone. Fails on a script error, on
sideways scrolling, and if the search does not find what readers look for. Screenshots are left for people to look at.
    browser.py <chromium> <folder of HTML> <folder for screenshots>
"""
import base64
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

PAGES = ["index.html", "md_docs_properties.html", "md_docs_rotations.html", "md_docs_records.html", "md_docs_frame_names.html",
         "md_docs_performance.html", "classDQuat.html", "classquarn_1_1PropertyList.html", "PropertyFile_8h.html"]
MANUAL_PAGE = "mrcommon-records.1.html"  # made if mandoc is installed
SIZES = {"desktop": (1280, 900), "phone": (390, 844)}
SEARCHES = {"disk full": "safe_reading", "scalar part": "rotations", "thread": "index", "unload plug-in": "plug_ins",
            "loadProperties": "namespacequarn", "PptyEnum": "PptyEnum"}


class Browser:
    """A browser that is controlled through a pair of pipes."""

    def __init__(self, program, profile):
        to_browser, self.output = os.pipe()
        self.input, from_browser = os.pipe()

        def redirect():  # the browser reads from 3 and writes to 4
            ends = os.dup(to_browser), os.dup(from_browser)
            os.dup2(ends[0], 3)
            os.dup2(ends[1], 4)
        self.process = subprocess.Popen(
            [program, "--headless", "--no-sandbox", "--disable-gpu", "--disable-background-networking", "--no-first-run",
             "--hide-scrollbars", f"--user-data-dir={profile}", "--remote-debugging-pipe", "about:blank"],
            preexec_fn=redirect, close_fds=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.pending, self.number, self.session, self.errors = b"", 0, None, []
        target = [t for t in self.call("Target.getTargets")["targetInfos"] if t["type"] == "page"][0]
        self.session = self.call("Target.attachToTarget", targetId=target["targetId"], flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log"):
            self.call(f"{domain}.enable")

    def message(self):
        while b"\0" not in self.pending:
            received = os.read(self.input, 1 << 16)
            if not received:
                sys.exit("the browser ended")
            self.pending += received
        text, self.pending = self.pending.split(b"\0", 1)
        return json.loads(text)

    def call(self, method, **parameters):
        self.number += 1
        request = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            request["sessionId"] = self.session
        os.write(self.output, json.dumps(request).encode() + b"\0")
        while True:
            message = self.message()
            if message.get("method") == "Runtime.exceptionThrown":
                details = message["params"]["exceptionDetails"]
                self.errors.append(details.get("exception", {}).get("description", details["text"]))
            elif message.get("method") == "Log.entryAdded" and message["params"]["entry"]["level"] == "error":
                self.errors.append(str(message["params"]["entry"]))
            elif message.get("id") == self.number:
                if "error" in message:
                    sys.exit(f"{method}: {message['error']}")
                return message["result"]

    def value_of(self, expression):
        return self.call("Runtime.evaluate", expression=expression, returnByValue=True)["result"].get("value")

    def wait_for(self, expression):
        end = time.monotonic() + 30
        while not self.value_of(expression):
            if time.monotonic() > end:
                return False
            time.sleep(0.1)
        return True

    def open(self, address):
        self.call("Page.navigate", url=address)
        loaded = self.wait_for(f"location.href === {json.dumps(address)} && document.readyState === 'complete'")
        time.sleep(0.3)  # scripts of the page that run a moment later
        return loaded


def search(browser, text):
    """Types into the search and returns the links that it shows."""
    browser.value_of("document.querySelector('#manual-search input').value = " + json.dumps(text)
                     + "; document.querySelector('#manual-search input').dispatchEvent(new Event('input'))")
    browser.wait_for("window.manualWords && !document.getElementById('manual-found').hidden")
    return browser.value_of("[...document.querySelectorAll('#manual-found a')].map((a) => a.getAttribute('href'))")


def main():
    program, site, pictures = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3])
    pictures.mkdir(parents=True, exist_ok=True)
    problems = []
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        browser = Browser(program, profile)
        for size, (width, height) in SIZES.items():
            browser.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                         mobile=size == "phone")

            def picture(name):
                shot = browser.call("Page.captureScreenshot")["data"]
                (pictures / f"{size}-{name}.png").write_bytes(base64.b64decode(shot))
            for page in PAGES + [MANUAL_PAGE] * (site / MANUAL_PAGE).exists():
                if not (site / page).exists() or not browser.open((site / page).as_uri()):
                    problems.append(f"{page} does not open")
                    continue
                # A row of boxes may also grow to the left, where nothing can be scrolled to.
                wide = browser.value_of("""(() => {
                    const area = document.getElementById('doc-content') || document.body, edges = area.getBoundingClientRect();
                    const outside = [...area.querySelectorAll('*')].filter((e) => {
                        const place = e.getBoundingClientRect();
                        return place.width > 0 && (place.left < edges.left - 1 || place.right > edges.right + 1)
                            && !e.closest('.wide, .fragment, .memproto, pre');
                    });
                    const scrolls = [document.scrollingElement, area].filter((e) => e.scrollWidth > e.clientWidth + 1);
                    return [...scrolls, ...outside].slice(0, 6).map((e) => `${e.tagName} ${e.id} ${e.className}`);
                })()""")
                problems += [f"{page} scrolls sideways at the width of a {size}: {what}" for what in wide]
                picture(page.split(".")[0])
                if browser.value_of("(() => { const f = document.querySelector('svg.figure'); f?.scrollIntoView(); return !!f; })()"):
                    picture(page.split(".")[0] + "-figure")
            browser.open((site / "index.html").as_uri())
            for text, target in SEARCHES.items():
                found = search(browser, text)
                if not any(target in link for link in found[:5]):
                    problems.append(f"the search for '{text}' finds {found[:5]}")
            if not browser.value_of("""(() => {
                    const link = document.querySelector('#manual-found a'), place = link.getBoundingClientRect();
                    return link.contains(document.elementFromPoint(place.x + place.width / 2, place.y + 8)); })()"""):
                problems.append(f"what the search finds cannot be seen at the width of a {size}")
            picture("search")
        problems += browser.errors
        browser.process.terminate()
        browser.process.wait()
    print("\n".join(problems) or f"{len(PAGES)} pages, {len(SEARCHES)} searches")
    return 1 if problems else 0


sys.exit(main())
