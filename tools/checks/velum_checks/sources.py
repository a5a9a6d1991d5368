"""Every hand-written source includes what it uses, whatever stands before it in a unit."""

from __future__ import annotations

from .cache import Cache, Task
from .check import Check
from .compilations import compilations
from .project import Project


def _find(project: Project) -> list[str]:
    tasks = [
        Task(
            name=project.relative(source),
            command=(*compilation.compiler, "-fsyntax-only", str(source)),
            dependencies=(*compilation.compiler, "-MM", str(source)),
            directory=compilation.directory,
        )
        for compilation in compilations(project)
        for source in compilation.sources
    ]
    return Cache(project, "sources", []).failures(tasks)


CHECK = Check(
    name="sources",
    meaning="every hand-written source compiles alone",
    fix="add the missing #include to the source",
    find=_find,
)
