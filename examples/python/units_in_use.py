"""Prints the units of AUTOSAR files with the number of types that use each: units_in_use.py FILE..."""

import sys
from collections import Counter

import velum


def units_in_use(model: velum.Model) -> Counter[str]:
    uses: Counter[str] = Counter()
    for primitive in model.objects(velum.PrimitiveType):
        method = primitive.compu_method
        unit = primitive.unit or (method.unit if method else None)
        if unit is not None:
            uses[unit.name or "?"] += 1
    return uses


def main(files: list[str]) -> None:
    model, report = velum.read(files)
    for name, count in sorted(units_in_use(model).items()):
        print(f"{count:5}  {name}")
    if report.faults:
        print(f"The files have {len(report.faults)} faults.", file=sys.stderr)


if __name__ == "__main__":
    main(sys.argv[1:])
