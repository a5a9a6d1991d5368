"""Measures the page about a dictionary of 20 000 objects: its size, and the time to write it, to open it and to
search in it.

usage: report_bench.py PROGRAM SAMPLE...

The dictionary is made by repeating the samples, as in import_bench.py. Opening needs chromium, its driver and
selenium (of Debian: run it with /usr/bin/python3).
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

from import_bench import measure, packages_of, write_document

OBJECTS = 20_000
PIECE = 1_000_000


def objects_in(program, path):
    printed = subprocess.run([program, "import", path], capture_output=True, encoding="utf-8", check=True)
    return int(re.search(r"^(\d+) objects from", printed.stdout, re.MULTILINE)[1])


# What a person types; the first letters find most.
SEARCH = "sparkadvance class:c"
TYPE = """
    const query = document.getElementById("query"), times = [];
    for (let i = 1; i <= arguments[0].length; ++i) {
        query.value = arguments[0].slice(0, i);
        const start = performance.now();
        query.dispatchEvent(new Event("input"));
        document.getElementById("hits").getBoundingClientRect();
        times.push(performance.now() - start);
    }
    return Math.max(...times) / 1000"""


def opened(page):
    """Seconds until the page is there, and of the slowest letter typed into its search, as the browser counts
    them; none without a browser."""
    try:
        from selenium import webdriver
        from selenium.webdriver.chrome.service import Service
    except ImportError:
        return None
    if not shutil.which("chromium") or not shutil.which("chromedriver"):
        return None
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu"):
        options.add_argument(argument)
    driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
    try:
        times = []
        for _ in range(3):
            driver.get(f"file://{page}")
            times.append((driver.execute_script(
                "return performance.getEntriesByType('navigation')[0].loadEventEnd") / 1000,
                driver.execute_script(TYPE, SEARCH)))
        return min(times)
    finally:
        driver.quit()


def main(program, samples):
    packages = "".join(packages_of(sample) for sample in samples)
    with tempfile.TemporaryDirectory() as folder:
        path, page = os.path.join(folder, "f.arxml"), os.path.join(folder, "page.html")
        write_document(path, packages, PIECE)
        write_document(path, packages, PIECE * OBJECTS // objects_in(program, path))
        count = objects_in(program, path)
        _, processor, memory = min(measure(program, "report", path, "-o", page, code=0)
                                   for _ in range(3))
        times = opened(page)
        print(f"{count} objects: page of {os.path.getsize(page) / 1e6:.1f} MB, {processor:.2f} s of the "
              f"processor, {memory / 1e6:.0f} MB of memory, "
              + ("no browser to open it" if times is None
                 else f"opened in {times[0]:.2f} s, {times[1]:.2f} s for a letter of a search"))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2:])
