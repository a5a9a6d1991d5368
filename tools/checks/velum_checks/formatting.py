"""clang-format leaves every hand-written C++ file as it stands."""

from __future__ import annotations

from .check import Check
from .project import Project


def _find(project: Project) -> list[str]:
    files = project.sources()
    if not files:
        return []
    result = project.attempt("clang-format", "--dry-run", "-Werror", *files)
    if result.returncode == 0:
        return []
    faults = [line for line in result.stderr.splitlines() if "[-Wclang-format-violations]" in line]
    return [line.replace(f"{project.root}/", "") for line in faults] or [result.stderr]


def _repair(project: Project) -> None:
    project.run("clang-format", "-i", *project.sources())


CHECK = Check(
    name="format",
    meaning="hand-written C++ is formatted",
    fix="./dev format",
    find=_find,
    repair=_repair,
)
