#!/usr/bin/env python3
"""Opens pages of the example reel in a headless Chromium and looks at what a reader sees.

    tests/browser/check_pages.py QUILLBROOK

Each page is opened from its file with a script added that ticks, filters, hides and reloads, and tells what it saw. It is
printed to PDF too. Says in one line what it did, or why it can't.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent


def browser():
    return next((found for name in ("chromium", "chromium-browser") if (found := shutil.which(name))), None)


def run_browser(profile, *arguments):
    command = [browser(), "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
               "--user-data-dir=" + str(profile), "--enable-logging=stderr", "--host-resolver-rules=MAP * ~NOTFOUND",
               *arguments]
    return subprocess.run(command, capture_output=True, text=True, timeout=180, check=False)


def complaints_of(run):
    return [line for line in run.stderr.splitlines() if "CONSOLE" in line and "told:" not in line]


def make_pages(quillbrook, folder):
    environment = {**os.environ, "SOURCE_DATE_EPOCH": "1790000000", "TZ": "UTC"}
    def run(*arguments):
        done = subprocess.run([quillbrook, *map(str, arguments)], capture_output=True, text=True, env=environment,
                              check=False)
        if done.returncode != 0:
            raise SystemExit("browser: " + done.stderr)
    run("cutlist", ROOT / "examples/reel/reel.otio", "-o", folder / "reel.txt", "--html", folder / "cut.html", "--json",
        folder / "cut.json", "--quiet")
    recut = ROOT / "examples/recut/expected"
    run("changelist", "--old", recut / "weir-old-r1.cdb", "--new", recut / "weir-new-r1.cdb", "-o", folder / "weir.txt",
        "--html", folder / "changes.html", "--lists-json", folder / "changes.json", "--feet", "--quiet")


def rows_of(document):
    return [row["id"] for one in document["lists"] for part in one["parts"] for row in part["rows"]]


def seen_of(folder, name):
    """What the page's own script and the one of page_checks.js found, after a reload."""
    page = (folder / (name + ".html")).read_text(encoding="utf-8")
    checks = (HERE / "page_checks.js").read_text(encoding="utf-8")
    checked = folder / (name + "-checked.html")
    checked.write_text(page.replace("</body>", "<script>" + checks + "</script></body>"), encoding="utf-8")
    run = run_browser(folder / ("profile-" + name), "--virtual-time-budget=20000", "--dump-dom", checked.as_uri())
    found = re.search(r'<pre id="told">(.*?)</pre>', run.stdout, re.S)
    if not found:
        raise SystemExit(f"browser: {name}: the checks told nothing\n{run.stderr[-2000:]}")
    told = found.group(1).replace("&lt;", "<").replace("&gt;", ">").replace("&amp;", "&")
    return json.loads(told), complaints_of(run)


def wrong_of_screen(folder, name, document):
    told, complaints = seen_of(folder, name)
    wrong = [name + ": " + line for line in complaints]
    wrong += [name + ": " + line for line in told["wrong"]]
    if told["rows"] != rows_of(document):
        wrong.append(f"{name}: {len(told['rows'])} rows on the page, {len(rows_of(document))} in the document")
    return wrong


def wrong_of_width(folder, name):
    """At 360 pixels nothing is wider than the page; a frame stands in for a small screen."""
    frame = folder / "narrow.html"
    frame.write_text(f'<iframe src="{name}.html" style="width:360px;height:800px;border:0"></iframe><pre id="told"></pre>'
                     '<script>onload = () => { const page = document.querySelector("iframe").contentDocument'
                     '.documentElement; document.querySelector("pre").textContent = page.scrollWidth; }</script>',
                     encoding="utf-8")
    run = run_browser(folder / "profile-narrow", "--allow-file-access-from-files", "--disable-web-security",
                      "--virtual-time-budget=20000", "--dump-dom", frame.as_uri())
    width = re.search(r'<pre id="told">(\d+)</pre>', run.stdout)
    if not width or int(width.group(1)) > 360:
        return [f"{name}: {width.group(1) if width else 'no'} pixels wide in a frame of 360"]
    return []


def wrong_of_paper(folder, name, document):
    pdf = folder / (name + ".pdf")
    run_browser(folder / "profile-paper", "--no-pdf-header-footer", "--print-to-pdf=" + str(pdf),
                (folder / (name + ".html")).as_uri())
    if not shutil.which("pdftotext"):
        return []
    pages = subprocess.run(["pdftotext", pdf, "-"], capture_output=True, text=True, check=True).stdout
    pages = pages.split("\f")[:-1]
    wrong = []
    for number, page in enumerate(pages, 1):
        if f"page {number} of {len(pages)}" not in re.sub(r"\s+", " ", page):
            wrong.append(f"{name}: page {number} of the paper doesn't say so")
    words = re.sub(r"\s+", "", "".join(pages))
    shown = {"assembly", "pull-roll", "bench", "change-pull"}
    for one in document["lists"]:
        for part in one["parts"] if one["id"] in shown else []:
            for row in part["rows"]:
                key = row["values"].get("key_first")
                if key and re.sub(r"\s+", "", key) not in words:
                    wrong.append(f"{name}: {key} of {row['id']} isn't on the paper")
    return wrong


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    if not browser():
        print("browser: no Chromium here, so pages weren't opened")
        return 0
    wrong = []
    with tempfile.TemporaryDirectory(prefix="pages-") as name:
        folder = pathlib.Path(name)
        make_pages(sys.argv[1], folder)
        for page in ("cut", "changes"):
            document = json.loads((folder / (page + ".json")).read_text(encoding="utf-8"))
            wrong += wrong_of_screen(folder, page, document)
            wrong += wrong_of_width(folder, page)
            wrong += wrong_of_paper(folder, page, document)
    for line in wrong:
        print("browser: " + line)
    if not wrong:
        print("browser: pages hold each row, tick, filter, hide and print as they should")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
