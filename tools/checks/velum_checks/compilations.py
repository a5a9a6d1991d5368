"""How the lint build compiles hand-written code: alone, or in units of several sources."""

from __future__ import annotations

import dataclasses
import json
import pathlib
import re
import shlex
from collections.abc import Iterator

from .project import Project

# By clang and without precompiled headers, which clang-tidy could not read.
PRESET = "lint"
_INCLUDED = re.compile(r'^#include "(.*\.cpp)"$', re.MULTILINE)


@dataclasses.dataclass(frozen=True)
class Compilation:
    """One call of the compiler. `compiler` is the command without the file and without an output.

    `sources` are the hand-written ones that it reads, `following` those of them that have another
    source before them.
    """

    file: pathlib.Path
    sources: tuple[pathlib.Path, ...]
    following: tuple[pathlib.Path, ...]
    compiler: tuple[str, ...]
    directory: pathlib.Path


def _compiler(entry: dict[str, str]) -> tuple[str, ...]:
    words = shlex.split(entry["command"])
    # Without a compiler cache in front, and without the output that the build wants.
    start = next(i for i, word in enumerate(words) if re.search(r"clang\+\+[-0-9]*$", word))
    output = words.index("-o")
    left_out = ("-c", entry["file"])
    return tuple(word for word in words[start:output] + words[output + 2 :] if word not in left_out)


def compilations(project: Project) -> Iterator[Compilation]:
    """Every compilation that reads a hand-written source, with those sources, each source once."""
    build = project.build(PRESET, "velum_generated")
    pending = set(project.tracked("*.cpp"))
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["directory"], entry["file"])
        included = _INCLUDED.findall(file.read_text()) if file.suffix == ".cxx" else []
        parts = [pathlib.Path(name) for name in included] or [file]
        sources = tuple(part for part in parts if part in pending)
        pending.difference_update(sources)
        if sources:
            following = tuple(source for source in sources if source != parts[0])
            yield Compilation(
                file, sources, following, _compiler(entry), pathlib.Path(entry["directory"])
            )
