"""Counts, with callgrind and its model of this machine's caches, what the operations of tests/cost take each:
instructions, accesses that miss the first cache, and those that miss the last one.

usage: operation_counts.py PROGRAM ROUNDS...

As many objects, children and repetitions as there are rounds; with a hundred thousand, the objects no longer
fit in the caches.
"""

import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "tools" / "checks"))

from velum_checks import cost

COLUMNS = {"instructions": ("Ir",), "first cache": ("D1mr", "D1mw"), "last cache": ("DLmr", "DLmw")}


def main(program, rounds):
    print(f"{'operation':24} {'rounds':>8}" + "".join(f" {column:>14}" for column in COLUMNS))
    for number in rounds:
        with tempfile.TemporaryDirectory() as folder:
            counted = cost.count(pathlib.Path(program), pathlib.Path(folder), number, "--cache-sim=yes")
        for operation, events in counted.items():
            print(f"{operation:24} {number:8}" + "".join(
                f" {sum(events.get(event, 0) for event in summed):14.1f}" for summed in COLUMNS.values()))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], [int(argument) for argument in sys.argv[2:]])
