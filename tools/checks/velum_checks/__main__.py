"""Runs the checks: all of them, or those named on the command line."""

from __future__ import annotations

import argparse
import json
import pathlib
import sys
import time

from . import (
    cost,
    formatting,
    generatedcode,
    generator,
    handles,
    headers,
    metamodel,
    paths,
    places,
    rooms,
    sizes,
    sources,
    symbols,
    tidy,
    words,
)
from .check import Check
from .project import CommandFailed, Project

CHECKS = (
    formatting.CHECK,
    words.CHECK,
    sizes.CHECK,
    metamodel.CHECK,
    generator.CHECK,
    generatedcode.CHECK,
    rooms.CHECK,
    headers.CHECK,
    handles.CHECK,
    places.CHECK,
    symbols.CHECK,
    paths.CHECK,
    sources.CHECK,
    cost.CHECK,
    tidy.CHECK,
)


class Times:
    """What each check took when it last ran, kept beside what the checks remember."""

    def __init__(self, project: Project) -> None:
        self._file = project.root / "build" / "check" / "times.json"
        try:
            self._seconds: dict[str, float] = json.loads(self._file.read_text())
        except (OSError, ValueError):
            self._seconds = {}

    def of(self, check: Check) -> str:
        seconds = self._seconds.get(check.name)
        return "-" if seconds is None else f"{seconds:.1f} s"

    def keep(self, check: Check, seconds: float) -> None:
        self._seconds[check.name] = seconds
        self._file.parent.mkdir(parents=True, exist_ok=True)
        self._file.write_text(json.dumps(self._seconds, indent=2, sort_keys=True))


def _report(project: Project, check: Check, times: Times) -> bool:
    started = time.monotonic()
    try:
        findings = check.find(project)
    except CommandFailed as failure:
        findings = [str(failure)]
    seconds = time.monotonic() - started
    times.keep(check, seconds)
    verdict = "FAILED" if findings else "ok"
    print(f"{check.name:10} {verdict:6} {seconds:6.1f} s  {check.meaning}", flush=True)
    for finding in findings:
        print("    " + finding.replace("\n", "\n    "))
    if findings:
        print(f"  repair: {check.fix}", flush=True)
    return not findings


def main(arguments: list[str]) -> int:
    parser = argparse.ArgumentParser(prog="./dev check", description=__doc__)
    parser.add_argument("names", nargs="*", metavar="CHECK", help="run only these")
    parser.add_argument("--list", action="store_true", help="name the checks with their last times")
    parser.add_argument("--repair", action="store_true", help="mend what the named checks find")
    options = parser.parse_args(arguments)

    known = {check.name: check for check in CHECKS}
    unknown = [name for name in options.names if name not in known]
    if unknown:
        parser.error(f"There is no check ({unknown[0]}); there are: {', '.join(known)}.")
    project = Project(pathlib.Path.cwd())
    times = Times(project)
    if options.list:
        for check in CHECKS:
            print(f"{check.name:10} {times.of(check):>8}  {check.meaning}")
        return 0

    chosen = [known[name] for name in options.names] or list(CHECKS)
    if options.repair:
        for check in chosen:
            if check.repair is None:
                parser.error(f"Check ({check.name}) cannot repair by itself: {check.fix}.")
            check.repair(project)
        return 0
    return 0 if all([_report(project, check, times) for check in chosen]) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
