"""Every source of the product includes what it uses, whatever stands before it in a unit.

The first source of a unit isn't compiled here: nothing stands before it when clang-tidy reads the unit.
"""

from __future__ import annotations

from .cache import Cache, Task
from .check import Check
from .compilations import compilations
from .project import Project, is_product


def _find(project: Project) -> list[str]:
    tasks = [
        Task(
            name=project.relative(source),
            command=(*compilation.compiler, "-fsyntax-only", str(source)),
            dependencies=(*compilation.compiler, "-MM", str(source)),
            directory=compilation.directory,
        )
        for compilation in compilations(project)
        for source in compilation.following
        if is_product(project.relative(source))
    ]
    return Cache(project, "sources", []).failures(tasks)


CHECK = Check(
    name="sources",
    meaning="every hand-written source of the libraries and the host compiles alone",
    fix="add the missing #include to the source",
    find=_find,
)
