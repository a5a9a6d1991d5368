"""The generator gives the same bytes on each run. What it gives is held by its own tests."""

from __future__ import annotations

import pathlib
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


CHECK = Check(
    name="generator",
    meaning="two runs of the generator agree",
    fix="sort what is walked in the generator",
    find=differences,
)
