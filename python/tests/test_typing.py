"""Annotations: mypy accepts what is right, refuses what is wrong, and they agree with the classes."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import metamodel
import velum
from velum import _names

PACKAGE = pathlib.Path(velum.__file__).resolve().parent
ALLOWED = pathlib.Path(__file__).with_name("stubtest_allowlist.txt")
CLASSES = metamodel.classes()


def run(*arguments):
    """What a tool of mypy prints; with its verdict."""
    ended = subprocess.run(
        [sys.executable, "-m", *arguments],
        env={**os.environ, "MYPYPATH": str(PACKAGE.parent)},
        capture_output=True,
        text=True,
        check=False,
    )
    return ended.returncode, ended.stdout + ended.stderr


def mypy(*files):
    cache = PACKAGE.parent / "mypy_cache"
    return run("mypy", "--strict", f"--cache-dir={cache}", *map(str, files))


def annotation(owner, prop):
    """What a reading gives, by the class: velum's own Integer isn't the kernel's."""
    doc = vars(getattr(velum, owner))[_names.python_name(prop.name, prop.is_many)].__doc__
    shown = doc.partition(": ")[2].partition(",")[0]
    return f"velum.List[{shown}]" if prop.is_many else f"{shown} | None"


def uses():
    """A program that reads and writes every property of every class, and one fault for each."""
    right, wrong = ["import velum", ""], ["import velum", ""]
    for of in CLASSES.values():
        for lines in (right, wrong):
            lines += [f"def use_{of.name}(x: velum.{of.name}, o: object) -> None:", "    pass"]
        for number, prop in enumerate(of.properties):
            name = _names.python_name(prop.name, prop.is_many)
            right.append(f"    v{number}: {annotation(of.name, prop)} = x.{name}")
            if not prop.is_read_only:
                right += [f"    if v{number} is not None:", f"        x.{name} = v{number}"]
            wrong.append(f"    x.{name} = o  # type: ignore[assignment]")
        if not of.is_abstract:
            right += [f"def make_{of.name}(m: velum.Model) -> velum.{of.name}:"]
            right += [f"    return velum.{of.name}(m)"]
            wrong += [f"velum.{of.name}(5)  # type: ignore[arg-type]"]
            wrong += [f"velum.{of.name}(velum.Model(), size=1)  # type: ignore[call-arg]"]
        else:
            wrong += [f"velum.{of.name}(velum.Model())  # type: ignore[arg-type]"]
    return "\n".join(right) + "\n", "\n".join(wrong) + "\n"


HABITS = """
import velum
model = velum.Model()
with model.transaction() as change:
    counter = velum.Integer(model, "counter", length="8|bit", is_signed=False)
    counter.length = "32|bit"
    counter.length = velum.DataSize(16, velum.DataSizeUnitKind.bit)
    del counter.min_value
    change.commit()
enumeration = velum.Enumeration(model, owned_literals=[velum.EnumerationLiteral(model, "low")])
first: velum.EnumerationLiteral = enumeration.owned_literals[0]
rest: list[velum.EnumerationLiteral] = enumeration.owned_literals[1:]
enumeration.owned_literals = rest
enumeration.owned_literals += [first]
found: list[velum.Unit] = model.objects(velum.Unit)
anything: list[velum.Object] = model.objects()
branch: velum.Branch = model.branch()
mine: velum.Integer = counter.in_branch(branch)
prop: velum.Property[velum.DataSize, velum.DataSize | str] = velum.Integer.length
read, report = velum.read(["a", "b"])
faults: list[velum.Finding] = report.faults
size: int | None = counter.length.value
"""


class Typing(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def check(self, *texts):
        files = [self.folder / f"program{i}.py" for i in range(len(texts))]
        for file, text in zip(files, texts, strict=True):
            file.write_text(text, encoding="utf-8")
        verdict, output = mypy(*files)
        self.assertEqual(verdict, 0, output)

    def test_every_property_has_its_type_and_no_other(self):
        # An ignored fault that is none is itself a fault in strict mode.
        self.check(*uses(), HABITS)

    def test_the_examples_and_the_package_are_strict(self):
        examples = metamodel.ROOT / "examples" / "python"
        verdict, output = mypy(PACKAGE / "reports.py", PACKAGE / "_names.py", *examples.glob("*.py"))
        self.assertEqual(verdict, 0, output)

    def test_the_annotations_agree_with_the_classes(self):
        verdict, output = run("mypy.stubtest", "velum", "--concise", "--allowlist", str(ALLOWED))
        self.assertEqual(verdict, 0, output)


if __name__ == "__main__":
    unittest.main()
