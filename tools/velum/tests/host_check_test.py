"""Looks at what the program judges of documents that are made for each rule.

usage: host_check_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import json
import sys
import unittest

from host import Folder, document, imported, named, package, properties

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


def reference(tag, target):
    return f"<{tag}-REF>{target}</{tag}-REF>"


def base(name, encoding, size="8", native=""):
    declaration = f"<NATIVE-DECLARATION>{native}</NATIVE-DECLARATION>" if native else ""
    return named("SW-BASE-TYPE", name, f"<BASE-TYPE-SIZE>{size}</BASE-TYPE-SIZE>"
                 f"<BASE-TYPE-ENCODING>{encoding}</BASE-TYPE-ENCODING>{declaration}")


def limits(lower, upper, kind="INTERNAL"):
    """A constraint; "5 OPEN" is an open limit."""
    ends = "".join(
        f'<{tag}-LIMIT INTERVAL-TYPE="{(limit + " CLOSED").split()[1]}">{limit.split()[0]}'
        f"</{tag}-LIMIT>" for tag, limit in {"LOWER": lower, "UPPER": upper}.items())
    return named("DATA-CONSTR", "c", f"<DATA-CONSTR-RULES><DATA-CONSTR-RULE><{kind}-CONSTRS>{ends}"
                 f"</{kind}-CONSTRS></DATA-CONSTR-RULE></DATA-CONSTR-RULES>")


def line(*numerators):
    numbers = "".join(f"<V>{number}</V>" for number in numerators)
    return (f"<COMPU-SCALE><COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR>{numbers}</COMPU-NUMERATOR>"
            "<COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR></COMPU-RATIONAL-COEFFS></COMPU-SCALE>")


def texts(**values):
    return "".join(
        f"<COMPU-SCALE><LOWER-LIMIT>{value}</LOWER-LIMIT><UPPER-LIMIT>{value}</UPPER-LIMIT>"
        f"<COMPU-CONST><VT>{text}</VT></COMPU-CONST></COMPU-SCALE>"
        for text, value in values.items())


def application(name, content):
    return named("APPLICATION-PRIMITIVE-DATA-TYPE", name,
                 "<CATEGORY>VALUE</CATEGORY>" + properties(content))


def mapped(application_type, implementation_type):
    return named("DATA-TYPE-MAPPING-SET", "set", "<DATA-TYPE-MAPS><DATA-TYPE-MAP>" +
                 reference("APPLICATION-DATA-TYPE", application_type) +
                 reference("IMPLEMENTATION-DATA-TYPE", implementation_type) +
                 "</DATA-TYPE-MAP></DATA-TYPE-MAPS>")


CONSTR = reference("DATA-CONSTR", "/P/c")
METHOD = reference("COMPU-METHOD", "/P/m")


class RuleTest(unittest.TestCase):
    """For each rule files in which it reports something, and files in which it doesn't."""

    def issues(self, elements):
        """Path, rule and text of each issue; every one has its place."""
        result = imported(elements, "check", "--json")
        issues = json.loads(result.stdout)["issues"]
        for issue in issues:
            self.assertEqual((issue["file"], issue["column"] > 0), ("f.arxml", True))
            self.assertEqual(issue["line"] > 1, True)
        return [(issue["path"], issue["rule"], issue["text"]) for issue in issues]

    def check(self, rule, elements, *expected):
        """`expected`: path and text of each issue, of which there is none of another rule."""
        with self.subTest(elements):
            self.assertEqual(
                self.issues(elements), [(path, rule, text) for path, text in expected])

    def test_empty_range(self):
        above = "The minimum {} is above the maximum {}."
        itself = "The range from 5 to itself excludes it."
        for lower, upper, said in [
                ("5", "5", ""), ("5", "5.000001", ""), ("5.000001", "5", above.format(5.000001, 5)),
                ("5 OPEN", "5", itself), ("5", "5 OPEN", itself), ("5 OPEN", "5 OPEN", itself),
                ("4 OPEN", "5 OPEN", ""), ("5 INFINITE", "4", ""), ("5", "4 INFINITE", ""),
                ("INF", "-INF", ""), ("9", "0", above.format(9, 0))]:
            self.check("empty-range", BYTE + limits(lower, upper) + implementation("t", CONSTR),
                       *([("/P/t", said)] if said else []))

    def test_limits_beyond_type(self):
        def said(lower, upper, least, most):
            return ("/P/t", f"The limits {lower} to {upper} exceed what the type can hold, "
                    f"{least} to {most}.")
        for encoding, size, lower, upper, expected in [
                ("NONE", 8, "0", "255", []), ("NONE", 8, "0", "256", [said(0, 256, 0, 255)]),
                ("NONE", 8, "-1", "255", [said(-1, 255, 0, 255)]),
                ("2C", 8, "-128", "127", []), ("2C", 8, "-129", "0", [said(-129, 0, -128, 127)]),
                ("NONE", 64, "0", "18446744073709551615", []),
                ("NONE", 8, "0", "300 INFINITE", []),
                ("2C", 8, "-1 INFINITE", "200", [said("unlimited", 200, -128, 127)]),
                ("IEEE754", 64, "-1e300", "1e300", []), ("IEEE754", 32, "-1e38", "1e38", []),
                ("IEEE754", 32, "0", "1e39", [
                    said(0, "1e+39", "-3.4028234663852886e+38", "3.4028234663852886e+38")])]:
            self.check("limits-beyond-type", base("b", encoding, size) + limits(lower, upper) +
                       implementation("t", CONSTR), *expected)

    def test_limits_of_application_types_beyond_their_storage(self):
        def elements(upper, category="LINEAR", scale=line(-40, 0.5), lower="-40"):
            return (BYTE + limits(lower, upper, "PHYS") + method("m", category, scale) +
                    application("t", CONSTR + METHOD) + implementation("i", "<SW-ALIGNMENT/>") +
                    mapped("/P/t", "/P/i"))
        self.check("limits-beyond-type", elements("87.5"))
        self.check("limits-beyond-type", elements("87.74"))  # within half a step
        self.check("limits-beyond-type", elements("88"), (
            "/P/t", "The limits -40 to 88 exceed what the type can hold, -40 to 87.5."))
        self.check("limits-beyond-type", elements("300", "IDENTICAL", "", "0"), (
            "/P/t", "The limits 0 to 300 exceed what the type can hold, 0 to 255."))
        # No line leads from these to the storage.
        self.check("limits-beyond-type", elements("300", "RAT_FUNC", line(1, 2).replace(
            "<V>1</V></COMPU-D", "<V>1</V><V>3</V></COMPU-D")))

    def test_literal_beyond_type(self):
        self.check("literal-beyond-type", BYTE + method("m", "TEXTTABLE", texts(a=0, b=255)) +
                   implementation("t", METHOD))
        said = "The literal {} has the value {}; the type holds 0 to 255."
        self.check("literal-beyond-type", BYTE + method("m", "TEXTTABLE", texts(a=-1, b=256)) +
                   implementation("t", METHOD), ("/P/t", said.format("a", -1)),
                   ("/P/t", said.format("b", 256)))

    def test_shared_value(self):
        said = "The literals a and {} share the value 1."
        elements = base("b", "2C") + "{}" + "".join(implementation(name, METHOD) for name in "tu")
        self.check("shared-value", elements.format(method("m", "TEXTTABLE", texts(a=1, b=2, c=-1))))
        self.check("shared-value", elements.format(
            method("m", "TEXTTABLE", texts(a=1, b=2, c=1, d=0, e=1, f=-1))), *(
                (f"/P/{name}", said.format(other)) for name in "tu" for other in "ce"))

    def test_encoding_mismatch(self):
        said = "The encoding ({}) contradicts the native declaration ({}): {}."
        integers = "the encoding is one of integers, the declaration is not"
        reals = "the encoding is one of floating-point numbers, the declaration is not"
        no_sign = "the encoding is signed, the declaration is not"
        sign = "the declaration is signed, the encoding is not"
        for encoding, native, cause in [
                ("NONE", "unsigned char", ""), ("NONE", "char", ""), ("NONE", "uint8", ""),
                ("NONE", "my_type", ""), ("2C", "short", ""), ("2C", "signed int", ""),
                ("2C", "long long", ""), ("IEEE754", "float", ""), ("IEEE754", "long double", ""),
                ("BOOLEAN", "unsigned char", ""), ("VOID", "void", ""), ("NONE", "void *", ""),
                ("UTF-8", "signed char", ""), ("NONE", "unsigned long int", ""),
                ("NONE", "short", sign), ("NONE", "signed char", sign), ("2C", "unsigned", no_sign),
                ("2C", "uint8_t", no_sign), ("NONE", "int8_t", sign), ("2C", "float", integers),
                ("IEEE754", "long", reals), ("NONE", "void", "the declaration is one of no values"),
                ("NONE", "uint16_t", "the size is 8 bits")]:
            size = "8" if encoding != "IEEE754" else "32"
            self.check("encoding-mismatch", base("b", encoding, size, native), *(
                [("/P/b", said.format(encoding, native, cause))] if cause else []))

    def test_void_value(self):
        self.check("void-value", base("b", "VOID"))
        self.check("void-value", base("b", "VOID") + named(
            "IMPLEMENTATION-DATA-TYPE", "p", "<CATEGORY>DATA_REFERENCE</CATEGORY>" + properties(
                "<SW-POINTER-TARGET-PROPS><TARGET-CATEGORY>VALUE</TARGET-CATEGORY>" + properties(
                    reference("BASE-TYPE", "/P/b")) + "</SW-POINTER-TARGET-PROPS>")))
        self.check("void-value", base("b", "VOID") + implementation("t", ""), (
            "/P/t", "The base type (/P/b) of this type of values has the encoding VOID."))

    def test_unit_mismatch(self):
        def elements(own, of_method):
            return BYTE + "".join(named(
                "PHYSICAL-DIMENSION", name, f"<LENGTH-EXP>1</LENGTH-EXP><TIME-EXP>{time}</TIME-EXP>")
                for name, time in {"speed": -1, "pace": -1, "way": 0}.items()) + "".join(
                    named("UNIT", f"in_{name}", reference("PHYSICAL-DIMENSION", f"/P/{name}"))
                    for name in ("speed", "pace", "way")) + named("UNIT", "none") + named(
                        "COMPU-METHOD", "m", "<CATEGORY>IDENTICAL</CATEGORY>" + reference(
                            "UNIT", f"/P/{of_method}")) + implementation(
                                "t", METHOD + reference("UNIT", f"/P/{own}"))
        for own, of_method in [("in_speed", "in_speed"), ("in_speed", "in_pace"),
                               ("in_way", "none"), ("none", "in_way")]:
            self.check("unit-mismatch", elements(own, of_method))
        self.check("unit-mismatch", elements("in_speed", "in_way"), (
            "/P/t", "The unit of the type is in_speed (speed), that of its method in_way (way)."))

    def test_zero_factor(self):
        def unit(factor):
            return named("UNIT", "u", f"<FACTOR-SI-TO-UNIT>{factor}</FACTOR-SI-TO-UNIT>")
        self.check("zero-factor", unit("0.001"))
        for factor in ("0", "0.0", "-0", "0x0"):
            self.check("zero-factor", unit(factor), (
                "/P/u", "The conversion factor of the unit is 0."))
        flat = "The slope of the method is 0: every value is converted to the same one."
        self.check("zero-factor", method("m", "LINEAR", line(1, 2)))
        self.check("zero-factor", method("m", "LINEAR", line(0, 1) + line(5, 0)))
        self.check("zero-factor", method("m", "LINEAR", line(5, 0)), ("/P/m", flat))
        self.check("zero-factor", method("m", "LINEAR", line(5)), ("/P/m", flat))

    def test_no_coefficients(self):
        for category, held in {
                "LINEAR": "Linear", "RAT_FUNC": "RatFunc",
                "SCALE_LINEAR_AND_TEXTTABLE": "LinearAndTextTable", "IDENTICAL": None,
                "TEXTTABLE": None}.items():
            self.check("no-coefficients", method("m", category, line(0, 2)))
            said = f"A method of category {held} has no coefficients."
            self.check("no-coefficients", method("m", category), *([("/P/m", said)] if held else []))
        # The import leaves these out; the file has them.
        self.check("no-coefficients", method("m", "SCALE_LINEAR", line(0, 1) + line(0, 2)))
        self.check("no-coefficients", method("m", "RAT_FUNC", line(0, 1, 2)))

    def test_size_mismatch_of_dimensions(self):
        for sizes, count, expected in [
                ([3], 3, None), ([3], 2, 3), ([3], 4, 3), ([2, 3], 6, None), ([2, 3], 5, 6),
                ([0], 1, 0), ([2, 0], 1, 0)]:
            said = f"The dimensions tell {expected} values, there are {count}."
            self.check("size-mismatch", constant("c", block(sizes, count)),
                       *([] if expected is None else [("/P/c", said)]))
        # A size that is unknown tells nothing.
        result = imported(constant("c", block([2, "x"], 3)), "check")
        self.assertNotIn(b"size-mismatch", result.stdout)

    @staticmethod
    def table(values, *axes):
        def points(texts):
            return ("<SW-VALUES-PHYS>" + "".join(f"<V>{text}</V>" for text in texts) +
                    "</SW-VALUES-PHYS>")
        return constant("c", "<SW-AXIS-CONTS>" + "".join(
            f"<SW-AXIS-CONT><SW-AXIS-INDEX>{i + 1}</SW-AXIS-INDEX>{points(axis)}</SW-AXIS-CONT>"
            for i, axis in enumerate(axes)) + "</SW-AXIS-CONTS><SW-VALUE-CONT>" +
            points(range(values)) + "</SW-VALUE-CONT>", "MAP")

    def test_size_mismatch_of_axes(self):
        self.check("size-mismatch", self.table(6, [1, 2], [1, 2, 3]))
        self.check("size-mismatch", self.table(5, [1, 2], [1, 2, 3]), (
            "/P/c", "The axes have 2 x 3 points, there are 5 values."))
        self.check("size-mismatch", self.table(3, [1, 2]), (
            "/P/c", "The axes have 2 points, there are 3 values."))

    def test_axis_order(self):
        said = "Point {} of axis {}, {}, is not above the one before, {}."
        self.check("axis-order", self.table(6, [-1, 0], [1, 2, 1e3]))
        self.check("axis-order", self.table(3, ["0x1", "a", 0]))  # texts have no order
        self.check("axis-order", self.table(6, [1, 2], [1, 3, 3]), (
            "/P/c", said.format(3, 2, 3, 3)))
        self.check("axis-order", self.table(6, [2, 1], [3, 2, 1]), (
            "/P/c", said.format(2, 1, 1, 2)), ("/P/c", said.format(2, 2, 2, 3)))

    def test_constant_limits(self):
        def prototype(target="/P/t"):
            return ("<SENDER-RECEIVER-INTERFACE><SHORT-NAME>s</SHORT-NAME><DATA-ELEMENTS>" + named(
                "VARIABLE-DATA-PROTOTYPE", "v", f"<TYPE-TREF>{target}</TYPE-TREF><INIT-VALUE>"
                "<CONSTANT-REFERENCE><CONSTANT-REF>/P/k</CONSTANT-REF></CONSTANT-REFERENCE>"
                "</INIT-VALUE>") + "</DATA-ELEMENTS></SENDER-RECEIVER-INTERFACE>")

        def number(value):
            return ("<NUMERICAL-VALUE-SPECIFICATION><SHORT-LABEL>x</SHORT-LABEL>"
                    f"<VALUE>{value}</VALUE></NUMERICAL-VALUE-SPECIFICATION>")

        def holder(value):
            return named("CONSTANT-SPECIFICATION", "k", f"<VALUE-SPEC>{value}</VALUE-SPEC>")

        def values(*numbers):
            return constant("k", "<SW-VALUE-CONT><SW-VALUES-PHYS>" + "".join(
                f"<V>{value}</V>" for value in numbers) + "</SW-VALUES-PHYS></SW-VALUE-CONT>")

        scalar = limits("0", "100", "PHYS") + application("t", CONSTR)
        block_type = scalar.replace("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY>VAL_BLK</CATEGORY>")
        record = scalar.replace("<SHORT-NAME>t<", "<SHORT-NAME>e<") + named(
            "APPLICATION-RECORD-DATA-TYPE", "t", "<CATEGORY>STRUCTURE</CATEGORY><ELEMENTS>" + named(
                "APPLICATION-RECORD-ELEMENT", "x", "<TYPE-TREF>/P/e</TYPE-TREF>") + "</ELEMENTS>")
        fields = "<RECORD-VALUE-SPECIFICATION><FIELDS>{}</FIELDS></RECORD-VALUE-SPECIFICATION>"
        above = "The value {} is above the maximum 100 of its type{}"
        for elements, said in [
                (scalar + holder(number(100)), ""), (scalar + holder(number(101)), (101, " t.")),
                (scalar + values(50), ""), (scalar + values("1e3"), (1000, " t.")),
                (scalar + values("on"), ""),
                (block_type + values(1, 2), ""), (block_type + values(1, 200), (200, ".")),
                (record + holder(fields.format(number(1))), ""),
                (record + holder(fields.format(number(300))), (300, " e."))]:
            self.check("constant-limits", elements + prototype(), *(
                [("/P/s/v", above.format(*said))] if said else []))
        self.check("constant-limits", scalar + holder(number(-1)) + prototype(), (
            "/P/s/v", "The value -1 is below the minimum 0 of its type t."))
        # Another type, or none.
        self.check("constant-limits", scalar + holder(number(101)) + prototype("/P/none"))
        self.check("constant-limits", scalar + holder(number(101)))

    def test_mandatory_property(self):
        def lacks(path, *pairs):
            return [(path, f"{metaclass} has no {name}.") for metaclass, name in pairs]

        def table(content, axis):
            return named(
                "APPLICATION-PRIMITIVE-DATA-TYPE", "t", "<CATEGORY>CURVE</CATEGORY>" + properties(
                    f"{content}<SW-CALPRM-AXIS-SET><SW-CALPRM-AXIS><SW-AXIS-INDIVIDUAL>{axis}"
                    "</SW-AXIS-INDIVIDUAL></SW-CALPRM-AXIS></SW-CALPRM-AXIS-SET>"))

        points = "<SW-MAX-AXIS-POINTS>2</SW-MAX-AXIS-POINTS>"
        whole = named("UNIT", "u") + table(reference("UNIT", "/P/u"), points)
        superseded = BYTE + implementation("v", "") + table(
            reference("VALUE-AXIS-DATA-TYPE", "/P/v"), points)
        number = named("CONSTANT-SPECIFICATION", "c", "<VALUE-SPEC><NUMERICAL-VALUE-SPECIFICATION>"
                       "{}</NUMERICAL-VALUE-SPECIFICATION></VALUE-SPEC>")
        array = named("IMPLEMENTATION-DATA-TYPE", "a", "<CATEGORY>ARRAY</CATEGORY>")
        pointer = named("IMPLEMENTATION-DATA-TYPE", "p", "<CATEGORY>DATA_REFERENCE</CATEGORY>")
        shared = named(
            "APPLICATION-PRIMITIVE-DATA-TYPE", "x", "<CATEGORY>COM_AXIS</CATEGORY>" + properties(
                "<SW-CALPRM-AXIS-SET><SW-CALPRM-AXIS><SW-AXIS-INDIVIDUAL>" + points +
                "</SW-AXIS-INDIVIDUAL></SW-CALPRM-AXIS></SW-CALPRM-AXIS-SET>"))
        grouped = whole.replace(
            f"<SW-AXIS-INDIVIDUAL>{points}</SW-AXIS-INDIVIDUAL>", "<SW-AXIS-GROUPED>" + reference(
                "SHARED-AXIS-TYPE", "/P/x") + "</SW-AXIS-GROUPED>")
        curve = constant("c", block([2], 2), "CURVE")
        for elements, expected in [
                (whole, []), (superseded, []), (pointer, []), (shared + grouped, []), (curve, []),
                (method("m", "IDENTICAL").replace("DISPLAY-FORMAT", "X"), []),
                (table("", points), lacks("/P/t", ("LookupTableType", "BaseType"))),
                (whole.replace(points, ""), lacks("/P/t", ("Axis", "Dimensions"))),
                (array, lacks("/P/a", ("Matrix", "BaseType"))),
                (number.format("<VALUE>1</VALUE>"), []),
                (number.format(""), lacks("/P/c", ("LiteralReal", "Value"))),
                (named("CONSTANT-SPECIFICATION", "c", "<VALUE-SPEC><NOT-AVAILABLE-VALUE-SPECIFICATION/>"
                       "</VALUE-SPEC>"), []),
                (named("CONSTANT-SPECIFICATION", "c"),
                 lacks("/P/c", ("ConstantSpecification", "ConstantValue")))]:
            self.check("mandatory-property", elements, *expected)


