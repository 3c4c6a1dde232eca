"""Tests the pages of runs in a browser: test_page.py PROGRAM OUTPUT_FOLDER RUN..."""

import json
import pathlib
import re
import subprocess
import sys

import runs
from browser import Browser

MOST_SECONDS = 3  # of processor time, to show the largest page
MOST_SECONDS_OF_ACTION = 1

failures = []


def expect(condition, message):
    if not condition:
        failures.append(message)
        print("FAILED:", message, flush=True)


def report(program, folder):
    printed = subprocess.run([program, "report", folder], check=True, capture_output=True, text=True)
    page = pathlib.Path(printed.stdout.strip())
    parts = ["run.json", "steps.jsonl", "statistics.json"]
    data = sum((folder / part).stat().st_size for part in parts if (folder / part).exists())
    pictures = sum(len(uri) for uri in re.findall(r'"data:image[^"]*', page.read_text()))
    size = page.stat().st_size
    expect(size - pictures <= 3 * data + 200_000, f"{page}: {size} bytes for {data} bytes of JSON")
    return page


def expect_quiet(browser, page):
    for entry in browser.logs("browser"):
        expect(False, f"{page}: console: {entry['message']}")
    for address in browser.requests():
        expect(address.startswith("data:") or address == page.as_uri(), f"{page} requests {address}")


# Returns texts with too little contrast, fields and buttons without a name, and headings that skip
# a level.
FAULTS_OF_ACCESS = """
const faults = [];
const shade = part => (part /= 255) <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
const parts = color => color.match(/[\\d.]+/g).map(Number);
const light = ([r, g, b]) => 0.2126 * shade(r) + 0.7152 * shade(g) + 0.0722 * shade(b);
function panelOf(element) {
  const rect = element.closest("svg.step")?.querySelector("rect");
  if (rect) return parts(getComputedStyle(rect).fill);
  for (; element; element = element.parentElement) {
    const color = parts(getComputedStyle(element).backgroundColor);
    if (color.length === 3 || color[3] === 1) return color;
  }
  return [255, 255, 255];
}
const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
while (walker.nextNode()) {
  const element = walker.currentNode.parentElement;
  if (!walker.currentNode.data.trim() || !element.checkVisibility()) continue;
  const style = getComputedStyle(element);
  const color = parts(element instanceof SVGElement ? style.fill : style.color);
  const [low, high] = [light(color), light(panelOf(element))].sort((a, b) => a - b);
  if ((high + 0.05) / (low + 0.05) < 4.5 && !element.disabled) {
    faults.push("contrast of " + walker.currentNode.data.slice(0, 30));
  }
}
for (const element of document.querySelectorAll("input, select, button, a, img")) {
  const names = [element.textContent, element.ariaLabel, element.alt, element.labels?.[0]?.innerText];
  if (!names.some(name => name?.trim())) faults.push("no name: " + element.outerHTML);
}
let level = 0;
for (const heading of document.querySelectorAll("h1, h2, h3, h4")) {
  if (heading.tagName[1] > level + 1) faults.push("level of heading " + heading.textContent);
  level = Number(heading.tagName[1]);
}
for (const landmark of ["header", "nav", "main"]) {
  if (document.querySelectorAll(landmark).length !== 1) faults.push("not one " + landmark);
}
if (!document.documentElement.lang) faults.push("no language");
if (document.documentElement.scrollWidth > innerWidth) faults.push("wider than the screen");
return faults;
"""

OPEN_ALL = """
for (let closed; (closed = document.querySelectorAll("details:not([open])")).length > 0;) {
  for (const element of closed) element.open = true;
  await new Promise(resolve => setTimeout(resolve, 50));
}
"""


def lines_of(browser, selector):
    return browser.run("return [...document.querySelectorAll(arguments[0])].map(e => e.innerText)",
                       selector)


def test_text(browser, page):
    """Reads the small run, whose texts are hostile."""
    browser.open(page)
    browser.run(OPEN_ALL)
    text = re.sub(r"\s+", " ", browser.run("return document.body.innerText"))
    hostile = re.sub(r"\s+", " ", runs.HOSTILE)
    for part in ["Rules broken", "the plan breaks 1 rule: " + hostile, "Failed step: 2_" + hostile,
                 "✗ broken: late orders: 2, at most 1 " + hostile,
                 "✓ kept: load of M1: 80 %, at most 90 %", "0_ReadOrders", "0_<script>", "1_Plan",
                 "open 3 → 40", "late.C017 2", "3 of 4 (75 %)", "12345678901234567890",
                 "9223372036854775808", "C017 not placed; 92 candidates examined",
                 "surgeon off duty for example OT1 2024-03-04 07:00",
                 "nearest: OT2 2024-03-08 12:45, short by 00:30:00", "7 rejections",
                 "no \\u0007 bell, \\u202e no order", "3 further lines", "planner",
                 f"orders run pipeline.json --set '{hostile.replace(chr(39), chr(39) + chr(92) + chr(39) * 2)}'",
                 f"4 records, {hostile} 9 → 2 {hostile} by iteration (logarithmic) 9 2 0 2000 records",
                 "1 min 30 s, 10:00:00 to 10:01:30"]:
        expect(part.replace("\u202f", " ") in text.replace("\u202f", " "), f"the page lacks: {part}")
    for caption, values in [("Samples of waits", ["[3-4)", "[20-30)", "[100-110)"]),
                            ("Counts of sizes", ["-1", "9", "10"])]:
        shown = browser.run("""return [...document.querySelectorAll("table.bars")]
            .filter(table => table.caption.innerText === arguments[0])
            .flatMap(table => [...table.querySelectorAll("td.name")].map(cell => cell.innerText))""",
                            caption)
        expect(shown == values, f"{caption}: {shown}")
    drawn = browser.run("return document.querySelector('.curve path').getAttribute('d')")
    expect(re.fullmatch(r"M0 0H[0-9.]+V28.57H[0-9.]+V42.86H1000V100", drawn), f"curve: {drawn}")
    expect(browser.run("return document.querySelectorAll('script:not([type])').length") == 1,
           "a text of the run became a script")
    expect("broken out" not in browser.run("return document.title"), "a script of the run ran")


