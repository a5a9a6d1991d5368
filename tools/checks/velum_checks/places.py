"""A failure in an installed header names the header by its path in the repository."""

from __future__ import annotations

import re

from .check import Check
from .project import Project

_COMMENT = re.compile(r"//[^\n]*")
# What gives the path that the compiler was given, but for the definitions of the macros themselves.
_OF_THE_COMPILER = re.compile(r"\b(?:__FILE__|QOB_FAIL|QOB_REQUIRE)\b")
_DIRECTIVE = re.compile(r"^[ \t]*#(?:\\\n|[^\n])*", re.MULTILINE)
_PATH = re.compile(r'"([\w/.]*\binclude/[\w/.]+\.h)"')


def _blank(match: re.Match[str]) -> str:
    return "\n" * match.group().count("\n")


def wrong_places(name: str, text: str) -> list[tuple[int, str]]:
    """Line and cause of each place in the header `name` that names no file, or another one."""
    code = _DIRECTIVE.sub(_blank, _COMMENT.sub("", text))
    found = []
    for match in _OF_THE_COMPILER.finditer(code):
        found.append((match.start(), f"{match.group()} names a folder of whoever includes the header"))
    for match in _PATH.finditer(code):
        if not f"/{match.group(1)}".endswith(f"/include/{name}"):
            found.append((match.start(), f"another file is named ({match.group(1)})"))
    return [(code.count("\n", 0, at) + 1, cause) for at, cause in sorted(found)]


def _find(project: Project) -> list[str]:
    include = project.installed() / "include"
    findings = []
    for header in sorted(include.rglob("*.h")):
        name = header.relative_to(include).as_posix()
        for line, cause in wrong_places(name, header.read_text(encoding="utf-8")):
            findings.append(f"{name}:{line}: {cause}")
    return findings


CHECK = Check(
    name="places",
    meaning="failures in public headers name the header by its path in the repository",
    fix="use QOB_REQUIRE_IN or failAt with the path of the header",
    find=_find,
)
