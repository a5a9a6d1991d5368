"""Measures the import of documents of 1, 10 and 100 MB, and the comparison with a next release.

usage: import_bench.py PROGRAM SAMPLE...

A document is made by repeating the samples, each time in another package, with their references
led there. Prints the time on the clock, that of the processor (other load on the machine doesn't count),
throughput by the clock and peak memory beside the size; both ratios should stay the same while the size
grows. The last column is the processor time of "velum diff" with a release in which one number in each copy
differs, by that of importing both.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

SIZES_MB = (1, 10, 100)


def packages_of(path):
    """What is in the outermost AR-PACKAGES of a document."""
    text = pathlib.Path(path).read_text(encoding="utf-8")
    start = text.index("<AR-PACKAGES>") + len("<AR-PACKAGES>")
    return text[start:text.rindex("</AR-PACKAGES>")]


def write_document(path, packages, size):
    """Writes copies of the packages, in packages of their own, until the size is reached."""
    with open(path, "w", encoding="utf-8") as file:
        file.write('<AUTOSAR xmlns="http://autosar.org/schema/r4.0"><AR-PACKAGES>')
        copy = 0
        while file.tell() < size:
            moved = re.sub(">/(?=[A-Za-z])", f">/Copy{copy}/", packages)
            file.write(f"<AR-PACKAGE><SHORT-NAME>Copy{copy}</SHORT-NAME><AR-PACKAGES>{moved}"
                       "</AR-PACKAGES></AR-PACKAGE>\n")
            copy += 1
        file.write("</AR-PACKAGES></AUTOSAR>\n")


def measure(program, *arguments, code=0):
    """Seconds on the clock and of processor time, and bytes of peak memory, of one run."""
    start = time.monotonic()
    process = subprocess.Popen([program, *arguments], stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    elapsed = time.monotonic() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != code:
        sys.exit(f"{program} {' '.join(arguments)} ended with {process.returncode}")
    return elapsed, usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def main(program, samples):
    packages = "".join(packages_of(sample) for sample in samples)
    changed = re.sub("<V>[0-9]+</V>", "<V>77</V>", packages, count=1)
    print(f"{'document':>8}  {'clock':>7}  {'processor':>9}  {'MB/s':>5}  {'memory':>7}  memory/size"
          "  diff/imports")
    with tempfile.TemporaryDirectory() as folder:
        for megabytes in SIZES_MB:
            path = os.path.join(folder, f"{megabytes}.arxml")
            write_document(path, packages, megabytes * 1_000_000)
            size = os.path.getsize(path)
            clock, processor, memory = min(measure(program, "import", path) for _ in range(3))
            release = os.path.join(folder, f"{megabytes}-next.arxml")
            write_document(release, changed, megabytes * 1_000_000)
            diff = min(measure(program, "diff", "--summary", path, release, code=1)[1]
                       for _ in range(3))
            print(f"{megabytes:>5} MB  {clock:5.2f} s  {processor:7.2f} s  "
                  f"{size / 1e6 / clock:5.1f}  {memory / 1e6:4.0f} MB  {memory / size:11.1f}  "
                  f"{diff / 2 / processor:12.2f}")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2:])
