"""Every installed header brings what it needs, and the umbrella header reaches all of its library.

Hand-written ones are compiled one by one, generated ones in groups: they come from a few templates, and
what one lacks, its neighbours in the group seldom bring before it.
"""

from __future__ import annotations

import pathlib

from .cache import Cache, Task
from .check import Check
from .project import Project

_GROUP = 8
_GENERATED = "// Generated from "
_FLAGS = ("-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-x", "c++")


def _groups(headers: list[pathlib.Path]) -> list[list[pathlib.Path]]:
    generated = [path for path in headers if path.read_text().startswith(_GENERATED)]
    alone = [[path] for path in headers if path not in set(generated)]
    return alone + [generated[i : i + _GROUP] for i in range(0, len(generated), _GROUP)]


# What a user includes, and what stands below it for the library alone: the fields of states.
_UMBRELLA = "velum_types/types.h"
_PRIVATE = "nsimplementation"


def _unreached(project: Project, include: pathlib.Path) -> list[str]:
    """The headers beside and below the umbrella header that it doesn't include, however indirectly."""
    umbrella = include / _UMBRELLA
    if not umbrella.is_file():
        return []
    rule = project.run("g++", "-std=c++20", f"-I{include}", "-MM", umbrella)
    reached = {pathlib.Path(word).resolve() for word in rule.replace("\\\n", " ").split()[1:]}
    return [
        f"{header.relative_to(include).as_posix()} is not reached from {_UMBRELLA}"
        for header in sorted(umbrella.parent.rglob("*.h"))
        if header.resolve() not in reached and header.parent.name != _PRIVATE
    ]


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
    return Cache(project, "headers", []).failures(tasks) + _unreached(project, include)


CHECK = Check(
    name="headers",
    meaning="every public header brings what it needs, and velum_types/types.h reaches all",
    fix="add the missing #include to the header, or the header to velum_types/types.h",
    find=_find,
)