class CheckCommandTest(unittest.TestCase):
    """What is common to all rules."""

    ELEMENTS = "\n".join([
        constant("b", block([3], 2)), constant("a", block([2], 1)),
        named("UNIT", "u", "<FACTOR-SI-TO-UNIT>0</FACTOR-SI-TO-UNIT>")])

    def check(self, *options, code=1):
        result = imported(self.ELEMENTS, "check", *options, "--fail-on", "none")
        self.assertEqual((result.returncode, result.stderr), (code, b""))
        return result.stdout.decode()

    def test_text_order_and_exit_code(self):
        size = "warning: size-mismatch: /P/{}: The dimensions tell {} values, there are {}."
        sizes = ["f.arxml:2:1: " + size.format("b", 3, 2), "f.arxml:3:1: " + size.format("a", 2, 1)]
        factor = "f.arxml:4:1: error: zero-factor: /P/u: The conversion factor of the unit is 0."
        self.assertEqual(self.check().splitlines(), [*sizes, factor])
        self.assertEqual(self.check("--severity", "error").splitlines(), [factor])
        self.assertEqual(self.check("--severity", "warning").splitlines(), [*sizes, factor])
        self.assertEqual(self.check("--rule", "size-mismatch", code=0).splitlines(), sizes)
        self.assertEqual(
            self.check("--rule", "shared-value,zero-factor").splitlines(), [factor])
        for options in (["--rule", "nothing"], ["--severity", "all"], ["--format", "xml"],
                        ["--json", "--format", "text"]):
            self.assertEqual(imported("", "check", *options).returncode, 2)
        self.assertEqual(json.loads(imported("", "check", "--json").stdout), {"issues": []})
        self.assertEqual(imported("", "check").stdout, b"")

    def test_faults_of_the_import_count(self):
        result = imported("<UNIT/>", "check")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (
            1, b"", b"velum: f.arxml:2:1: no-name: This UNIT has no SHORT-NAME. \"velum import\" "
            b"lists all that is wrong.\n"))

    def test_a_baseline_leaves_out_what_is_known(self):
        moved = "\n\n" + self.ELEMENTS
        with Folder() as folder:
            folder.write("old.arxml", document(package("P", self.ELEMENTS)))
            known = folder.run("check", "--json", "old.arxml").stdout
            folder.write("known.json", known)
            def left(elements):
                folder.write("new.arxml", document(package("P", elements)))
                result = folder.run("check", "--json", "--baseline", "known.json", "new.arxml")
                return [(issue["path"], issue["rule"])
                        for issue in json.loads(result.stdout)["issues"]]
            self.assertEqual(left(moved), [])
            self.assertEqual(left(moved.replace("<V>3</V>", "<V>4</V>")), [("/P/b", "size-mismatch")])
            self.assertEqual(
                left(moved + constant("d", block([3], 2))), [("/P/d", "size-mismatch")])
            for content in ("{}", "x", '{"issues": [{"rule": 1}]}'):
                folder.write("bad.json", content)
                result = folder.run("check", "--baseline", "bad.json", "old.arxml")
                self.assertEqual((result.returncode, result.stdout), (1, b""))
                self.assertEqual(
                    result.stderr, b'velum: bad.json: This is no baseline; write one with "velum '
                    b'check --json FILE... >BASELINE".\n')
            self.assertEqual(
                folder.run("check", "--baseline", "none", "old.arxml").stderr,
                b"velum: none: The baseline cannot be opened (No such file or directory).\n")

    def test_sarif(self):
        with Folder() as folder:
            folder.write("a b\u00e9.arxml", document(package("P", self.ELEMENTS)))
            log = json.loads(folder.run("check", "--format", "sarif", ".").stdout)
        self.assertEqual(
            (log["version"], log["$schema"]),
            ("2.1.0", "https://json.schemastore.org/sarif-2.1.0.json"))
        (invocation,) = log["runs"]
        driver = invocation["tool"]["driver"]
        self.assertEqual(driver["name"], "velum")
        ids = [rule["id"] for rule in driver["rules"]]
        self.assertEqual(ids, sorted(set(ids)))
        for rule in driver["rules"]:
            self.assertTrue(rule["shortDescription"]["text"].endswith("."))
            self.assertIn(rule["defaultConfiguration"]["level"], ("error", "warning", "note"))
        self.assertEqual(
            [(r["ruleId"], r["level"], r["locations"][0]["physicalLocation"]["region"]["startLine"])
             for r in invocation["results"]],
            [("size-mismatch", "warning", 2), ("size-mismatch", "warning", 3),
             ("zero-factor", "error", 4)])
        for result in invocation["results"]:
            self.assertEqual(ids[result["ruleIndex"]], result["ruleId"])
            self.assertTrue(result["message"]["text"])
            (location,) = result["locations"]
            self.assertEqual(
                location["physicalLocation"]["artifactLocation"]["uri"], "./a%20b%C3%A9.arxml")
            self.assertEqual(location["physicalLocation"]["region"]["startColumn"], 1)
            (logical,) = location["logicalLocations"]
            self.assertTrue(logical["fullyQualifiedName"].startswith("/P/"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
