"""Nothing that is installed tells where it was built."""

from __future__ import annotations

import pathlib

from .check import Check
from .project import Project


def _find(project: Project) -> list[str]:
    places = {str(project.root), f"{pathlib.Path.home()}/"}
    findings = []
    for path in sorted(project.installed().rglob("*")):
        if path.is_symlink() or not path.is_file():
            continue
        content = path.read_bytes()
        for place in sorted(places):
            at = content.find(place.encode())
            if at >= 0:
                text = content[at:].split(b"\0", 1)[0].split(b"\n", 1)[0][:120]
                findings.append(
                    f"{project.relative(path)} holds a path of this machine: "
                    f"{text.decode(errors='replace')}"
                )
    return findings


CHECK = Check(
    name="paths",
    meaning="nothing installed holds a path of the machine that built it",
    fix="name the folder in the prefix maps of cmake/VelumSettings.cmake",
    find=_find,
)
