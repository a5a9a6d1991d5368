"""A small repository of its own for each test of a check."""

from __future__ import annotations

import json
import pathlib
import tempfile
import unittest

from velum_checks.project import Project


class InstalledProject(Project):
    """A project whose installation a test lays out by hand."""

    def installed(self) -> pathlib.Path:
        return self.root / "build" / "prefix"


class BuiltProject(InstalledProject):
    """A project whose compile database a test writes by hand."""

    def build(self, preset: str, *targets: str) -> pathlib.Path:
        return self.root / "build"


class Sandbox(unittest.TestCase):
    """Gives each test an empty repository in `self.project`."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.project = InstalledProject(pathlib.Path(folder.name))
        self.project.run("git", "init", "-q")
        self.write(".gitignore", "/build/\n")
        self.commit("Start")

    def write(self, name: str, text: str) -> pathlib.Path:
        """Writes a file and puts it under version control unless it stands in the build."""
        path = self.project.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        if not name.startswith("build/"):
            self.project.run("git", "add", name)
        return path

    def commit(self, message: str) -> None:
        identity = ("-c", "user.name=Tester", "-c", "user.email=tester@example.com")
        self.project.run("git", *identity, "commit", "-q", "--allow-empty", "-m", message)

    def compile(self, *names: str) -> None:
        """Says in the build's database that clang++ compiles these files."""
        root = self.project.root
        entries = [
            {
                "directory": str(root / "build"),
                "file": str(root / name),
                "command": f"/usr/bin/cmake -E env A=b ccache /usr/bin/clang++ -std=c++20 -I{root}"
                f" -o unit.o -c {root / name}",
            }
            for name in names
        ]
        self.write("build/compile_commands.json", json.dumps(entries))

    def library(self, name: str, text: str, *flags: str) -> pathlib.Path:
        """Compiles a shared library into the installation."""
        source = self.write(f"build/{name}.cpp", text)
        path = self.project.installed() / "lib" / f"lib{name}.so"
        path.parent.mkdir(parents=True, exist_ok=True)
        self.project.run("g++", "-shared", "-fPIC", *flags, source, "-o", path)
        return path
