"""Every installed header brings what it needs, and is one that users include or that those need.

Hand-written ones are compiled one by one, generated ones in groups: they come from a few templates, and
what one lacks, its neighbours in the group seldom bring before it.
"""

from __future__ import annotations

import pathlib

from .cache import PRINT_HEADERS, Cache, Task
from .check import Check
from .project import Project

_GROUP = 8
_GENERATED = "// Generated from "
_FLAGS = ("-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-x", "c++")


def _groups(headers: list[pathlib.Path]) -> list[list[pathlib.Path]]:
    generated = [path for path in headers if path.read_text().startswith(_GENERATED)]
    alone = [[path] for path in headers if path not in set(generated)]
    return alone + [generated[i : i + _GROUP] for i in range(0, len(generated), _GROUP)]


# What users include: the umbrella headers, and beside them what only some need. All other headers are
# installed because one of these needs them; the rest is the libraries' own.
_UMBRELLAS = ("velum_types/types.h", "velum_arxml/read.h", "velum_arxml/write.h", "velum_arxml/update.h",
              "qob_store/store.h", "qob_store/query.h", "qob/qob.h", "tessel/tessel.h")
_BESIDE = (
    "qob/qob/**/*.h",
    "velum_foundation/zorvane/metamodel.h",
    "velum_arxml/notation/*.h",
    "velum_arxml/writing/output_file.h",
    "**/nsmetaregistry/*.h",
)


def _unreached(project: Project, include: pathlib.Path) -> list[str]:
    """The installed headers that no header for users includes, however indirectly."""
    umbrellas = [include / name for name in _UMBRELLAS if (include / name).is_file()]
    if not umbrellas:
        return []
    beside = [header for pattern in _BESIDE for header in sorted(include.glob(pattern))]
    unit = (word for header in (*umbrellas, *beside) for word in ("-include", str(header)))
    rule = project.run("g++", "-std=c++20", f"-I{include}", "-MM", *unit, "-x", "c++", "/dev/null")
    reached = {pathlib.Path(word).resolve() for word in rule.replace("\\\n", " ").split()[1:]}
    return [
        f"{header.relative_to(include).as_posix()} is installed, but no header for users needs it"
        for header in sorted(include.rglob("*.h"))
        if header.resolve() not in reached
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
                command=(*compiler, *PRINT_HEADERS, "-fsyntax-only", *unit),
                dependencies=None,
                directory=project.root,
            )
        )
    return Cache(project, "headers", []).failures(tasks) + _unreached(project, include)


CHECK = Check(
    name="headers",
    meaning="every installed header brings what it needs, and users need every installed header",
    fix="add the missing #include to the header, or the header to an umbrella or to INTERNAL",
    find=_find,
)
