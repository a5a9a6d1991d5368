"""Every installed header compiles by itself."""

from __future__ import annotations

from .cache import Cache, Task
from .check import Check
from .project import Project

_FLAGS = ("-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-x", "c++")


def _find(project: Project) -> list[str]:
    include = project.installed() / "include"
    tasks = []
    for header in sorted(include.rglob("*.h")):
        compiler = ("g++", *_FLAGS, f"-I{include}")
        # Included from standard input: a header compiled as the main file warns at "pragma once".
        unit = ("-include", str(header), "/dev/null")
        tasks.append(
            Task(
                name=header.relative_to(include).as_posix(),
                command=(*compiler, "-fsyntax-only", *unit),
                dependencies=(*compiler, "-MM", *unit),
                directory=project.root,
            )
        )
    return Cache(project, "headers", []).failures(tasks)


CHECK = Check(
    name="headers",
    meaning="every public header compiles alone",
    fix="add the missing #include to the header",
    find=_find,
)
