"""What an edit of a metamodel file rebuilds: what depends on it, and nothing else."""

import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
ZOO = ROOT / "generator" / "tests" / "zoo"


class Build:
    """A copy of the zoo's model and a build folder for it."""

    def __init__(self, folder, generator):
        self.folder = Path(folder)
        self.model = self.folder / "zoo.toml"
        self.build = self.folder / "build"
        for name in ("zoo.toml", "kernel.toml"):
            shutil.copy(ZOO / name, self.folder)
        settings = [f"-DVELUM_ROOT={ROOT}", f"-DVELUM_MODEL={self.model}"]
        self.run("cmake", "-S", ZOO, "-B", self.build, "-G", generator, *settings)

    def run(self, *command):
        return subprocess.run(
            [str(word) for word in command],
            check=True,
            encoding="utf-8",
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
        )

    def edit(self, old, new):
        text = self.model.read_text(encoding="utf-8")
        assert old in text, old
        self.model.write_text(text.replace(old, new), encoding="utf-8")

    def make(self):
        """Builds; returns the objects that were compiled, by the stem of their source."""
        before = self._objects()
        self.run("cmake", "--build", self.build, "--parallel", "2")
        after = self._objects()
        return sorted(path.name.split(".")[0] for path in after if after[path] != before.get(path))

    def _objects(self):
        return {p: p.stat().st_mtime_ns for p in self.build.rglob("*.cpp.o")}

    def generated(self):
        folder = self.build / "generated"
        return {p: p.stat().st_mtime_ns for p in folder.rglob("*") if p.is_file()}


class Rebuild(unittest.TestCase):
    def build_with(self, generator):
        program = "ninja" if generator == "Ninja" else "make"
        if shutil.which(program) is None:
            self.skipTest(f"{program} is not installed")
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        return Build(folder.name, generator)

    def check_edits(self, generator):
        build = self.build_with(generator)
        everything = build.make()
        self.assertEqual(
            everything,
            [
                "parkzooanimal",
                "parkzooanimalintf",
                "parkzooanimalmetaregistry",
                "parkzoobird",
                "parkzoobirdimpl",
                "parkzoobirdintf",
                "parkzoobirdmetaregistry",
                "parkzoointrospection",
                "parkzoonames",
            ],
        )
        self.assertEqual(build.make(), [])

        before = build.generated()
        build.edit("# Small invented", "# Small, invented")
        self.assertEqual(build.make(), [], "a comment changes nothing")
        self.assertEqual(build.generated(), before, "files with the same text keep their time")

        build.edit('default = "2"', 'default = "4"')
        self.assertEqual(
            build.make(),
            [
                "parkzoobird",
                "parkzoobirdimpl",
                "parkzoobirdintf",
                "parkzoobirdmetaregistry",
                "parkzoonames",
            ],
            "state and table of one class, and what includes its handle, which reports the default",
        )
        return build

    def test_ninja_rebuilds_what_depends_on_an_edit(self):
        build = self.check_edits("Ninja")

        # A faulty model stops the build and changes nothing; a right one goes on where it was.
        before = build.generated()
        build.edit('default = "4"', 'default = "four"')
        with self.assertRaises(subprocess.CalledProcessError) as caught:
            build.make()
        self.assertIn(
            f'{build.model}: error: Bird.Wings: Default ("four") is no QOB.Integer: expected is a '
            "whole number of 32 bits.",
            caught.exception.stdout,
        )
        self.assertEqual(build.generated(), before)
        build.edit('default = "four"', 'default = "4"')
        self.assertEqual(build.make(), [])

        # What is no longer made does not stay behind.
        text = build.model.read_text(encoding="utf-8")
        without_bird = text[: text.index('[[class]]\nname = "Bird"')]
        build.model.write_text(without_bird, encoding="utf-8")
        build.make()
        self.assertEqual([p.name for p in build.generated() if "bird" in p.name], [])

    def test_make_rebuilds_what_depends_on_an_edit(self):
        self.check_edits("Unix Makefiles")


