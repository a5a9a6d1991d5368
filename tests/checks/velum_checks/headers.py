"""Every installed header brings what it needs.

Hand-written ones are compiled one by one, generated ones in groups: they come from a few templates, and
what one lacks, its neighbours in the group seldom bring before it.
"""

from __future__ import annotations

import pathlib

from .cache import Cache, Task
from .check import Check
from .project import Project

_GROUP = 8
_GENERATED = "// Generated from the metamodel"
_FLAGS = ("-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-x", "c++")


def _groups(headers: list[pathlib.Path]) -> list[list[pathlib.Path]]:
    generated = [path for path in headers if path.read_text().startswith(_GENERATED)]
    alone = [[path] for path in headers if path not in set(generated)]
    return alone + [generated[i : i + _GROUP] for i in range(0, len(generated), _GROUP)]


def _find(project: Project) -> list[str]:
    include = project.installed() / "include"
    tasks = []
    for group in _groups(sorted(include.rglob("*.h"))):
        compiler = ("g++", *_FLAGS, f"-I{include}")
        # Included from standard input: a header compiled as the main file warns at "pragma once".
        unit = (*(word for header in group for word in ("-include", str(header))), "/dev/null")
        tasks.append(
            Task(
                name=group[0].relative_to(include).as_posix(),
                command=(*compiler, "-fsyntax-only", *unit),
                dependencies=(*compiler, "-MM", *unit),
                directory=project.root,
            )
        )
    return Cache(project, "headers", []).failures(tasks)


CHECK = Check(
    name="headers",
    meaning="every public header brings what it needs",
    fix="add the missing #include to the header",
    find=_find,
)
