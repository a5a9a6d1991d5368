"""The repository speaks for itself: it refers to no document that stands outside of it."""

from __future__ import annotations

import re

from .check import Check
from .project import Project

# Put together from pieces, so that this file does not contain what it looks for.
_DOCUMENT = "spec"
_NUMBERED = "Part"
PATTERN = re.compile(
    "|".join(
        [
            rf"\b{_DOCUMENT}\.md\b",
            rf"\bthe {_DOCUMENT}\b",
            rf"\b{_DOCUMENT}s\b",
            rf"\bthe {_DOCUMENT}ification\b",
            rf"\b{_DOCUMENT}ification document\b",
            rf"\b{_NUMBERED}s? [1-7]\.[0-9]\b",
            r"\bseed" + r" document",
            r"\brequirements?" + r" document",
        ]
    ),
    re.IGNORECASE,
)
# The metamodel's own documentation texts are data, and so is the page that is made of them.
_EXEMPT = (":!metamodel", ":!docs/metamodel.md")


def _in_files(project: Project) -> list[str]:
    findings = []
    for path in project.tracked(".", *_EXEMPT):
        if PATTERN.search(project.relative(path)):
            findings.append(f"{project.relative(path)}: the name of the file")
        try:
            text = path.read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue
        for number, line in enumerate(text.splitlines(), start=1):
            if PATTERN.search(line):
                findings.append(f"{project.relative(path)}:{number}: {line.strip()}")
    return findings


def _in_messages(project: Project) -> list[str]:
    findings = []
    log = project.run("git", "log", "--format=%h%x01%B%x00")
    for entry in log.split("\0"):
        commit, _, message = entry.strip().partition("\1")
        for line in message.splitlines():
            if PATTERN.search(line):
                findings.append(f"commit {commit}: {line.strip()}")
    return findings


def _find(project: Project) -> list[str]:
    return _in_files(project) + _in_messages(project)


CHECK = Check(
    name="words",
    meaning="no file and no commit message refers to a document outside of the repository",
    fix="reword the line; for a message: git commit --amend, or git rebase -i",
    find=_find,
)
