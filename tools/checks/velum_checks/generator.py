"""The generator gives the same bytes on each run, and what its own tests expect of it."""

from __future__ import annotations

import pathlib
import sys
import tempfile

from .check import Check
from .metamodel import write_all
from .project import Project


def tree(folder: pathlib.Path) -> dict[str, bytes]:
    """The content of every file below a folder, by its path there."""
    paths = sorted(path for path in folder.rglob("*") if path.is_file())
    return {path.relative_to(folder).as_posix(): path.read_bytes() for path in paths}


def differences(project: Project) -> list[str]:
    """Generated files that two runs in different folders do not agree about."""
    with tempfile.TemporaryDirectory() as folder:
        first = pathlib.Path(folder, "first")
        second = pathlib.Path(folder, "elsewhere", "second")
        second.parent.mkdir()
        failures = write_all(project, first, "1") + write_all(project, second, "2")
        if failures:
            return failures
        one, other = tree(first), tree(second)
        names = sorted(one.keys() | other.keys())
        return [f"{n}: two runs differ" for n in names if one.get(n) != other.get(n)]


def _own_tests(project: Project) -> list[str]:
    result = project.attempt(
        *(sys.executable, "-B", "-m", "unittest", "discover", "-b"),
        *("-s", "generator/tests", "-t", "generator"),
    )
    return [] if result.returncode == 0 else [result.stderr.rstrip()]


def _find(project: Project) -> list[str]:
    return differences(project) + _own_tests(project)


CHECK = Check(
    name="generator",
    meaning="two runs of the generator agree, and its tests with golden output pass",
    fix="sort what is walked in the generator; a meant change also goes into the golden files",
    find=_find,
)
