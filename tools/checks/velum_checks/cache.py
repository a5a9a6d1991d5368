"""Remembers which files passed a slow tool, so that a second run only looks at what changed."""

from __future__ import annotations

import concurrent.futures
import dataclasses
import hashlib
import json
import pathlib
from collections.abc import Iterable

from .project import Project


# Makes a compiler print the headers that it reads beside what it does.
PRINT_HEADERS = ("-MMD", "-MF", "-")


@dataclasses.dataclass(frozen=True)
class Task:
    """One run of a tool over one translation unit.

    `command` is the tool with its arguments. `dependencies` is a compiler call that prints, as a
    make rule, the headers that the unit reads; without one, the tool itself prints that, as
    compilers do with PRINT_HEADERS. A run passes if the tool ends with 0.
    """

    name: str
    command: tuple[str, ...]
    dependencies: tuple[str, ...] | None
    directory: pathlib.Path


class Cache:
    """Passed runs, one small file each, keyed by the task and the contents it depends on.

    The headers of a unit are those it read when it last passed: a unit that passes today can only
    start to read another header if one of the files that it reads now changes.
    """

    def __init__(self, project: Project, kind: str, extra_inputs: Iterable[pathlib.Path]) -> None:
        self._project = project
        self.folder = project.root / "build" / "check" / kind
        self.folder.mkdir(parents=True, exist_ok=True)
        self._digests: dict[str, str] = {}
        self._extra = [self._digest(str(path)) for path in extra_inputs]

    def failures(self, tasks: Iterable[Task]) -> list[str]:
        """What the tool said about each task that does not pass, in the order of the tasks."""
        with concurrent.futures.ThreadPoolExecutor(self._project.jobs) as pool:
            return [text for text in pool.map(self._run, tasks) if text]

    def _digest(self, name: str) -> str:
        """The digest of a file as it was when this cache first met it."""
        if name not in self._digests:
            try:
                content = pathlib.Path(name).read_bytes()
            except OSError:
                return "missing"
            self._digests[name] = hashlib.sha256(content).hexdigest()
        return self._digests[name]

    def _record(self, task: Task) -> pathlib.Path:
        return self.folder / hashlib.sha256(task.name.encode()).hexdigest()[:24]

    def _fingerprint(self, task: Task, files: Iterable[str]) -> str:
        parts = [*self._extra, *task.command]
        parts += [self._digest(name) for name in files]
        return hashlib.sha256("\0".join(parts).encode()).hexdigest()

    def _run(self, task: Task) -> str:
        record = self._record(task)
        if record.is_file():
            known = json.loads(record.read_text())
            if known["fingerprint"] == self._fingerprint(task, known["files"]):
                return ""
        result = self._project.attempt(*task.command)
        if result.returncode != 0:
            record.unlink(missing_ok=True)
            said = result.stdout if task.dependencies else ""
            return f"{task.name}\n{said}{result.stderr}".rstrip()
        files = self._files(task, result.stdout)
        fingerprint = self._fingerprint(task, files)
        record.write_text(json.dumps({"fingerprint": fingerprint, "files": files}))
        return ""

    def _files(self, task: Task, printed: str) -> list[str]:
        rule = self._project.run(*task.dependencies) if task.dependencies else printed
        names = rule.replace("\\\n", " ").partition(":")[2].split()
        return sorted(str((task.directory / name).resolve()) for name in names)
