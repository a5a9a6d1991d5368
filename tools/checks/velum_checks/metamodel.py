"""The metamodel files agree with themselves and with each other."""

from __future__ import annotations

import pathlib
import sys

from .check import Check
from .project import Project


def files(project: Project) -> list[pathlib.Path]:
    return project.tracked("metamodel/*.toml")


def generate(
    project: Project, *arguments: str | pathlib.Path, env: dict[str, str] | None = None
) -> tuple[bool, str]:
    """Whether a run of the generator ends well, and what it prints."""
    script = project.root / "generator" / "generate.py"
    result = project.attempt(sys.executable, script, *arguments, env=env)
    return result.returncode == 0, (result.stdout + result.stderr).rstrip()


def write_all(project: Project, out: pathlib.Path, seed: str = "0") -> list[str]:
    """Generates all packages into a folder and returns what went wrong.

    The seed sets the order in which Python walks its sets.
    """
    findings = []
    for model in files(project):
        stamp = out.parent / f"{out.name}-{model.stem}.stamp"
        good, text = generate(
            project,
            *("write", model, "--out", out, "--stamp", stamp),
            env={"PYTHONHASHSEED": seed},
        )
        if not good:
            findings.append(text)
    return findings


def _find(project: Project) -> list[str]:
    results = [generate(project, "check", path) for path in files(project)]
    return [text for good, text in results if not good]


CHECK = Check(
    name="metamodel",
    meaning="the metamodel files have no faults",
    fix="mend the named place in metamodel/",
    find=_find,
)
