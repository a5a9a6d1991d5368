"""Prints the map of a constant, and draws it where matplotlib is installed: plot_map.py PATH PICTURE FILE..."""

import sys
from importlib import import_module

import velum


def numbers(table: velum.LookupTableSpecification) -> list[float]:
    return [float(text) for text in table.vs]


def rows_of(table: velum.LookupTableSpecification) -> list[list[float]]:
    """The values, one row for each point of the first axis."""
    values, width = numbers(table), len(table.axes[1].vs)
    return [values[at : at + width] for at in range(0, len(values), width)]


def line(values: list[float]) -> str:
    return " ".join(f"{value:8g}" for value in values)


def draw(table: velum.LookupTableSpecification, title: str, picture: str) -> None:
    try:
        pyplot = import_module("matplotlib.pyplot")
    except ImportError:
        print("matplotlib isn't installed: no picture.", file=sys.stderr)
        return
    figure, axes = pyplot.subplots()
    mesh = axes.pcolormesh(numbers(table.axes[1]), numbers(table.axes[0]), rows_of(table))
    figure.colorbar(mesh)
    axes.set_title(title)
    figure.savefig(picture)


def main(path: str, picture: str, files: list[str]) -> None:
    model, _ = velum.read(files)
    constant = model.find_path(path)
    if not isinstance(constant, velum.ConstantSpecification):
        raise SystemExit(f"There is no constant {path}.")
    table = constant.constant_value
    if not isinstance(table, velum.LookupTableSpecification) or len(table.axes) != 2:
        raise SystemExit(f"{path} is no map.")
    print(" " * 9 + line(numbers(table.axes[1])))
    for point, row in zip(numbers(table.axes[0]), rows_of(table), strict=True):
        print(line([point, *row]))
    draw(table, constant.name or path, picture)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[3:])
