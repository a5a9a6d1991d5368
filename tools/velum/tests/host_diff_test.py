"""Compares two releases: documents that differ in one thing each, the samples, and whole folders.

usage: host_diff_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import json
import sys
import unittest

from host import SAMPLES, Folder, document, named, package, properties, run

BYTE = named("SW-BASE-TYPE", "b", "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
             "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")
WORD = BYTE.replace(">b<", ">w<").replace(">8<", ">16<")


def integer(name, content="<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>"):
    return named("IMPLEMENTATION-DATA-TYPE", name, "<CATEGORY>VALUE</CATEGORY>" + properties(content))


def alias(tag, name, target):
    return named(tag, name, "<CATEGORY>TYPE_REFERENCE</CATEGORY>" + properties(
        f"<IMPLEMENTATION-DATA-TYPE-REF>{target}</IMPLEMENTATION-DATA-TYPE-REF>"))


def structure(name, **members):
    elements = "".join(
        alias("IMPLEMENTATION-DATA-TYPE-ELEMENT", member, target)
        for member, target in members.items())
    return named("IMPLEMENTATION-DATA-TYPE", name,
                 f"<CATEGORY>STRUCTURE</CATEGORY><SUB-ELEMENTS>{elements}</SUB-ELEMENTS>")


def texts(**literals):
    scales = "".join(
        f"<COMPU-SCALE><LOWER-LIMIT>{value}</LOWER-LIMIT><UPPER-LIMIT>{value}</UPPER-LIMIT>"
        f"<COMPU-CONST><VT>{text}</VT></COMPU-CONST></COMPU-SCALE>"
        for text, value in literals.items())
    return named("COMPU-METHOD", "m", "<CATEGORY>TEXTTABLE</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
                 f"<COMPU-SCALES>{scales}</COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>")


def enumeration(**literals):
    return texts(**literals) + integer(
        "e", "<BASE-TYPE-REF>/P/b</BASE-TYPE-REF><COMPU-METHOD-REF>/P/m</COMPU-METHOD-REF>")


def values(*numbers):
    cells = "".join(f"<V>{number}</V>" for number in numbers)
    return named(
        "CONSTANT-SPECIFICATION", "c", "<VALUE-SPEC><APPLICATION-VALUE-SPECIFICATION>"
        f"<CATEGORY>VAL_BLK</CATEGORY><SW-VALUE-CONT><SW-VALUES-PHYS>{cells}</SW-VALUES-PHYS>"
        "</SW-VALUE-CONT></APPLICATION-VALUE-SPECIFICATION></VALUE-SPEC>")


def array(*numbers):
    elements = "".join(
        "<NUMERICAL-VALUE-SPECIFICATION>"
        f"<VALUE>{number}</VALUE></NUMERICAL-VALUE-SPECIFICATION>" for number in numbers)
    return named("CONSTANT-SPECIFICATION", "c", "<VALUE-SPEC><ARRAY-VALUE-SPECIFICATION><ELEMENTS>"
                 f"{elements}</ELEMENTS></ARRAY-VALUE-SPECIFICATION></VALUE-SPEC>")


def compared(old, new, *options, before="P", after="P"):
    """The result of comparing two documents with a package each."""
    with Folder() as folder:
        folder.write("old.arxml", document(package(before, old)))
        folder.write("new.arxml", document(package(after, new)))
        return folder.run("diff", *options, "old.arxml", "new.arxml")


def block(name, unit):
    """An array whose values have a type without a name or path."""
    return named("UNIT", unit) * (name == "a") + named(
        "APPLICATION-PRIMITIVE-DATA-TYPE", name, "<CATEGORY>VAL_BLK</CATEGORY>" + properties(
            f"<SW-VALUE-BLOCK-SIZE>4</SW-VALUE-BLOCK-SIZE><UNIT-REF>/P/{unit}</UNIT-REF>"))


class DiffTest(unittest.TestCase):
    def diff(self, old, new, *options, **packages):
        result = compared(old, new, "--json", *options, **packages)
        self.assertEqual(result.stderr, b"")
        data = json.loads(result.stdout)
        numbers = data.pop("summary")
        self.assertEqual(numbers["added"], len(data["added"]))
        self.assertEqual(numbers["changed"], len({each["path"] for each in data["changed"]}))
        self.assertEqual(result.returncode, 1 if any(data.values()) else 0)
        return data

    def changes(self, old, new, *options):
        """What changed in one object, without its path; nothing else may differ."""
        data = self.diff(old, new, *options)
        changed = data.pop("changed")
        self.assertFalse(any(data.values()), data)
        return [(each["kind"], each["part"], each["property"], each["old"], each["new"])
                for each in changed]

    def test_nothing_differs_in_itself(self):
        everything = BYTE + integer("t") + structure("s", a="/P/t") + enumeration(x=1) + array(1, 2)
        self.assertEqual(self.changes(everything, everything), [])

    def test_added_and_removed(self):
        data = self.diff(BYTE + WORD + integer("t"),
                         BYTE + integer("t") + structure("s", a="/P/t", b="/P/t"))
        self.assertEqual(
            data, {"added": ["/P/s"], "removed": ["/P/w"], "renamed": [], "changed": []})

    def test_an_object_that_refers_to_a_changed_one_is_the_same(self):
        old = BYTE + integer("t") + structure("s", a="/P/t")
        changed = self.diff(old, old.replace(">8<", ">16<"))["changed"]
        self.assertEqual({(each["path"], each["property"]) for each in changed},
                         {("/P/t", "Length")})

    def test_members_by_name(self):
        types = BYTE + integer("t") + integer("u")
        def changes(*options, **members):
            return self.changes(types + structure("s", a="/P/t", b="/P/t"),
                                types + structure("s", **members), *options)
        self.assertEqual(changes(a="/P/t", b="/P/u"),
                         [("value", "Elements/b", "Type", "/P/t", "/P/u")])
        self.assertEqual(changes(b="/P/t", a="/P/t"),
                         [("order", "", "Elements", ["/P/s/a", "/P/s/b"], ["/P/s/b", "/P/s/a"])])
        ((kind, part, _, old, new),) = changes(a="/P/t")
        self.assertEqual((kind, part, new), ("removed", "Elements/b", None))
        self.assertEqual(old["properties"]["Type"], {"ref": "/P/t"})
        ((kind, part, _, old, new),) = changes(a="/P/t", x="/P/u", b="/P/t")
        self.assertEqual((kind, part, old), ("added", "Elements/x", None))
        self.assertEqual(new["class"], "StructElement")
        self.assertEqual(changes(a="/P/t", c="/P/t"),
                         [("renamed", "Elements/b", "Name", "b", "c")])
        kinds = [kind for kind, *_ in changes(a="/P/t", c="/P/u")]
        self.assertEqual(kinds, ["removed", "added"], "of another type it is another member")
        self.assertEqual(changes("--ignore", "Elements", b="/P/t", c="/P/u"), [])

    def test_literals_by_name(self):
        def changes(**literals):
            return self.changes(BYTE + enumeration(low=0, high=1), BYTE + enumeration(**literals))
        self.assertEqual(changes(low=0, high=2),
                         [("value", "OwnedLiteral/high", "Value", 1, 2)])
        self.assertEqual(changes(low=0, top=1),
                         [("renamed", "OwnedLiteral/high", "Name", "high", "top")])
        self.assertEqual([change[:2] for change in changes(low=0, high=1, more=2)],
                         [("added", "OwnedLiteral/more")])

    def test_values_and_cells_by_place(self):
        self.assertEqual(self.changes(values(1, 2, 3), values(1, 5, 3)),
                         [("value", "ConstantValue", "V[2]", "2", "5")])
        self.assertEqual([change[:3] for change in self.changes(values(1, 2), values(2, 1))],
                         [("value", "ConstantValue", "V[1]"), ("value", "ConstantValue", "V[2]")])
        self.assertIn(("value", "ConstantValue", "V", ["1"], ["1", "2"]),
                      self.changes(values(1), values(1, 2)))
        self.assertEqual(self.changes(array(1, 2, 3), array(1, 2, 4)),
                         [("value", "ConstantValue/ownedCell[3]/Value", "Value", 3.0, 4.0)])

    def test_another_class(self):
        data = self.diff(BYTE + integer("e") + texts(x=1), BYTE + enumeration(x=1))
        self.assertEqual([(each["property"], each["old"], each["new"]) for each in data["changed"]],
                         [("class", "Integer", "Enumeration")])

    def test_renamed_objects_hold_the_same(self):
        old = BYTE + integer("t") + alias("IMPLEMENTATION-DATA-TYPE", "r", "/P/t")
        new = (BYTE + integer("t2") + alias("IMPLEMENTATION-DATA-TYPE", "r2", "/P/t2"))
        self.assertEqual(self.diff(old, new)["renamed"],
                         [{"from": "/P/r", "to": "/P/r2"}, {"from": "/P/t", "to": "/P/t2"}])
        other = self.diff(BYTE + integer("t"), BYTE + WORD + integer(
            "t2", "<BASE-TYPE-REF>/P/w</BASE-TYPE-REF>"))
        self.assertEqual((other["renamed"], other["removed"]), ([], ["/P/t"]))
        two = self.diff(BYTE + integer("t"), BYTE + integer("t2") + integer("t3"))
        self.assertEqual((two["renamed"], two["added"]), ([], ["/P/t2", "/P/t3"]),
                         "which of the two can't be told")

    def test_types_without_a_name(self):
        old = named("UNIT", "v") + block("a", "u") + block("c", "u")
        more = self.diff(old, old + block("b", "v"))
        self.assertEqual(more, {"added": ["/P/b"], "removed": [], "renamed": [], "changed": []})
        less = self.diff(old + block("b", "v"), named("UNIT", "v") + block("a", "u") +
                         block("b", "v"))
        self.assertEqual(less, {"added": [], "removed": ["/P/c"], "renamed": [], "changed": []})
        (other,) = self.diff(old, old.replace("<UNIT-REF>/P/u", "<UNIT-REF>/P/v"), "--class",
                             "Matrix")["changed"][:1]
        self.assertEqual((other["path"], other["part"], other["property"], other["old"]),
                         ("/P/a", "BaseType", "Unit", "/P/u"))
        renamed = self.diff(old, old.replace(">c<", ">d<"))
        self.assertEqual(renamed["renamed"], [{"from": "/P/c", "to": "/P/d"}])
        self.assertFalse(renamed["changed"])

    def test_a_renamed_package(self):
        inside = BYTE + integer("t") + integer("u") + structure("s", a="/P/t", s="/P/s")
        data = self.diff(inside, inside.replace("/P/", "/Q/"), after="Q")
        self.assertEqual(data["renamed"],
                         [{"from": f"/P/{name}", "to": f"/Q/{name}"} for name in "bstu"])
        self.assertFalse(data["added"] or data["removed"] or data["changed"])

    def test_only_some_objects_and_properties(self):
        old = BYTE + integer("t") + texts(x=1)
        new = old.replace(">8<", ">16<").replace("TEXTTABLE", "IDENTICAL") + structure("s")
        def paths(*options):
            data = self.diff(old, new, *options)
            return data["added"] + [each["path"] for each in data["changed"]]
        self.assertEqual(paths(), ["/P/s", "/P/m", "/P/t"])
        self.assertEqual(paths("--class", "PrimitiveType"), ["/P/t"])
        self.assertEqual(paths("--class", "Structure"), ["/P/s"])
        self.assertEqual(paths("--ignore", "Length", "--ignore", "Category"), ["/P/s"])
        for arguments in (("--class", "Integr"), ("--ignore", "length"), ("--old", "old.arxml")):
            result = compared(old, new, *arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertEqual(result.stdout, b"")
        self.assertIn(b"Integer", compared(old, new, "--class", "Integr").stderr)


class CommandTest(unittest.TestCase):
    PLATFORM = SAMPLES / "platform.arxml"
    OLD = ("--old", PLATFORM, SAMPLES / "gearbox.arxml")
    NEW = ("--new", PLATFORM, SAMPLES / "next" / "gearbox.arxml")

    def test_the_samples(self):
        lines = run("diff", *self.OLD, *self.NEW).stdout.decode().splitlines()
        for line in [
                "  renamed  Slip -> /Gearbox/ApplicationTypes/ClutchSlip: FloatingPoint of the same "
                "content",
                "  added    OilLevel: FloatingPoint",
                "  removed  Angle: FloatingPoint",
                "    OwnedLiteral/Neutral: renamed, \"Neutral\" -> \"Idle\"",
                "    ConstantValue V[4]: \"2\" -> \"4\"",
                "    Elements: in another order, id, raw, inner, samples, table -> "
                "id, inner, raw, check, samples, table"]:
            self.assertIn(line, lines)
        summary = run("diff", "--summary", *self.OLD, *self.NEW).stdout.decode().splitlines()
        self.assertEqual(summary, lines[-1:])
        back = run("diff", "--json", "--old", *self.NEW[1:], "--new", *self.OLD[1:]).stdout
        there = run("diff", "--json", *self.OLD, *self.NEW).stdout
        self.assertEqual(json.loads(back)["removed"], json.loads(there)["added"])
        self.assertEqual(json.loads(back)["summary"]["changed"],
                         json.loads(there)["summary"]["changed"])

    def test_folders_are_releases(self):
        """The files of each are read together: references lead from one to another."""
        with Folder() as folder:
            for release, size in (("old", "8"), ("new", "16")):
                (folder.path / release).mkdir()
                folder.write(f"{release}/base.arxml", document(
                    package("B", BYTE.replace(">8<", f">{size}<"))))
                folder.write(f"{release}/types.arxml", document(
                    package("P", integer("t", "<BASE-TYPE-REF>/B/b</BASE-TYPE-REF>"))))
            result = folder.run("diff", "old", "new")
            self.assertEqual((result.returncode, result.stderr), (1, b""))
            self.assertEqual(result.stdout.decode().split("\n\n"), [
                "/P\n  changed  t\n    Length: 8|bit -> 16|bit",
                "0 added, 0 removed, 0 renamed, 1 changed (1 difference), 1 object the same.\n"])
            self.assertEqual(folder.run("diff", "old", "old").returncode, 0)
            (folder.path / "none").mkdir()
            empty = folder.run("diff", "old", "none")
            self.assertEqual((empty.returncode, empty.stdout), (3, b""))
            self.assertIn(b"velum: none: ", empty.stderr)

    def test_exit_codes(self):
        self.assertEqual(run("diff", *self.OLD, *self.NEW).returncode, 1)
        same = run("diff", self.PLATFORM, self.PLATFORM)
        self.assertEqual(same.returncode, 0)
        self.assertTrue(same.stdout.startswith(b"No difference in "), same.stdout)
        for arguments in ((), (self.PLATFORM,), (*self.OLD,), (self.PLATFORM, *self.NEW), ("-", "-"),
                          ("--old", self.PLATFORM, "-", "--new", "-")):
            self.assertEqual(run("diff", *arguments).returncode, 2, arguments)
        missing = run("diff", self.PLATFORM, "missing.arxml")
        self.assertEqual((missing.returncode, missing.stdout), (3, b""))
        self.assertIn(b"missing.arxml", missing.stderr)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
