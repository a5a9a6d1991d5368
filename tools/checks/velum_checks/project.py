"""The checked repository: its files, its builds and the commands that look at them."""

from __future__ import annotations

import functools
import os
import pathlib
import re
import subprocess

_NO_PRODUCT = re.compile(r"(?:.*/)?tests/|bench/|examples/|fuzz/")


def is_product(name: str) -> bool:
    """Whether the file of that name in the repository is a part of what users get."""
    return _NO_PRODUCT.match(name) is None


class CommandFailed(Exception):
    """A command that a check depends on ended with an error; the text is what it printed."""


class Project:
    """A repository at `root` whose builds stand in `root`/build."""

    def __init__(self, root: pathlib.Path) -> None:
        self.root = root.resolve()
        self.jobs = int(os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL") or os.cpu_count() or 1)

    def run(self, *command: str | os.PathLike[str], env: dict[str, str] | None = None) -> str:
        """The standard output of a command that must succeed."""
        result = self.attempt(*command, env=env)
        if result.returncode != 0:
            raise CommandFailed(
                f"{' '.join(str(word) for word in command)}\n{result.stdout}{result.stderr}"
            )
        return result.stdout

    def attempt(
        self, *command: str | os.PathLike[str], env: dict[str, str] | None = None
    ) -> subprocess.CompletedProcess[str]:
        """The result of a command that may fail."""
        return subprocess.run(
            [str(word) for word in command],
            cwd=self.root,
            env={**os.environ, **(env or {})},
            capture_output=True,
            text=True,
            errors="replace",
            check=False,
        )

    def tracked(self, *patterns: str) -> list[pathlib.Path]:
        """The files under version control that match one of the patterns, in order."""
        names = self.run("git", "ls-files", "-z", "--", *patterns).split("\0")
        paths = (self.root / name for name in sorted(names) if name)
        return [path for path in paths if path.is_file()]

    def sources(self) -> list[pathlib.Path]:
        """All hand-written C++."""
        return self.tracked("*.h", "*.cpp")

    def relative(self, path: pathlib.Path) -> str:
        return path.relative_to(self.root).as_posix()

    def build_dir(self, preset: str) -> pathlib.Path:
        return self.root / "build" / preset

    @functools.cache
    def build(self, preset: str, *targets: str) -> pathlib.Path:
        """Brings the build of a preset up to date and returns its folder."""
        self.run("cmake", "--preset", preset)
        self.run("cmake", "--build", "--preset", preset, *(["--target", *targets] if targets else []))
        return self.build_dir(preset)

    @functools.cache
    def installed(self) -> pathlib.Path:
        """A fresh installation of the release build, as a user would have it."""
        build = self.build("release", "qob_store", "velum_types", "velum")
        prefix = self.root / "build" / "check" / "prefix"
        self.run("cmake", "-E", "rm", "-rf", prefix)
        self.run("cmake", "--install", build, "--prefix", prefix)
        return prefix
