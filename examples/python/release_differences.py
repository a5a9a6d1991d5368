"""Writes what changed between two releases as CSV: release_differences.py OLD NEW"""

import csv
import sys

import velum


def main(old: str, new: str) -> None:
    report = velum.diff(old, new, ignore=["Visibility"])
    columns = ["kind", "path", "part", "property", "old", "new"]
    writer = csv.DictWriter(sys.stdout, columns, lineterminator="\n")
    writer.writeheader()
    writer.writerows(report.rows())


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
