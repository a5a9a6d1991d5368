"""Hand-written product code is read in one go: short files, short functions."""

from __future__ import annotations

import ast
import re

from .check import Check
from .cplusplus import functions
from .project import Project, is_product

FILE = 500
FUNCTION = 60


def _python_functions(text: str) -> list[tuple[str, int, int]]:
    return [
        (node.name, node.lineno, (node.end_lineno or node.lineno) - node.lineno + 1)
        for node in ast.walk(ast.parse(text))
        if isinstance(node, ast.FunctionDef)
    ]


def long_parts(name: str, text: str) -> list[str]:
    """What is too long in a file, and the file itself if it is."""
    findings = []
    lines = text.count("\n")
    if lines > FILE:
        findings.append(f"{name}: {lines} lines; {FILE} are allowed")
    if name.endswith(".py"):
        parts = _python_functions(text)
    else:
        parts = [(part.name, part.line, part.lines) for part in functions(text)]
    for function, line, length in parts:
        if length > FUNCTION:
            findings.append(f"{name}:{line}: {function} has {length} lines; {FUNCTION} are allowed")
    return findings


def _find(project: Project) -> list[str]:
    findings = []
    for path in project.tracked("*.h", "*.cpp", "*.py"):
        name = project.relative(path)
        if is_product(name):
            findings += long_parts(name, path.read_text(encoding="utf-8"))
    return findings


CHECK = Check(
    name="sizes",
    meaning=f"product files of at most {FILE} lines, functions of at most {FUNCTION}",
    fix="take out what has a name of its own, into the file of what it belongs to",
    find=_find,
)
