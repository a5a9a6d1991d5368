"""Tests what `velum merge` makes of two sides of one release.

usage: host_merge_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import json
import sys
import unittest

from host import SAMPLES, Folder, document, named, package, properties


def structure(name, *members):
    return named("IMPLEMENTATION-DATA-TYPE", name,
                 f"<CATEGORY>STRUCTURE</CATEGORY><SUB-ELEMENTS>{''.join(members)}</SUB-ELEMENTS>")


def member(name, content=None):
    return named("IMPLEMENTATION-DATA-TYPE-ELEMENT", name, content or (
        "<CATEGORY>TYPE_REFERENCE</CATEGORY>"
        + properties("<IMPLEMENTATION-DATA-TYPE-REF>/P/byte</IMPLEMENTATION-DATA-TYPE-REF>")))


def unit(name, symbol, factor=1):
    return named("UNIT", name, f"<DISPLAY-NAME>{symbol}</DISPLAY-NAME>"
                               f"<FACTOR-SI-TO-UNIT>{factor}</FACTOR-SI-TO-UNIT>")


def method(name, unit_name, form="%5.1f"):
    return named("COMPU-METHOD", name, f"<CATEGORY>IDENTICAL</CATEGORY><DISPLAY-FORMAT>{form}"
                 f"</DISPLAY-FORMAT><UNIT-REF DEST=\"UNIT\">/P/{unit_name}</UNIT-REF>")


def byte(encoding="NONE"):
    return (named("SW-BASE-TYPE", "u8", f"<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
                                        f"<BASE-TYPE-ENCODING>{encoding}</BASE-TYPE-ENCODING>")
            + named("IMPLEMENTATION-DATA-TYPE", "byte", "<CATEGORY>VALUE</CATEGORY>"
                    + properties("<BASE-TYPE-REF>/P/u8</BASE-TYPE-REF>")))


class Release(Folder):
    """Three releases of a package, and what becomes of them."""

    def __init__(self, base, ours, theirs):
        self.sides = {"base": base, "ours": ours, "theirs": theirs}

    def merge(self, *options):
        for name, elements in self.sides.items():
            self.write(f"{name}.arxml", document(package("P", elements)))
        return self.run("merge", *options, "base.arxml", "ours.arxml", "theirs.arxml",
                        "-o", "out.arxml")

    def expect(self, elements):
        """What is written has the same objects."""
        self.write("expected.arxml", document(package("P", elements)))
        result = self.run("diff", "expected.arxml", "out.arxml")
        assert result.returncode == 0, result.stdout.decode()


def report(result):
    return json.loads(result.stdout)


# Each: the kind of conflict; base, ours, theirs; what ours, what theirs makes of it; the conflict's
# path, property and three values.
CONFLICTS = [
    ("value", unit("a", "x"), unit("a", "y"), unit("a", "z"), unit("a", "y"), unit("a", "z"),
     ("/P/a", "Symbol", '"x"', '"y"', '"z"')),
    ("removed", unit("a", "x") + unit("b", "b"), unit("b", "b"), unit("a", "z") + unit("b", "b"),
     unit("b", "b"), unit("a", "z") + unit("b", "b"),
     ("/P/a", "", 'Unit, ConvFactor: 1, ConvOffset: 0, Symbol: "x"', "nothing", "changed: Symbol")),
    ("removed", unit("a", "x") + unit("b", "b"), unit("a", "z") + unit("b", "b"), unit("b", "b"),
     unit("a", "z") + unit("b", "b"), unit("b", "b"),
     ("/P/a", "", 'Unit, ConvFactor: 1, ConvOffset: 0, Symbol: "x"', "changed: Symbol", "nothing")),
    ("removed", unit("a", "x") + method("m", "b") + unit("b", "b"),
     unit("a", "x") + method("m", "a") + unit("b", "b"), method("m", "b") + unit("b", "b"),
     unit("a", "x") + method("m", "a") + unit("b", "b"),
     method("m", "b").replace('<UNIT-REF DEST="UNIT">/P/b</UNIT-REF>', "") + unit("b", "b"),
     ("/P/a", "", 'Unit, ConvFactor: 1, ConvOffset: 0, Symbol: "x"', "used by /P/m", "nothing")),
    ("added", unit("b", "b"), unit("a", "y") + unit("b", "b"), unit("a", "z") + unit("b", "b"),
     unit("a", "y") + unit("b", "b"), unit("a", "z") + unit("b", "b"),
     ("/P/a", "", "nothing", 'Unit, ConvFactor: 1, ConvOffset: 0, Symbol: "y"',
      'Unit, ConvFactor: 1, ConvOffset: 0, Symbol: "z"')),
    ("renamed", unit("a", "x") + method("m", "a"), unit("b", "x") + method("m", "b"),
     unit("c", "x") + method("m", "c"), unit("b", "x") + method("m", "b"),
     unit("c", "x") + method("m", "c"), ("/P/a", "Name", "/P/a", "/P/b", "/P/c")),
    ("order", byte() + structure("s", member("a")),
     byte() + structure("s", member("a"), member("b")),
     byte() + structure("s", member("a"), member("c")),
     byte() + structure("s", member("a"), member("b"), member("c")),
     byte() + structure("s", member("a"), member("c"), member("b")),
     ("/P/s", "Elements", "a", "a, b", "a, c")),
    ("removed", byte() + structure("s", member("a"), member("b", "<CATEGORY>VALUE</CATEGORY>"
                                   + properties("<BASE-TYPE-REF>/P/u8</BASE-TYPE-REF>"))),
     byte() + structure("s", member("a")),
     byte() + structure("s", member("a"), member("b")),
     byte() + structure("s", member("a")),
     byte() + structure("s", member("a"), member("b")),
     ("/P/s#Elements/b", "", "StructElement, InlineType: Integer", "nothing",
      "changed: Type, InlineType")),
]


class MergeTest(unittest.TestCase):
    def test_each_conflict_is_listed_and_can_be_decided(self):
        for kind, base, ours, theirs, as_ours, as_theirs, listed in CONFLICTS:
            with self.subTest(kind, listed=listed), Release(base, ours, theirs) as release:
                release.write("out.arxml", "before")
                open_one = release.merge("--json")
                self.assertEqual(open_one.returncode, 1)
                self.assertFalse(report(open_one)["merged"])
                self.assertEqual(
                    [tuple(each.values()) for each in report(open_one)["conflicts"]],
                    [(listed[0], listed[1], kind, *listed[2:], "")])
                self.assertEqual((release.path / "out.arxml").read_text(), "before")
                for side, expected in (("ours", as_ours), ("theirs", as_theirs)):
                    decided = release.merge(f"--{side}", kind, "--json")
                    self.assertEqual(decided.returncode, 0, decided.stdout)
                    self.assertEqual([each["taken"] for each in report(decided)["conflicts"]],
                                     [side])
                    release.expect(expected)
                other = "value" if kind != "value" else "order"
                self.assertEqual(release.merge("--ours", other).returncode, 1)
                self.assertEqual(release.merge("--theirs", "all", "--ours", kind).returncode, 0)
                release.expect(as_ours)

    def test_a_class_that_one_side_changed(self):
        """The encoding makes it another class; the other side's limit has no place there."""
        base = byte() + structure("s", member("a"))
        with Release(base, byte("2C") + structure("s", member("a")),
                     byte("BOOLEAN") + structure("s", member("a"))) as release:
            result = release.merge("--json")
            self.assertEqual([(each["kind"], each["path"])
                              for each in report(result)["conflicts"]], [("class", "/P/byte")])
            self.assertEqual(release.merge("--theirs", "class").returncode, 0)
            release.expect(byte("BOOLEAN") + structure("s", member("a")))
        with Release(base, base + unit("a", "x"),
                     byte("BOOLEAN") + structure("s", member("a"))) as release:
            self.assertEqual(release.merge().returncode, 0)
            release.expect(byte("BOOLEAN") + structure("s", member("a")) + unit("a", "x"))

    def test_changes_of_both_sides_come_together(self):
        """Also a reference of one side to what the other one renamed."""
        base = unit("a", "x") + byte() + structure("s", member("a"), member("b"))
        ours = base + method("m", "a") + method("n", "a", "%d")
        theirs = unit("c", "x") + byte() + structure("s", member("b"), member("a"), member("z"))
        with Release(base, ours, theirs) as release:
            result = release.merge()
            self.assertEqual((result.returncode, result.stderr), (0, b""), result.stdout)
            self.assertEqual(result.stdout, b"2 changes of theirs merged.\n")
            release.expect(theirs + method("m", "c") + method("n", "c", "%d"))
            self.assertEqual(release.merge("--ours", "all").stdout, result.stdout)

    def test_what_is_written_into_a_folder_that_is_read_is_left_out(self):
        """The second time there is a file that the first one wrote."""
        with Folder() as folder:
            for side, symbol in (("base", "m"), ("ours", "m"), ("theirs", "cm")):
                (folder.path / side).mkdir()
                folder.write(f"{side}/a.arxml", document(package("P", unit("length", symbol))))
            for output in (["-o", "ours/out.arxml"], ["-o", "theirs/out", "--layout", "packages"]):
                for _ in range(2):
                    result = folder.run("merge", "base", "ours", "theirs", *output)
                    self.assertEqual((result.returncode, result.stderr), (0, b""))
                    self.assertEqual(result.stdout, b"1 change of theirs merged.\n")
                (folder.path / "ours/out.arxml").unlink(missing_ok=True)
            arguments = ["export", "--format", "arxml", "base", "-o", "base/out.arxml"]
            for _ in range(2):
                self.assertEqual(folder.run(*arguments).stderr, b"")

    def test_the_same_on_both_sides_is_no_conflict(self):
        both = unit("a", "z", 2) + byte("2C") + structure("s", member("b"), member("a"))
        with Release(unit("a", "x") + byte() + structure("s", member("a"), member("b")),
                     both, both) as release:
            result = release.merge()
            self.assertEqual((result.returncode, result.stdout),
                             (0, b"0 changes of theirs merged.\n"))
            release.expect(both)

    def test_releases_that_are_far_apart(self):
        """Whatever is decided, what is written has no other object than the three."""
        files = [SAMPLES / "gearbox.arxml", SAMPLES / "next" / "gearbox.arxml"]
        with Folder() as folder:
            for ours, theirs in (files, reversed(files)):
                for side in ("ours", "theirs"):
                    result = folder.run("merge", f"--{side}", "all", SAMPLES / "gearbox.arxml",
                                        ours, theirs, "-o", "out.arxml")
                    self.assertEqual(result.returncode, 0, result.stdout)
                    self.assertEqual(
                        folder.run("diff", "--summary", files[1], "out.arxml").returncode, 0)

    def test_exit_codes(self):
        platform = SAMPLES / "platform.arxml"
        with Folder() as folder:
            for arguments, code in [
                    ((platform, platform), 2),
                    ((platform, platform, "missing.arxml", "-o", "o"), 3),
                    ((platform, platform, platform, "-o", "missing/out.arxml"), 3),
                    ((platform, platform, platform), 2),
                    (("-", "-", platform, "-o", "o"), 2),
                    (("--ours", "colour", platform, platform, platform, "-o", "o"), 2),
                    (("--ours", "all", "--theirs", "all", platform, platform, platform, "-o", "o"),
                     2),
                    ((platform, platform, platform, "-o", "o"), 0)]:
                result = folder.run("merge", *arguments)
                self.assertEqual(result.returncode, code, arguments)
                self.assertTrue(result.stderr or code == 0, arguments)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