def test_keyboard(browser, page):
    """Follows the focus, which must go through the document in order and stay visible."""
    browser.open(page)
    for number in range(60):
        browser.press_tab()
        fault = browser.run("""
            const element = document.activeElement, before = window.lastFocus;
            if (element === document.body) return "end";
            window.lastFocus = element;
            const box = element.getBoundingClientRect();
            if (box.bottom < 0 || box.top > innerHeight || box.right < 0) return "not visible";
            if (getComputedStyle(element).outlineStyle === "none") return "no outline";
            return before && !(before.compareDocumentPosition(element) & 4) ? "out of order" : "";""")
        if fault == "end":
            return
        expect(not fault, f"focus {number}: {fault}")


def test_looks(browser, page, output, name):
    for width in (1400, 390):
        for scheme in ("light", "dark"):
            browser.open(page, width, scheme)
            browser.screenshot(output / f"{name}_{width}_{scheme}.png")
            browser.run(OPEN_ALL)
            for fault in browser.run(FAULTS_OF_ACCESS):
                expect(False, f"{page} at {width}, {scheme}: {fault}")
            expect_quiet(browser, page)
    browser.print(output / f"{name}.pdf")


def test_real(browser, page):
    """Compares a page with the files of its run."""
    browser.open(page)
    text = browser.run("return document.body.innerText")
    record = json.loads((page.parent / "run.json").read_text())
    for rule in record.get("rules_broken", []):
        expect("✗ broken: " + rule in text, f"{page} lacks: {rule}")
    steps = page.parent / "steps.jsonl"
    names = {json.loads(line)["step"].split("/")[-1]
             for line in (steps.read_text().splitlines() if steps.exists() else [])}
    shown = set(lines_of(browser, "#steps td.name code"))
    expect(names - {""} <= shown, f"{page} lacks steps: {names - shown}")
    drawn = browser.run("return [...document.images].map(image => image.naturalWidth)")
    expect(drawn and all(drawn), f"{page} lacks a picture")


def test_large(browser, page):
    seconds = browser.open(page)
    expect("constructor" in str(lines_of(browser, "#outcome")), f"{page} lacks an unknown outcome")
    print(f"{page}: {page.stat().st_size} bytes, shown after {seconds:.2f} s")
    expect(seconds <= MOST_SECONDS, f"the large page takes {seconds} s")
    typed = """const field = document.querySelector(arguments[0]);
               field.value = arguments[1];
               field.dispatchEvent(new Event("input"));
               await new Promise(resolve => setTimeout(resolve, 300));
               return document.querySelector(arguments[2]).innerText;"""
    next_piece = """document.querySelector("#steps .pieces button:nth-of-type(2)").click();
                    return document.querySelector("#steps tbody").innerText;"""
    unfold = """const element = document.querySelector("#statistics_tree details details");
                element.open = true;
                await new Promise(resolve => setTimeout(resolve, 0));
                return element.innerText;"""
    zoom = """document.querySelector("#timeline .many").dispatchEvent(new Event("click"));
              return document.querySelector("#timeline").innerText;"""
    for action, arguments, wanted in [
            (next_piece, (), "2_ChainedModule"),
            (unfold, (), "counter 17"),
            (zoom, (), "Whole run"),
            (typed, ("#steps input", "77_chainedmodule/98", "#steps tbody"), "77_ChainedModule/98_Plan"),
            (typed, ("#statistics_tree input", "counter 4999", "#statistics_tree"), "group 19")]:
        before = browser.processor_seconds()
        shown = browser.run(action, *arguments)
        seconds = browser.processor_seconds() - before
        expect(wanted in shown, f"the large page lacks {wanted}")
        expect(seconds <= MOST_SECONDS_OF_ACTION, f"{wanted} takes {seconds} s")
    expect_quiet(browser, page)


def main():
    program = sys.argv[1]
    output = pathlib.Path(sys.argv[2]).resolve()
    real = [pathlib.Path(run) for run in sys.argv[3:]]
    runs.write_small(output / "small")
    runs.write_killed(output / "killed")
    runs.write_large(output / "large", 10_000, 100_000)
    with Browser() as browser:
        small = report(program, output / "small")
        test_text(browser, small)
        test_keyboard(browser, small)
        test_looks(browser, small, output, "small")
        killed = report(program, output / "killed")
        test_looks(browser, killed, output, "killed")
        outcome = lines_of(browser, "#outcome")[0]
        for part in ["The step that ran: 1_ChainedModule/0_Plan", "After a crash",
                     "orders run '/plans/a run/pipeline.json' --inputs /plans --from "
                     "'/plans/a run/dump/1_ChainedModule/0_Plan' --until 1_ChainedModule/0_Plan"]:
            expect(part in outcome, f"the page of the killed run lacks: {part}")
        for run in real:
            page = report(program, run)
            test_real(browser, page)
            test_looks(browser, page, output, run.name)
    with Browser() as browser:
        test_large(browser, report(program, output / "large"))
    return 1 if failures else 0


sys.exit(main())
