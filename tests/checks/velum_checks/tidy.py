"""clang-tidy has nothing to say about hand-written code."""

from __future__ import annotations

import json
import pathlib
import re
import shlex

from .cache import Cache, Task
from .check import Check
from .project import Project

# Built by clang and without precompiled headers, which clang-tidy could not read.
_PRESET = "clang"


def _header_filter(project: Project) -> str:
    """Matches hand-written headers: those in a folder that has one under version control."""
    folders = {path.relative_to(project.root).parts[0] for path in project.tracked("*.h")}
    return f"^{re.escape(str(project.root))}/({'|'.join(sorted(folders))})/"


def _task(project: Project, entry: dict[str, str], header_filter: str) -> Task:
    source = pathlib.Path(entry["directory"], entry["file"])
    words = shlex.split(entry["command"])
    # Without a compiler cache in front, and without the output that the build wants.
    start = next(i for i, word in enumerate(words) if re.search(r"clang\+\+[-0-9]*$", word))
    output = words.index("-o")
    compiler = words[start:output] + words[output + 2 :]
    compiler.remove("-c")
    return Task(
        name=project.relative(source),
        command=(
            "clang-tidy",
            "--quiet",
            f"--header-filter={header_filter}",
            str(source),
            "--",
            *compiler[1:],
        ),
        dependencies=(*compiler, "-MM"),
        directory=pathlib.Path(entry["directory"]),
    )


def _faults(project: Project, output: str) -> list[str]:
    """The faults in what clang-tidy printed, each from its place up to the next fault."""
    parts = re.split(r"^(?=\S[^\n]*:\d+:\d+: (?:error|warning): )", output, flags=re.MULTILINE)
    faults = [part for part in parts if ": error: " in part or ": warning: " in part]
    text = [re.sub(r"^\d+ warnings?.*$", "", fault, flags=re.MULTILINE) for fault in faults]
    return [fault.replace(f"{project.root}/", "").rstrip() for fault in text] or [output]


def _find(project: Project) -> list[str]:
    build = project.build(_PRESET, "velum_generated")
    hand_written = set(project.tracked("*.cpp"))
    entries = json.loads((build / "compile_commands.json").read_text())
    header_filter = _header_filter(project)
    tasks = {}
    for entry in entries:
        if pathlib.Path(entry["directory"], entry["file"]) in hand_written:
            task = _task(project, entry, header_filter)
            tasks.setdefault(task.name, task)
    cache = Cache(project, "tidy", project.tracked(".clang-tidy", "**/.clang-tidy"))
    outputs = cache.failures(tasks[name] for name in sorted(tasks))
    # A fault in a header shows in every unit that reads it; once is enough.
    return list(dict.fromkeys(fault for text in outputs for fault in _faults(project, text)))


CHECK = Check(
    name="tidy",
    meaning="clang-tidy is silent about hand-written code",
    fix="clang-tidy -p build/clang --fix FILE, or mend it by hand",
    find=_find,
)
