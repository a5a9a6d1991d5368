"""The instructions that the operations of tests/cost take, counted by callgrind, are those of the list."""

from __future__ import annotations

import pathlib
import re
import shutil
import subprocess

from .check import Check
from .project import Project

# A count moves by less when addresses differ, and by more when an operation does more.
_TOLERANCE = 0.03
_PREFIX = "cost_"
_PART = re.compile(r"^part: (\d+)", re.MULTILINE)
_TRIGGER = re.compile(rf"^desc: Trigger: --dump-before={_PREFIX}(\w+)", re.MULTILINE)
_EVENTS = re.compile(r"^events: (.+)", re.MULTILINE)
_TOTALS = re.compile(r"^totals: (.+)", re.MULTILINE)


def _list(project: Project) -> pathlib.Path:
    return project.root / "tests" / "cost" / "instructions.txt"


def _compiler(project: Project) -> str:
    return "g++ " + project.run("g++", "-dumpfullversion").strip()


def parse(text: str) -> tuple[str, dict[str, int]]:
    """The compiler that a list is for, and its count of each operation."""
    first, *rest = text.splitlines()
    return first.removeprefix("# "), {name: int(count) for name, count in map(str.split, rest)}


def compare(expected: dict[str, int], counted: dict[str, int]) -> list[str]:
    """A line for each operation whose count isn't the one of the list."""
    findings = []
    for name in sorted(expected.keys() | counted.keys()):
        before, now = expected.get(name), counted.get(name)
        if before is None or now is None:
            findings.append(f"{name}: {'is not in the list' if before is None else 'is gone'}")
        elif abs(now - before) > _TOLERANCE * before:
            findings.append(f"{name}: {now} instructions, {before} in the list ({now / before - 1:+.1%})")
    return findings


def counts_in(parts: list[str], rounds: int) -> dict[str, dict[str, float]]:
    """What one round of each operation takes of each event, off what callgrind wrote before each of them.

    A part holds what was counted since the part before: the operation that the latter names. Events that
    didn't happen may be left out.
    """
    named = sorted((int(_PART.search(text)[1]), text) for text in parts if _TRIGGER.search(text))
    texts = [text for _, text in named]
    return {
        _TRIGGER.search(before)[1]: {
            event: int(total) / rounds
            for event, total in zip(_EVENTS.search(text)[1].split(), _TOTALS.search(text)[1].split())
        }
        for before, text in zip(texts, texts[1:])
    }


def count(program: pathlib.Path, folder: pathlib.Path, rounds: int, *options: str) -> dict[str, dict[str, float]]:
    """Runs so many rounds of the operations under callgrind, which writes to the folder."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    command = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/counts",
               f"--dump-before={_PREFIX}*", *options, str(program), str(rounds)]
    subprocess.run(command, check=True, capture_output=True)
    return counts_in([path.read_text() for path in folder.iterdir()], rounds)


def _instructions(project: Project) -> dict[str, int]:
    program = project.build("release", "operation_costs") / "tests" / "cost" / "operation_costs"
    counted = count(program, project.root / "build" / "check" / "cost", 1000)
    return {name: round(events["Ir"]) for name, events in counted.items()}


def _find(project: Project) -> list[str]:
    compiler, expected = parse(_list(project).read_text())
    # Another compiler makes other code, and without callgrind nothing is counted.
    if shutil.which("valgrind") is None or compiler != _compiler(project):
        return []
    return compare(expected, _instructions(project))


def _repair(project: Project) -> None:
    lines = [f"# {_compiler(project)}"]
    lines += [f"{name} {instructions}" for name, instructions in sorted(_instructions(project).items())]
    _list(project).write_text("\n".join(lines) + "\n")


CHECK = Check(
    name="cost",
    meaning="operations take the instructions that tests/cost/instructions.txt lists",
    fix="./dev check cost --repair, if the change of the cost is meant",
    find=_find,
    repair=_repair,
)
