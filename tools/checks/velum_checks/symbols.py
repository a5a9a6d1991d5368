"""Each library exports what its checked-in list says, no more and no less."""

from __future__ import annotations

import difflib
import pathlib
import re

from .check import Check
from .project import Project

# Code and data with one definition; what templates and inline functions leave behind depends on
# the optimiser and is no promise to users.
_STRONG = frozenset("TDRB")
# Inline functions of which a copy is exported on purpose (qob/kernel/handle/outofline.h).
_OUT_OF_LINE = re.compile(r"[\w:]+::(?:Immutable\w+::(?:operator=|setDeviant)|hash_value)\(")
_TABLE = re.compile(r"(?:vtable|typeinfo) for (?:QOB|Tessel|Zorvane|velum|host)::")


def _lists(project: Project) -> pathlib.Path:
    return project.root / "tests" / "symbols"


def _libraries(project: Project) -> dict[str, pathlib.Path]:
    found = sorted((project.installed()).glob("lib*/lib*.so"))
    return {path.name.removeprefix("lib").removesuffix(".so"): path for path in found}


def exported(project: Project, library: pathlib.Path) -> list[str]:
    """The exported names of a library, demangled and sorted."""
    names = set()
    for line in project.run("nm", "-D", "-C", "--defined-only", library).splitlines():
        _, kind, name = line.split(" ", 2)
        if kind in _STRONG or _TABLE.match(name) or _OUT_OF_LINE.match(name):
            names.add(name)
    return sorted(names)


def _find(project: Project) -> list[str]:
    findings = []
    libraries = _libraries(project)
    for name, library in libraries.items():
        listing = _lists(project) / f"{name}.txt"
        expected = listing.read_text().splitlines() if listing.is_file() else []
        for line in difflib.unified_diff(expected, exported(project, library), n=0, lineterm=""):
            if not line.startswith(("---", "+++", "@@")):
                findings.append(f"{project.relative(listing)}: {line}")
    for listing in sorted(_lists(project).glob("*.txt")):
        if listing.stem not in libraries:
            findings.append(f"{project.relative(listing)}: there is no such library")
    return findings


def _repair(project: Project) -> None:
    names = {name: exported(project, library) for name, library in _libraries(project).items()}
    folder = _lists(project)
    folder.mkdir(parents=True, exist_ok=True)
    for listing in folder.glob("*.txt"):
        listing.unlink()
    for name, lines in names.items():
        (folder / f"{name}.txt").write_text("\n".join(lines) + "\n")


CHECK = Check(
    name="symbols",
    meaning="each library exports what tests/symbols lists",
    fix="./dev symbols, if the change of the interface is meant",
    find=_find,
    repair=_repair,
)
