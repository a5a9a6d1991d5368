"""Writes the table of all names into docs/python.md: name_table.py PAGE"""

import pathlib
import re
import sys

import velum

_START = "<!-- names: written by ./dev docs -->\n"
_END = "<!-- end of names -->"


def _rows():
    for name, of in sorted(vars(velum).items()):
        if not (isinstance(of, type) and issubclass(of, velum.Object)):
            continue
        for spelling, prop in vars(of).items():
            if isinstance(prop, velum.Property):
                kind = re.match(r"[\w.]+: (.*)\.", prop.__doc__).group(1).replace("velum.", "")
                yield f"| `{name}` | `{spelling}` | {prop.metamodel_name.partition('.')[2]} | {kind} |\n"


def with_table(page: str) -> str:
    """The page with the table as the classes are now."""
    before, _, rest = page.partition(_START)
    _, _, after = rest.partition(_END)
    head = "\n| class | in Python | in the metamodel | type |\n|---|---|---|---|\n"
    return f"{before}{_START}{head}{''.join(_rows())}\n{_END}{after}"


if __name__ == "__main__":
    path = pathlib.Path(sys.argv[1])
    path.write_text(with_table(path.read_text(encoding="utf-8")), encoding="utf-8")
