"""clang-tidy has nothing to say about hand-written code."""

from __future__ import annotations

import re

from .cache import Cache, Task
from .check import Check
from .compilations import Compilation, compilations
from .project import Project


def _header_filter(project: Project) -> str:
    """Matches hand-written files: those in a folder that has a header under version control."""
    folders = {path.relative_to(project.root).parts[0] for path in project.tracked("*.h")}
    return f"^{re.escape(str(project.root))}/({'|'.join(sorted(folders))})/"


def _task(project: Project, compilation: Compilation, header_filter: str) -> Task:
    """Looks at a whole unit, so that a header is looked at once a unit instead of once a source."""
    return Task(
        name=project.relative(compilation.file),
        command=(
            "clang-tidy",
            "--quiet",
            # A unit includes sources, which clang-tidy takes for headers.
            "--checks=-bugprone-suspicious-include,-google-global-names-in-headers",
            f"--header-filter={header_filter}",
            str(compilation.file),
            "--",
            *compilation.compiler[1:],
        ),
        dependencies=(*compilation.compiler, "-MM", str(compilation.file)),
        directory=compilation.directory,
    )


def _faults(project: Project, output: str) -> list[str]:
    """The faults in what clang-tidy printed, each from its place up to the next fault."""
    parts = re.split(r"^(?=\S[^\n]*:\d+:\d+: (?:error|warning): )", output, flags=re.MULTILINE)
    faults = [part for part in parts if ": error: " in part or ": warning: " in part]
    text = [re.sub(r"^\d+ warnings?.*$", "", fault, flags=re.MULTILINE) for fault in faults]
    return [fault.replace(f"{project.root}/", "").rstrip() for fault in text] or [output]


def _find(project: Project) -> list[str]:
    header_filter = _header_filter(project)
    tasks = [_task(project, each, header_filter) for each in compilations(project)]
    cache = Cache(project, "tidy", project.tracked(".clang-tidy", "**/.clang-tidy"))
    # A fault in a header shows in every unit that reads it; once is enough.
    outputs = cache.failures(sorted(tasks, key=lambda task: task.name))
    return list(dict.fromkeys(fault for text in outputs for fault in _faults(project, text)))


CHECK = Check(
    name="tidy",
    meaning="clang-tidy is silent about hand-written code",
    fix="clang-tidy -p build/lint --fix FILE, or mend it by hand",
    find=_find,
)
