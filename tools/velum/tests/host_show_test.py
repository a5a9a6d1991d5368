"""Looks at what the program shows of documents that are made for it.

usage: host_show_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import sys
import unittest

from host import Folder, document, imported, named, package, properties, run, shown

BYTE = named("SW-BASE-TYPE", "b", "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
             "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")


def reference(tag, target):
    return f"<{tag}-REF>{target}</{tag}-REF>"


def implementation(name, content):
    return named("IMPLEMENTATION-DATA-TYPE", name, "<CATEGORY>VALUE</CATEGORY>" +
                 properties(reference("BASE-TYPE", "/P/b") + content))


def alias(name, target, content=""):
    return named("IMPLEMENTATION-DATA-TYPE", name, "<CATEGORY>TYPE_REFERENCE</CATEGORY>" +
                 properties(reference("IMPLEMENTATION-DATA-TYPE", target) + content))


def record(name, **members):
    return named("APPLICATION-RECORD-DATA-TYPE", name, "<CATEGORY>STRUCTURE</CATEGORY><ELEMENTS>" +
                 "".join(named("APPLICATION-RECORD-ELEMENT", member, reference("TYPE-T", target))
                         for member, target in members.items()) + "</ELEMENTS>").replace(
                             "TYPE-T-REF", "TYPE-TREF")


def constant(name, content):
    return named(
        "CONSTANT-SPECIFICATION", name, "<VALUE-SPEC><APPLICATION-VALUE-SPECIFICATION>"
        f"<CATEGORY>VAL_BLK</CATEGORY>{content}</APPLICATION-VALUE-SPECIFICATION></VALUE-SPEC>")


def method(name, category, scales=""):
    return named(
        "COMPU-METHOD", name, f"<CATEGORY>{category}</CATEGORY>{reference('UNIT', '/P/u')}"
        f"<COMPU-INTERNAL-TO-PHYS><COMPU-SCALES>{scales}</COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>")


def line(*numerators):
    numbers = "".join(f"<V>{number}</V>" for number in numerators)
    return (f"<COMPU-SCALE><COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR>{numbers}</COMPU-NUMERATOR>"
            "<COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR></COMPU-RATIONAL-COEFFS></COMPU-SCALE>")


def limits(lower, upper):
    return named("DATA-CONSTR", "c", "<DATA-CONSTR-RULES><DATA-CONSTR-RULE><INTERNAL-CONSTRS>"
                 f"<LOWER-LIMIT>{lower}</LOWER-LIMIT><UPPER-LIMIT>{upper}</UPPER-LIMIT>"
                 "</INTERNAL-CONSTRS></DATA-CONSTR-RULE></DATA-CONSTR-RULES>")


class NumbersAndUnitsTest(unittest.TestCase):
    def test_units_with_raised_and_lowered_parts(self):
        for written, expected in {
                "m/s<SUP>2</SUP>": "m/s\u00b2", "m<SUP>2</SUP>/s": "m\u00b2/s",
                "kg m<SUP>2</SUP>/s<SUP>2</SUP>": "kg m\u00b2/s\u00b2",
                "s<SUP>-10</SUP>": "s\u207b\u00b9\u2070", "v<SUB>0</SUB>": "v\u2080",
                "x<SUP>ab</SUP><SUB>i</SUB>": "x^ab_i", "m": "m"}.items():
            with self.subTest(written):
                unit = named("UNIT", "u", f"<DISPLAY-NAME>{written}</DISPLAY-NAME>")
                self.assertEqual(shown(unit, "/P/u"), [f"/P/u: unit {expected}"])

    def test_limits_where_the_unit_is_physical(self):
        unit = named("UNIT", "u", "<DISPLAY-NAME>V</DISPLAY-NAME>")
        byte = "/P/t: unsigned 8-bit integer"
        use = reference("DATA-CONSTR", "/P/c") + reference("COMPU-METHOD", "/P/m")
        for what, expected in {
                method("m", "LINEAR", line(-40, 0.5)): ", [-40, 60], unit V, internal [0, 200], by m",
                method("m", "LINEAR", line(0, -1)): ", [-200, 0], unit V, internal [0, 200], by m",
                method("m", "LINEAR", line(0, 1)): ", [0, 200], unit V, by m",
                method("m", "IDENTICAL"): ", [0, 200], unit V, by m",
                method("m", "RAT_FUNC", line(0, 1, 1)): ", unit V, internal [0, 200], by m",
                method("m", "LINEAR", line(-40, 0.5)).replace(reference("UNIT", "/P/u"), ""):
                    ", [0, 200], by m"}.items():
            with self.subTest(what):
                elements = BYTE + unit + limits(0, 200) + what + implementation("t", use)
                self.assertEqual(shown(elements, "/P/t"), [byte + expected])
        elements = BYTE + unit + limits(0, 200) + implementation(
            "t", reference("DATA-CONSTR", "/P/c") + reference("UNIT", "/P/u"))
        self.assertEqual(shown(elements, "/P/t"), [byte + ", [0, 200], unit V"])

    def test_bounds_of_64_bits_are_exact(self):
        for lower, upper in [
                ("0", "18446744073709551615"), ("-9223372036854775808", "9223372036854775807"),
                ("9007199254740993", "9223372036854775808"), ("0", "0xFFFFFFFFFFFFFFFF"),
                ("-1", "1")]:
            with self.subTest(upper):
                elements = BYTE + limits(lower, upper) + implementation(
                    "t", reference("DATA-CONSTR", "/P/c"))
                self.assertEqual(shown(elements, "/P/t"),
                                 [f"/P/t: unsigned 8-bit integer, [{lower}, {upper}]"])


class RelationsTest(unittest.TestCase):
    TEXTS = named("COMPU-METHOD", "m", "<CATEGORY>TEXTTABLE</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
                  "<COMPU-SCALES><COMPU-SCALE><LOWER-LIMIT>1</LOWER-LIMIT><UPPER-LIMIT>1</UPPER-LIMIT>"
                  "<COMPU-CONST><VT>one</VT></COMPU-CONST></COMPU-SCALE></COMPU-SCALES>"
                  "</COMPU-INTERNAL-TO-PHYS>")

    def test_what_a_type_refers_to_and_its_invalid_value(self):
        elements = BYTE + implementation(
            "t", "<INVALID-VALUE><NUMERICAL-VALUE-SPECIFICATION><VALUE>255</VALUE>"
            "</NUMERICAL-VALUE-SPECIFICATION></INVALID-VALUE>") + alias("a", "/P/t")
        self.assertEqual(
            shown(elements, "/P/t", with_relations=True)[:2],
            ["/P/t: unsigned 8-bit integer", "  invalid value 255"])
        self.assertEqual(shown(elements, "/P/a", with_relations=True)[:2],
                         ["/P/a: unsigned 8-bit integer", "  refers to /P/t"])

    def test_what_uses_an_object(self):
        elements = BYTE + implementation("t", "") + "".join(
            alias(f"a{i}", "/P/t") for i in range(7)) + record("r", x="/P/a1")
        used = "  used by "
        self.assertEqual(
            shown(elements, "/P/t", with_relations=True)[-1],
            used + ", ".join(f"/P/a{i}" for i in range(5)) + " and 2 more")
        self.assertEqual(
            shown(elements, "/P/a1", with_relations=True)[-1], used + "/P/r/x")
        self.assertNotIn(used, "".join(shown(elements, "/P/r", with_relations=True)))

    def test_literals_of_a_shared_enumeration_are_shown_once(self):
        elements = BYTE + self.TEXTS + implementation(
            "e", reference("COMPU-METHOD", "/P/m")) + record("r", a="/P/e", b="/P/e")
        kind = "e: unsigned 8-bit enumeration of 1, by m"
        self.assertEqual(shown(elements, "/P/r"), [
            "/P/r: structure", f"  a  {kind}", "    1 = one", f"  b  {kind}"])

    def test_a_type_that_is_not_there_is_named(self):
        elements = record("r", a="/X/none")
        self.assertEqual(
            shown(elements, "/P/r"), ["/P/r: structure", "  a  of an unknown type (/X/none)"])
        array = named("APPLICATION-ARRAY-DATA-TYPE", "f", "<CATEGORY>ARRAY</CATEGORY><ELEMENT>"
                      "<SHORT-NAME>x</SHORT-NAME><TYPE-TREF>/X/none</TYPE-TREF>"
                      "<MAX-NUMBER-OF-ELEMENTS>3</MAX-NUMBER-OF-ELEMENTS></ELEMENT>")
        self.assertEqual(
            shown(array, "/P/f"), ["/P/f: array [3] of an unknown type (/X/none)"])


class ShowTest(unittest.TestCase):
    def test_what_lies_below_a_path(self):
        elements = named("UNIT", "a") + named("UNIT", "ab") + BYTE + implementation(
            "t", "<SW-ALIGNMENT/>")
        everything = ["/P/a: unit a", "/P/ab: unit ab", "/P/b: base type of 1 type",
                      "/P/t: unsigned 8-bit integer"]
        self.assertEqual(shown(elements), everything)
        self.assertEqual(shown(elements, "/P"), everything)
        self.assertEqual(shown(elements, "/P/a"), ["/P/a: unit a"])
        for path in ("/p", "/P/A", "/P/a/b", "/Pa"):
            self.assertEqual(shown(elements, path), [])
        with Folder() as folder:
            folder.write("f.arxml", document(
                package("P", named("UNIT", "u")), package("PQ", named("UNIT", "v"))))
            self.assertEqual(folder.run("show", "f.arxml", "/P").stdout, b"/P/u: unit u\n")

    def test_a_file_counts_before_a_path(self):
        with Folder() as folder:
            folder.write("1.arxml", document(package("P", named("UNIT", "u"))))
            folder.write("2.arxml", document(package("P", named("UNIT", "v"))))
            first, second = (str(folder.path / name) for name in ("1.arxml", "2.arxml"))
            self.assertEqual(run("show", first, second).stdout, b"/P/u: unit u\n/P/v: unit v\n")
            self.assertEqual(run("show", first, second, "/P/v").stdout, b"/P/v: unit v\n")
            result = run("show", "/P/v")
            self.assertEqual((result.returncode, result.stdout), (1, b""))
            self.assertEqual(
                result.stderr,
                b"velum: /P/v: The file cannot be opened (No such file or directory).\n")

    def test_patterns_and_names(self):
        def folder_of(*names):
            return package("Q", "".join(named("UNIT", name) for name in names))
        with Folder() as folder:
            inner = named("AR-PACKAGE", "In", "<ELEMENTS>" + "".join(
                named("UNIT", name) for name in ("Speed", "Speed2")) + "</ELEMENTS>")
            folder.write("f.arxml", document(
                named("AR-PACKAGE", "App1", f"<AR-PACKAGES>{inner}</AR-PACKAGES>"),
                folder_of("Speed", "Torque")))
            for arguments, expected in [
                    (["/Q/"], ["/Q/Speed", "/Q/Torque"]), (["/Q//"], ["/Q/Speed", "/Q/Torque"]),
                    (["Speed"], ["/App1/In/Speed", "/Q/Speed"]), (["In/Speed"], ["/App1/In/Speed"]),
                    (["In/Speed/"], ["/App1/In/Speed"]), (["n/Speed"], []),
                    (["/App*/**/Speed*"], ["/App1/In/Speed", "/App1/In/Speed2"]),
                    (["/**/Speed"], ["/App1/In/Speed", "/Q/Speed"]),
                    (["/**/App1/**/**/Speed"], ["/App1/In/Speed"]),
                    (["/Q/**/Speed"], ["/Q/Speed"]), (["/*/Speed"], ["/Q/Speed"]),
                    (["Speed?"], ["/App1/In/Speed2"]),
                    (["/Q/Torque", "Speed2"], ["/Q/Torque", "/App1/In/Speed2"]),
                    (["/"], ["/App1/In/Speed", "/App1/In/Speed2", "/Q/Speed", "/Q/Torque"])]:
                with self.subTest(arguments):
                    result = folder.run("show", "f.arxml", *arguments)
                    self.assertEqual([line.split(":")[0] for line in
                                      result.stdout.decode().splitlines()], expected)
                    self.assertEqual(result.returncode, 0 if expected else 1)
            result = folder.run("show", "f.arxml", "/Q/Torque", "none")
            self.assertEqual((result.returncode, result.stdout, result.stderr), (
                1, b"/Q/Torque: unit Torque\n",
                b"velum: Nothing in the files has the path (none); \"velum find\" lists the paths.\n"))

    def test_faults_of_the_files_count(self):
        result = imported(named("UNIT", "u") + "<UNIT/>", "show")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (
            1, b"/P/u: unit u\n",
            b"velum: f.arxml:2:40: no-name: This UNIT has no SHORT-NAME. \"velum import\" lists all "
            b"that is wrong.\n"))

    def test_texts_of_files_stay_in_their_lines(self):
        text = "x&#10;/P/z: unit z&#9;y"
        elements = named("UNIT", "u", f"<DISPLAY-NAME>{text}</DISPLAY-NAME>") + named(
            "UNIT", f"v{text}") + constant("c", f"<SW-VALUE-CONT><SW-VALUES-PHYS><VT>{text}</VT>"
                                           "</SW-VALUES-PHYS></SW-VALUE-CONT>") + named(
            "CONSTANT-SPECIFICATION", "d", "<VALUE-SPEC><TEXT-VALUE-SPECIFICATION>"
            f"<VALUE>{text}</VALUE></TEXT-VALUE-SPECIFICATION></VALUE-SPEC>")
        said = r"x\x0A/P/z: unit z\x09y"
        self.assertEqual(shown(elements), [
            f"/P/c: constant {said}", f"/P/d: constant \"{said}\"", f"/P/u: unit {said}",
            f"/P/v{said}: unit v{said}"])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
