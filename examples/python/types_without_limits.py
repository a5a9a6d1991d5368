"""Lists the numeric types that don't say which values they may have: types_without_limits.py FILE..."""

import sys

import velum


def has_limits(number: velum.Real) -> bool:
    return number.min_value is not None and number.max_value is not None


def width_of(number: velum.Real) -> str:
    match number:
        case velum.Integer() | velum.FixedPoint():
            return f"{'signed' if number.is_signed else 'unsigned'}, {number.length}"
        case velum.FloatingPoint():
            return number.kind.name
        case _:
            return "of no known width"


def main(files: list[str]) -> None:
    model, _ = velum.read(files)
    for number in model.objects(velum.Real):
        if number.external_id and not has_limits(number):
            print(f"{number.external_id}: {type(number).__name__}, {width_of(number)}")


if __name__ == "__main__":
    main(sys.argv[1:])
