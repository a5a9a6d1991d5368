"""A small repository of its own for each test of a check."""

from __future__ import annotations

import pathlib
import tempfile
import unittest

from velum_checks.project import Project


class InstalledProject(Project):
    """A project whose installation a test lays out by hand."""

    def installed(self) -> pathlib.Path:
        return self.root / "build" / "prefix"


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

    def library(self, name: str, text: str, *flags: str) -> pathlib.Path:
        """Compiles a shared library into the installation."""
        source = self.write(f"build/{name}.cpp", text)
        path = self.project.installed() / "lib" / f"lib{name}.so"
        path.parent.mkdir(parents=True, exist_ok=True)
        self.project.run("g++", "-shared", "-fPIC", *flags, source, "-o", path)
        return path
