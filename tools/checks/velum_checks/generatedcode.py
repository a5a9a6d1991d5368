"""Generated bodies are one statement that decides nothing, generated headers keep to 100 columns, and
templates know no class by name."""

from __future__ import annotations

import pathlib
import re
import sys
import tempfile

from .check import Check
from .cplusplus import code_of
from .metamodel import files, write_all
from .project import Project

_SUFFIXES = (".h", ".cpp")
_BODY = re.compile(r"\)(?:\s|const|noexcept|override|final)*\{(?P<statements>[^{}]*)\}")
_CONTROL = re.compile(r"\b(?:if|else|for|while|do|switch|case|goto|try|catch)\b|\?")


def control_flow(text: str) -> list[tuple[int, str]]:
    """Line and word of each place where C++ text decides something."""
    code = code_of(text)
    return [(code.count("\n", 0, m.start()) + 1, m.group()) for m in _CONTROL.finditer(code)]


def long_bodies(text: str) -> list[tuple[int, int]]:
    """Line and number of statements of each function body that has more than one."""
    code = code_of(text)
    bodies = [(m.start("statements"), m["statements"].count(";")) for m in _BODY.finditer(code)]
    return [(code.count("\n", 0, at) + 1, count) for at, count in bodies if count > 1]


_WIDTH = 100
# Lines that can't be broken: an #include and a literal.
_UNBREAKABLE = re.compile(r"""#include |\s*"(?:\\.|[^"\\])*"\W*\Z""")


def long_lines(text: str) -> list[tuple[int, int]]:
    """Number and width of each line that is too wide and could be broken."""
    return [
        (number, len(line))
        for number, line in enumerate(text.splitlines(), 1)
        if len(line) > _WIDTH and not _UNBREAKABLE.match(line)
    ]


def class_names(template: str, names: frozenset[str]) -> list[tuple[int, str]]:
    """Line and name of each metaclass, or one of its forms, that a template spells out.

    The kernel has classes of the same names; those are written with their namespace.
    """
    found = []
    for match in re.finditer(r"(?<![\w:.])(?:Immutable)?(\w+?)(?:Intf|Impl|DeviantImpl)?\b", template):
        if match.group(1) in names:
            found.append((template.count("\n", 0, match.start()) + 1, match.group()))
    return found


def metaclasses(project: Project) -> frozenset[str]:
    sys.path.insert(0, str(project.root / "generator"))
    try:
        from velumgen import loader
    finally:
        sys.path.pop(0)
    return frozenset(c.name for path in files(project) for c in loader.load(path).classes)


def _find(project: Project) -> list[str]:
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder, "generated")
        findings = write_all(project, out)
        for path in sorted(out.rglob("*")):
            if path.suffix in _SUFFIXES:
                place = path.relative_to(out).as_posix()
                text = path.read_text(encoding="utf-8")
                for line, word in control_flow(text):
                    findings.append(f"{place}:{line}: control flow ({word})")
                for line, count in long_bodies(text):
                    findings.append(f"{place}:{line}: a body of several statements ({count})")
                if path.suffix == ".h":
                    for line, width in long_lines(text):
                        findings.append(f"{place}:{line}: a line of {width} columns")
    names = metaclasses(project)
    # Python's annotations name classes that the module defines by hand.
    for path in project.tracked("generator/templates/*", ":!generator/templates/*.pyi.j2"):
        for line, name in class_names(path.read_text(encoding="utf-8"), names):
            findings.append(f"{project.relative(path)}:{line}: a metaclass by name ({name})")
    return findings


CHECK = Check(
    name="thin",
    meaning="generated code decides nothing and keeps to 100 columns, templates name no class",
    fix="move the rule into hand-written C++, the exception into metamodel/; break lines in layout.py",
    find=_find,
)
