"""Every source of the product includes what it uses, whatever stands before it in a unit.

The first source of a unit isn't compiled here: nothing stands before it when clang-tidy reads the unit.
The headers of others, which are most of what a compiler reads, are precompiled once for all sources: a
source that lacks one of our own headers is found, one that lacks only `<string>` isn't.
"""

from __future__ import annotations

import itertools
import pathlib
import re
from collections.abc import Iterator

from .cache import PRINT_HEADERS, Cache, Task
from .check import Check
from .compilations import PRESET, Compilation, compilations
from .project import Project, is_product

_INCLUDE = re.compile(r"^#include <(.+)>$", re.MULTILINE)
# Templates that the headers instantiate are instantiated once, not in every source.
_PRECOMPILED = "-fpch-instantiate-templates"


def _headers_of_others(project: Project) -> str:
    """A header that includes those that the product includes and that aren't ours."""
    generated = project.build(PRESET, "velum_generated") / "generated"
    ours = [*project.tracked("*.h"), *generated.rglob("*.h")]
    texts = (path.read_text() for path in project.sources() if is_product(project.relative(path)))
    names = {name for text in texts for name in _INCLUDE.findall(text)}
    held = {"/".join(path.parts[-n:]) for path in ours for n in range(1, len(path.parts))}
    # One that only some targets find is left out for the others.
    return "".join(
        f"#if __has_include(<{name}>)\n#include <{name}>\n#endif\n" for name in sorted(names - held)
    )


def _include_paths(found: list[Compilation]) -> Iterator[str]:
    """Where any of the compilations finds headers that aren't where the compiler looks by itself."""
    seen = set()
    for compilation in found:
        for word, following in itertools.pairwise(compilation.compiler):
            if word == "-isystem" and following not in seen:
                seen.add(following)
                yield from (word, following)


def _precompile(project: Project, found: list[Compilation], output: pathlib.Path) -> Task:
    header = output.with_suffix(".h")
    text = _headers_of_others(project)
    if not header.is_file() or header.read_text() != text:
        header.write_text(text)
    command = (*found[0].compiler, *_include_paths(found), "-x", "c++-header", str(header))
    return Task(
        name="headers of others",
        command=(*command, _PRECOMPILED, "-o", str(output)),
        dependencies=(*command, "-M"),
        directory=found[0].directory,
    )


def _find(project: Project) -> list[str]:
    found = list(compilations(project))
    if not found:
        return []
    cache = Cache(project, "sources", [])
    precompiled = cache.folder / "others.pch"
    faults = cache.failures([_precompile(project, found, precompiled)])
    if faults:
        return faults
    # Targets differ in macros of their own and in -fPIC, which mean nothing to others' headers.
    given = ("-include-pch", str(precompiled), "-Xclang", "-fno-validate-pch", _PRECOMPILED)
    flags = (*given, *PRINT_HEADERS, "-fsyntax-only")
    tasks = [
        Task(
            name=project.relative(source),
            command=(*compilation.compiler, *flags, str(source)),
            dependencies=None,
            directory=compilation.directory,
        )
        for compilation in found
        for source in compilation.following
        if is_product(project.relative(source))
    ]
    return cache.failures(tasks)


CHECK = Check(
    name="sources",
    meaning="every hand-written source of the libraries and the host compiles alone",
    fix="add the missing #include to the source",
    find=_find,
)
