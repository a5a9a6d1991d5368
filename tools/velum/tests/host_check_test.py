"""Looks at what the program judges and shows of documents that are made for each rule.

usage: host_check_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import json
import sys
import unittest

from host import Folder, document, imported, named, package, properties, run, shown

BYTE = named("SW-BASE-TYPE", "b", "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
             "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")


def implementation(name, content):
    return named("IMPLEMENTATION-DATA-TYPE", name, "<CATEGORY>VALUE</CATEGORY>" +
                 properties("<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>" + content))


def method(name, category, scales="", direction="COMPU-INTERNAL-TO-PHYS"):
    return named(
        "COMPU-METHOD", name, f"<CATEGORY>{category}</CATEGORY><DISPLAY-FORMAT>%d</DISPLAY-FORMAT>"
        f"<{direction}><COMPU-SCALES>{scales}</COMPU-SCALES></{direction}>")


def constant(name, content, category="VAL_BLK"):
    return named(
        "CONSTANT-SPECIFICATION", name, "<VALUE-SPEC><APPLICATION-VALUE-SPECIFICATION>"
        f"<CATEGORY>{category}</CATEGORY>{content}</APPLICATION-VALUE-SPECIFICATION></VALUE-SPEC>")


def block(sizes, count, tag="SW-VALUE-CONT"):
    dimensions = "".join(f"<V>{size}</V>" for size in sizes)
    return (f"<{tag}><SW-ARRAYSIZE>{dimensions}</SW-ARRAYSIZE>"
            f"<SW-VALUES-PHYS>{'<V>1</V>' * count}</SW-VALUES-PHYS></{tag}>")


class CheckTest(unittest.TestCase):
    def issues(self, elements, code=0):
        """All but missing values, which have a test of their own."""
        result = imported(elements, "check", "--json")
        self.assertEqual((result.returncode, result.stderr), (code, b""))
        return [(issue["path"], issue["severity"], issue["rule"], issue["text"])
                for issue in json.loads(result.stdout)["issues"]
                if issue["rule"] != "mandatory-property"]

    def test_empty_ranges(self):
        above = "The minimum {} is above the maximum {}."
        itself = "The range from 5 to itself excludes it."
        for lower, upper, said in [
                ("5", "5", ""), ("5", "5.000001", ""), ("5.000001", "5", above.format(5.000001, 5)),
                ("5 OPEN", "5", itself), ("5", "5 OPEN", itself), ("5 OPEN", "5 OPEN", itself),
                ("4 OPEN", "5 OPEN", ""), ("5 INFINITE", "4", ""), ("5", "4 INFINITE", ""),
                ("INF", "-INF", ""), ("0", "-1", above.format(0, -1))]:
            with self.subTest(lower=lower, upper=upper):
                limits = "".join(
                    f'<{tag}-LIMIT INTERVAL-TYPE="{(limit + " CLOSED").split()[1]}">'
                    f"{limit.split()[0]}</{tag}-LIMIT>"
                    for tag, limit in {"LOWER": lower, "UPPER": upper}.items())
                elements = BYTE + named(
                    "DATA-CONSTR", "c", "<DATA-CONSTR-RULES><DATA-CONSTR-RULE><INTERNAL-CONSTRS>"
                    f"{limits}</INTERNAL-CONSTRS></DATA-CONSTR-RULE></DATA-CONSTR-RULES>"
                ) + implementation("t", "<DATA-CONSTR-REF>/P/c</DATA-CONSTR-REF>")
                self.assertEqual(
                    self.issues(elements, 1 if said else 0),
                    [("/P/t", "error", "empty-range", said)] if said else [])

    def test_shared_values(self):
        texts = {"a": 1, "b": 2, "c": 1, "d": 0, "e": 1, "f": -1}
        scales = "".join(
            f"<COMPU-SCALE><LOWER-LIMIT>{value}</LOWER-LIMIT><UPPER-LIMIT>{value}</UPPER-LIMIT>"
            f"<COMPU-CONST><VT>{text}</VT></COMPU-CONST></COMPU-SCALE>"
            for text, value in texts.items())
        elements = BYTE + method("m", "TEXTTABLE", scales) + "".join(
            implementation(name, "<COMPU-METHOD-REF>/P/m</COMPU-METHOD-REF>") for name in "tu")
        self.assertEqual(self.issues(elements), [
            (f"/P/{name}", "warning", "shared-value",
             f"The literals a and {other} share the value 1.") for name in "tu" for other in "ce"])

    def test_methods_without_coefficients(self):
        line = ("<COMPU-SCALE><COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR><V>0</V><V>2</V>"
                "</COMPU-NUMERATOR><COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR>"
                "</COMPU-RATIONAL-COEFFS></COMPU-SCALE>")
        for category, held in {
                "LINEAR": "Linear", "RAT_FUNC": "RatFunc",
                "SCALE_LINEAR_AND_TEXTTABLE": "LinearAndTextTable", "IDENTICAL": None,
                "TEXTTABLE": None}.items():
            with self.subTest(category):
                self.assertEqual(self.issues(method("m", category, line)), [])
                said = f"A method of category {held} has no coefficients."
                self.assertEqual(
                    self.issues(method("m", category)),
                    [("/P/m", "warning", "no-coefficients", said)] if held else [])

    def test_sizes_that_do_not_match(self):
        for sizes, count, expected in [
                ([3], 3, None), ([3], 2, 3), ([3], 4, 3), ([2, 3], 6, None), ([2, 3], 5, 6),
                ([0], 0, None), ([0], 1, 0), ([2, 0], 1, 0), ([1], 0, 1)]:
            with self.subTest(sizes=sizes, count=count):
                said = f"The dimensions tell {expected} values, there are {count}."
                self.assertEqual(
                    self.issues(constant("c", block(sizes, count))),
                    [] if expected is None else [("/P/c", "warning", "size-mismatch", said)])
        # A size that is unknown tells nothing, nor do contents that are not there.
        self.assertEqual(self.issues(constant("c", "")), [])
        result = imported(constant("c", block([2, "x"], 3)), "check")
        self.assertNotIn(b"size-mismatch", result.stdout)
        axes = "<SW-AXIS-CONTS>" + block([2], 3, "SW-AXIS-CONT") + "</SW-AXIS-CONTS>"
        self.assertEqual(
            self.issues(constant("c", axes + block([2], 2), "CURVE")),
            [("/P/c", "warning", "size-mismatch", "The dimensions tell 2 values, there are 3.")])

    def test_mandatory_properties(self):
        def missing(elements):
            return {(issue["severity"], issue["text"])
                    for issue in json.loads(imported(elements, "check", "--json").stdout)["issues"]
                    if issue["rule"] == "mandatory-property"}

        def lacks(severity, *pairs):
            return {(severity, f"{metaclass} has no {name}.") for metaclass, name in pairs}

        def table(content, axis):
            return named(
                "APPLICATION-PRIMITIVE-DATA-TYPE", "t", "<CATEGORY>CURVE</CATEGORY>" + properties(
                    f"{content}<SW-CALPRM-AXIS-SET><SW-CALPRM-AXIS><SW-AXIS-INDIVIDUAL>{axis}"
                    "</SW-AXIS-INDIVIDUAL></SW-CALPRM-AXIS></SW-CALPRM-AXIS-SET>"))

        points = "<SW-MAX-AXIS-POINTS>2</SW-MAX-AXIS-POINTS>"
        whole = named("SW-RECORD-LAYOUT", "l") + named("UNIT", "u") + table(
            "<UNIT-REF>/P/u</UNIT-REF><SW-RECORD-LAYOUT-REF>/P/l</SW-RECORD-LAYOUT-REF>", points)
        number = named("CONSTANT-SPECIFICATION", "c", "<VALUE-SPEC><NUMERICAL-VALUE-SPECIFICATION>"
                       "{}</NUMERICAL-VALUE-SPECIFICATION></VALUE-SPEC>")
        axis = lacks("note", ("Axis", "Dimensions"))
        parts = lacks("warning", ("LookupTableType", "SwRecordLayout"), ("LookupTableType", "BaseType"))
        curve = constant("c", "<SW-AXIS-CONTS>" + block([2], 2, "SW-AXIS-CONT") + "</SW-AXIS-CONTS>" +
                         block([2], 2), "CURVE")
        for elements, expected in [
                (BYTE + implementation("t", "<SW-ALIGNMENT/>"), set()), (whole, set()),
                (table("", points), parts), (whole.replace(points, ""), axis),
                (number.format("<VALUE>1</VALUE>"), set()),
                (number.format(""), lacks("note", ("LiteralReal", "Value"))),
                (method("m", "IDENTICAL"), set()),
                (method("m", "IDENTICAL").replace("DISPLAY-FORMAT", "X"),
                 lacks("note", ("CompuMethod", "DisplayFormat"))),
                # The axes of a table are tables without axes.
                (curve, set()),
                (constant("c", block([2], 2), "CURVE"),
                 lacks("warning", ("LookupTableSpecification", "Axes"))),
                (named("CONSTANT-SPECIFICATION", "c"),
                 lacks("warning", ("ConstantSpecification", "ConstantValue")))]:
            with self.subTest(elements):
                self.assertEqual(missing(elements), expected)

    def test_text_order_and_exit_code(self):
        elements = constant("b", block([3], 2)) + constant("a", block([2], 1))
        result = imported(elements, "check")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertEqual(result.stdout.decode().splitlines(), [
            f"/P/{name}: warning: size-mismatch: The dimensions tell {size} values, there are "
            f"{size - 1}." for name, size in {"a": 2, "b": 3}.items()])
        self.assertEqual(
            json.loads(imported("", "check", "--json").stdout), {"issues": []})
        self.assertEqual(imported("", "check").stdout, b"")
        # What import finds is not told again, but it counts.
        result = imported(elements + "<UNIT/>", "check")
        self.assertEqual(len(result.stdout.splitlines()), 2)
        self.assertEqual((result.returncode, result.stderr), (
            1, b"velum: Something is wrong in the files; \"velum import\" tells what.\n"))


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

    def test_faults_of_the_files_count(self):
        result = imported(named("UNIT", "u") + "<UNIT/>", "show")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (
            1, b"/P/u: unit u\n",
            b"velum: Something is wrong in the files; \"velum import\" tells what.\n"))

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
