"""Holds what becomes of methods, limits, units, constants and references to the rules of the mapping.

usage: host_numbers_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import json
import sys
import unittest

from host import (
    Folder, classes, document, findings, held, imported, named, package, properties, shown, skips)

BYTE = named("SW-BASE-TYPE", "b", "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
             "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")
TO_PHYSICAL, TO_INTERNAL = "COMPU-INTERNAL-TO-PHYS", "COMPU-PHYS-TO-INTERNAL"


def refer(kind, target):
    return f"<{kind}-REF>/P/{target}</{kind}-REF>"


def implementation(name, content):
    return named("IMPLEMENTATION-DATA-TYPE", name, "<CATEGORY>VALUE</CATEGORY>" +
                 properties(refer("BASE-TYPE", "b") + content))


def application(name, content):
    return named("APPLICATION-PRIMITIVE-DATA-TYPE", name,
                 "<CATEGORY>VALUE</CATEGORY>" + properties(content))


def rational(numerator, denominator):
    def numbers(values):
        return "".join(f"<V>{value}</V>" for value in values)
    return ("<COMPU-SCALE><COMPU-RATIONAL-COEFFS>"
            f"<COMPU-NUMERATOR>{numbers(numerator)}</COMPU-NUMERATOR>"
            f"<COMPU-DENOMINATOR>{numbers(denominator)}</COMPU-DENOMINATOR>"
            "</COMPU-RATIONAL-COEFFS></COMPU-SCALE>")


def text(word, lower=0, upper=None, symbol=None):
    return ("<COMPU-SCALE>" + (f"<SYMBOL>{symbol}</SYMBOL>" if symbol is not None else "") +
            f"<LOWER-LIMIT>{lower}</LOWER-LIMIT>"
            f"<UPPER-LIMIT>{lower if upper is None else upper}</UPPER-LIMIT>" +
            (f"<COMPU-CONST><VT>{word}</VT></COMPU-CONST>" if word is not None else
             "<COMPU-CONST><VF>1</VF></COMPU-CONST>") + "</COMPU-SCALE>")


def scales(direction, *content):
    return f"<{direction}><COMPU-SCALES>{''.join(content)}</COMPU-SCALES></{direction}>"


def method(name, word, *directions):
    return named("COMPU-METHOD", name,
                 (f"<CATEGORY>{word}</CATEGORY>" if word else "") + "".join(directions))


class MethodTest(unittest.TestCase):
    LINE = rational([-40, 0.5], [1])
    SHOWN = ", internal = (40 + 1 p) / (0.5)"

    def method_text(self, word, *directions):
        (line,) = shown(method("m", word, *directions)) or [""]
        return line.removeprefix("/P/m: computation method, ")

    def test_the_categories(self):
        both = scales(TO_PHYSICAL, text("error", 255), self.LINE)
        for word, expected in {
                "IDENTICAL": "Identical", "LINEAR": "Linear" + self.SHOWN,
                "SCALE_LINEAR": "Linear" + self.SHOWN, "RAT_FUNC": "RatFunc" + self.SHOWN,
                "SCALE_RATIONAL": "RatFunc" + self.SHOWN, "TEXTTABLE": "TextTable",
                "BITFIELD_TEXTTABLE": "TextTable",
                "SCALE_LINEAR_AND_TEXTTABLE": "LinearAndTextTable" + self.SHOWN,
                "SCALE_RATIONAL_AND_TEXTTABLE": "LinearAndTextTable" + self.SHOWN}.items():
            with self.subTest(word):
                self.assertEqual(self.method_text(word, both), expected)
        for word in ("TAB_NOINTP", "TAB_INTP", "linear"):
            self.assertEqual(shown(method("m", word, both)), [])
            self.assertEqual(skips(imported(method("m", word)))[("COMPU-METHOD", "no-class")], 1)

    def test_a_missing_category_follows_from_the_content(self):
        rows = [
            # content, what it is taken as, what is shown
            ([], "IDENTICAL", "Identical"),
            ([text("a")], "TEXTTABLE", "TextTable"),
            ([self.LINE], "LINEAR", "Linear" + self.SHOWN),
            ([rational([1, 2], [1, 3])], "RAT_FUNC", "RatFunc, internal = (-1 + 1 p) / (2 + -3 p)"),
            ([rational([1, 2, 0], [1])], "RAT_FUNC", "RatFunc, internal = (-1 + 1 p) / (2)"),
            ([text("a"), self.LINE], "SCALE_LINEAR_AND_TEXTTABLE", "LinearAndTextTable" + self.SHOWN),
        ]
        for content, word, expected in rows:
            with self.subTest(word):
                written = scales(TO_PHYSICAL, *content)
                self.assertEqual(self.method_text("", written), expected)
                result = imported(method("m", "", written))
                self.assertEqual(result.returncode, 0)
                self.assertEqual(findings(result), [
                    ("/P/m", "inferred",
                     f"The computation method has no category; it is taken as {word}.")])
        self.assertEqual(
            self.method_text("", scales(TO_INTERNAL, text("a"))), "TextTable")

    def test_pieces_of_functions_are_not_held(self):
        bent = rational([0, 1], [2, 1])
        for word, content in {
                "SCALE_LINEAR": [self.LINE, self.LINE], "SCALE_RATIONAL": [bent, bent],
                "SCALE_LINEAR_AND_TEXTTABLE": [text("a"), self.LINE, self.LINE],
                "SCALE_RATIONAL_AND_TEXTTABLE": [bent, text("a")]}.items():
            with self.subTest(word):
                self.assertNotIn("internal", self.method_text(word, scales(TO_PHYSICAL, *content)))
                result = imported(method("m", word, scales(TO_PHYSICAL, *content)))
                said = ("Beside texts the model holds a straight line only; this is none."
                        if len(content) == 2 and "AND" in word else
                        "The function has several pieces; the model holds none of them.")
                self.assertEqual(findings(result), [("/P/m", "no-property", said)])
                count = sum(scale.count("<V>") for scale in content)
                self.assertEqual(skips(result)[("V", "no-property")], count)

    def test_of_both_directions_the_one_to_internal_counts(self):
        to_internal = scales(TO_INTERNAL, rational([40, 1], [0.5]))
        self.assertEqual(
            skips(imported(method("m", "LINEAR", scales(TO_PHYSICAL, self.LINE), to_internal))), {})
        other = scales(TO_PHYSICAL, rational([-41, 0.5], [1]))
        result = imported(method("m", "LINEAR", other, to_internal))
        self.assertEqual(result.returncode, 0)
        self.assertEqual(findings(result), [
            ("/P/m", "not-invertible",
             "This is not the inverse of the function from physical to internal values, "
             "which counts; this direction is lost.")])
        self.assertEqual(skips(result)[("V", "not-invertible")], 3)
        self.assertEqual(self.method_text("LINEAR", other, to_internal), "Linear" + self.SHOWN)
        # As written, though it could not be turned round.
        self.assertEqual(
            self.method_text("RAT_FUNC", scales(TO_INTERNAL, rational([1, 0, 3], [2]))),
            "RatFunc, internal = (1 + 3 p^2) / (2)")

    def test_coefficients_that_are_no_numbers(self):
        constant = "<SYSC-REF>/P/N</SYSC-REF>"
        for value, reason, count in [("NaN", "bad-number", 1), ("INF", "bad-number", 1),
                                     ("1e999", "out-of-range", 1), (constant, "symbolic", 1)]:
            with self.subTest(value):
                result = imported(named("SW-SYSTEMCONST", "N") + method(
                    "m", "LINEAR", scales(TO_INTERNAL, rational([1, value], [1]))))
                self.assertEqual([found for _, found, _ in findings(result)], [reason])
                self.assertEqual(skips(result)[("V", reason)], count)
                self.assertEqual(result.returncode, 0 if reason == "symbolic" else 1)
        result = imported(method(
            "m", "LINEAR", scales(TO_INTERNAL, rational([9007199254740993, 1], [2]))))
        self.assertEqual(findings(result), [
            ("/P/m", "out-of-range", "The number (9007199254740993) is held rounded.")])
        self.assertEqual((result.returncode, skips(result)), (0, {}))

    def test_the_literals_of_a_table(self):
        table = scales(
            TO_PHYSICAL, text("zero", 0, symbol="NULL"), text("one", "0x1", symbol=""),
            text("again", 1), text("range", 2, 3), text("most", 2147483647),
            text("least", -2147483647), text(None, 5), text(None, 6, symbol="SIX"),
            text("word", "x"), text("high", "0", "y"), text("not&amp;&lt; accepted", 7))
        elements = BYTE + method("m", "TEXTTABLE", table) + "".join(
            implementation(name, refer("COMPU-METHOD", "m")) for name in "tu")
        literals = ["  0 = NULL", "  1 = one", "  1 = again", "  2147483647 = most",
                    "  -2147483647 = least", "  6 = SIX", "  7 = not&< accepted"]
        for name in "tu":
            self.assertEqual(shown(elements, f"/P/{name}"), [
                f"/P/{name}: unsigned 8-bit enumeration of 7, by m", *literals])
        result = imported(elements)
        self.assertEqual(classes(result)["EnumerationLiteral"], 14)
        self.assertEqual(findings(result), [
            ("/P/m", "bad-number", "The limit (x) is no number."),
            ("/P/m", "bad-number", "The limit (y) is no number.")])
        skipped = skips(result)
        self.assertEqual(skipped[("VT", "no-property")], 4)  # one has a symbol, three no value
        self.assertEqual(skipped[("SYMBOL", "no-property")], 1)
        lines = held(elements)["/P/t"]
        for line in ["      Value: 6", "      pvalue: 6", "      pisUserDefined: true"]:
            self.assertIn(line, lines)

        # The other direction has them if the one to physical values has none.
        elements = BYTE + method("m", "TEXTTABLE", scales(TO_INTERNAL, text("on", 1))) + (
            implementation("t", refer("COMPU-METHOD", "m")))
        self.assertEqual(shown(elements, "/P/t")[1:], ["  1 = on"])

    def test_texts_without_an_enumeration_are_not_held(self):
        for word, user in {"TEXTTABLE": "", "BITFIELD_TEXTTABLE": implementation(
                "t", refer("COMPU-METHOD", "m"))}.items():
            with self.subTest(word):
                table = method("m", word, scales(TO_PHYSICAL, text("a", 1), text("b", 2)))
                result = imported(BYTE + table + user)
                self.assertNotIn("EnumerationLiteral", classes(result))
                self.assertEqual(skips(result)[("VT", "no-property")], 2)
        self.assertEqual(
            shown(BYTE + table + user, "/P/t"),
            ["/P/t: unsigned 8-bit integer, by m"])


class LimitTest(unittest.TestCase):
    @staticmethod
    def limits(lower, upper, kind="INTERNAL"):
        def limit(tag, value):
            value, _, interval = str(value).partition(" ")
            interval = f' INTERVAL-TYPE="{interval}"' if interval else ""
            return f"<{tag}-LIMIT{interval}>{value}</{tag}-LIMIT>" if value != "-" else ""
        return f"<{kind}-CONSTRS>{limit('LOWER', lower)}{limit('UPPER', upper)}</{kind}-CONSTRS>"

    @staticmethod
    def constraint(*rules):
        return named("DATA-CONSTR", "c", "<DATA-CONSTR-RULES>" + "".join(
            f"<DATA-CONSTR-RULE>{rule}</DATA-CONSTR-RULE>" for rule in rules) +
                     "</DATA-CONSTR-RULES>")

    def range_of(self, constraint, make=application, content="", more=""):
        user = make("t", content + refer("DATA-CONSTR", "c"))
        (line,) = shown(BYTE + more + constraint + user, "/P/t")
        return line.removesuffix(", by m").partition(", ")[2]

    def test_the_ends_of_a_range(self):
        for lower, upper, expected in [
                ("0", "10", "[0, 10]"), ("0 CLOSED", "10 CLOSED", "[0, 10]"),
                ("0 OPEN", "10", "(0, 10]"), ("0", "10 OPEN", "[0, 10)"),
                ("0 INFINITE", "10", "(-inf, 10]"), ("0", "10 INFINITE", "[0, inf)"),
                ("-INF", "+INF", ""), ("INF", "0x10", "(-inf, 16]"), ("NaN", "010", "(-inf, 8]"),
                ("-1.5e3", "-", "[-1500, inf)"), ("-", "7 OPEN", "(-inf, 7)"),
                ("-", "-", ""), ("5", "5", "[5, 5]"),
                ("0", "18446744073709551615", "[0, 18446744073709551615]")]:
            with self.subTest(lower=lower, upper=upper):
                self.assertEqual(
                    self.range_of(self.constraint(self.limits(lower, upper)), implementation),
                    expected)

    def test_an_end_that_is_not_there_is_open(self):
        for lower, upper, flags in [
                ("0", "1", ("false", "false")), ("-", "1", ("true", "false")),
                ("0", "INF", ("false", "true")), ("x", "1 OPEN", ("true", "true"))]:
            with self.subTest(lower=lower, upper=upper):
                lines = held(BYTE + self.constraint(self.limits(lower, upper)) + implementation(
                    "t", refer("DATA-CONSTR", "c")))["/P/t"]
                for name, flag in zip(("isMinOpen", "isMaxOpen"), flags):
                    self.assertIn(f"  {name}: {flag}", lines)

    def test_limits_that_are_no_numbers_stay_open(self):
        constant = "<SYSC-REF>/P/N</SYSC-REF>"
        for value, reason in [("ten", "bad-number"), ("1e999", "out-of-range"),
                              (constant, "symbolic")]:
            with self.subTest(value):
                rule = self.constraint(self.limits("0", value.replace(" ", "")))
                system = named("SW-SYSTEMCONST", "N")
                self.assertEqual(
                    self.range_of(rule, implementation, more=system), "[0, inf)")
                result = imported(
                    BYTE + system + rule + implementation("t", refer("DATA-CONSTR", "c")))
                self.assertEqual(
                    [(path, found) for path, found, _ in findings(result)], [("/P/c", reason)])
                self.assertEqual(skips(result)[("UPPER-LIMIT", reason)], 1)
        rounded = self.constraint(self.limits("0", "18446744073709551615"))
        result = imported(BYTE + rounded + implementation("t", refer("DATA-CONSTR", "c")))
        self.assertEqual(findings(result), [
            ("/P/c", "out-of-range", "The number (18446744073709551615) is held rounded.")])
        self.assertEqual((result.returncode, skips(result)), (0, {}))

    def test_internal_and_physical_limits(self):
        internal, physical = self.limits(0, 10), self.limits(-1, 1, "PHYS")
        line = method("m", "LINEAR", scales(TO_PHYSICAL, rational([5, 2], [1])))
        falling = method("m", "LINEAR", scales(TO_PHYSICAL, rational([5, -2], [1])))
        same = method("m", "IDENTICAL")
        ratio = method("m", "RAT_FUNC", scales(TO_PHYSICAL, rational([5, 2], [1])))
        steps = method("m", "TAB_NOINTP")
        flat = method("m", "LINEAR", scales(TO_PHYSICAL, rational([5, 0], [1])))
        half_open = self.limits("0 OPEN", "10 INFINITE")
        for user, more, rule, expected in [
                (implementation, "", internal + physical, "[0, 10]"),
                (implementation, "", physical, ""),
                (implementation, line, internal, "[0, 10]"),
                (application, "", internal + physical, "[-1, 1]"),
                (application, line, internal + physical, "[-1, 1]"),
                (application, "", internal, "[0, 10]"),
                (application, same, internal, "[0, 10]"),
                (application, line, internal, "[5, 25]"),
                (application, falling, internal, "[-15, 5]"),
                (application, line, half_open, "(5, inf)"),
                (application, falling, half_open, "(-inf, 5)"),
                (application, ratio, internal, ""),
                (application, flat, internal, ""),
                # Nobody knows what the numbers mean outside.
                (application, steps, internal, ""),
                (application, " ", internal, "")]:
            with self.subTest(user=user.__name__, rule=rule, more=more):
                content = refer("COMPU-METHOD", "m") if more else ""
                self.assertEqual(
                    self.range_of(self.constraint(rule), user, content, more), expected)

    def test_of_several_rules_the_lowest_counts(self):
        def rule(level, upper, kind="INTERNAL"):
            return (f"<CONSTR-LEVEL>{level}</CONSTR-LEVEL>" if level != "" else "") + self.limits(
                0, upper, kind)
        for rules, expected in [
                ([rule(2, 20), rule(1, 10)], "[0, 10]"), ([rule(1, 10), rule(2, 20)], "[0, 10]"),
                ([rule(1, 10), rule("", 5)], "[0, 5]"), ([rule(1, 10), rule(1, 20)], "[0, 10]"),
                ([rule("", 5), rule(-1, 3)], "[0, 3]")]:
            with self.subTest(rules=rules):
                self.assertEqual(self.range_of(self.constraint(*rules), implementation), expected)
        unit = named("UNIT", "u") + named("UNIT", "v")
        elements = unit + self.constraint(*(
            rule(level, 1, "PHYS").replace("</PHYS", refer("UNIT", name) + "</PHYS")
            for level, name in ((1, "u"), (0, "v"))))
        self.assertIn('  Unit: Unit "v"', held(elements)["/P/c"])
        self.assertEqual(shown(elements, "/P/c"), ["/P/c: data constraint of 0 types"])


class UnitTest(unittest.TestCase):
    @staticmethod
    def unit(name, factor="", offset="", content=""):
        return named("UNIT", name, content +
                     (f"<FACTOR-SI-TO-UNIT>{factor}</FACTOR-SI-TO-UNIT>" if factor else "") +
                     (f"<OFFSET-SI-TO-UNIT>{offset}</OFFSET-SI-TO-UNIT>" if offset else ""))

    def test_conversions_are_turned_round(self):
        for factor, offset, expected in [
                ("", "", ""), ("1", "0", ""), ("1", "-273.15", ", base = 273.15 + 1 x"),
                ("1.8", "-459.67", ", base = 255.37222222222223 + 0.5555555555555556 x"),
                ("1.0E-5", "0", ", base = 0 + 99999.99999999999 x"),
                ("100", "", ", base = 0 + 0.01 x"), ("-2", "3", ", base = 1.5 + -0.5 x"),
                ("0x10", "010", ", base = -0.5 + 0.0625 x")]:
            with self.subTest(factor=factor, offset=offset):
                element = self.unit("u", factor, offset)
                self.assertEqual(shown(element), [f"/P/u: unit u{expected}"])
                self.assertEqual(skips(imported(element)), {})

    def test_conversions_that_can_not_be_turned_round(self):
        for factor, offset, reason, said, lost in [
                ("0", "5", "bad-number", "The factor is 0; it is taken as 1 and the offset as 0.",
                 ("FACTOR", "OFFSET")),
                ("1e-310", "5", "out-of-range",
                 "The factor is too small; it is taken as 1 and the offset as 0.",
                 ("FACTOR", "OFFSET")),
                ("1e-300", "1e300", "out-of-range",
                 "The factor is too small; it is taken as 1 and the offset as 0.",
                 ("FACTOR", "OFFSET")),
                ("INF", "0", "bad-number", "The text (INF) is no number; it is taken as 1.",
                 ("FACTOR",)),
                ("1", "x", "bad-number", "The text (x) is no number; it is taken as 0.",
                 ("OFFSET",))]:
            with self.subTest(factor=factor, offset=offset):
                element = self.unit("u", factor, offset)
                result = imported(element)
                self.assertEqual(findings(result), [("/P/u", reason, said)])
                self.assertEqual(
                    skips(result), {(f"{name}-SI-TO-UNIT", reason): 1 for name in lost})
                self.assertEqual(shown(element), ["/P/u: unit u"])
                self.assertIn("  ConvFactor: 1", held(element)["/P/u"])

    def test_the_exponents_of_a_dimension(self):
        words = ["LENGTH", "MASS", "TIME", "CURRENT", "TEMPERATURE", "MOLAR-AMOUNT",
                 "LUMINOUS-INTENSITY"]
        def dimension(name, *exponents):
            return named("PHYSICAL-DIMENSION", name, "".join(
                f"<{word}-EXP>{exponent}</{word}-EXP>" for word, exponent in zip(words, exponents)))
        elements = (dimension("all", 1, 2, 3, 4, 5, 6, 7) + dimension("some", 1, -1, -1, 0, "1.0") +
                    dimension("none", 0, 0) + dimension("most", 2147483647, -2147483647) +
                    dimension("more", 2147483648, 1) + dimension("word", 1, "x"))
        self.assertEqual(shown(elements), [
            "/P/all: dimension L^1 M^2 T^3 I^4 Theta^5 N^6 J^7",
            "/P/more: dimension", "/P/most: dimension L^2147483647 M^-2147483647",
            "/P/none: dimension", "/P/some: dimension L^1 M^-1 T^-1 Theta^1", "/P/word: dimension"])
        said = "The exponent ({}) is no whole number; no exponent of the dimension is held."
        result = imported(elements)
        self.assertEqual(findings(result), [
            ("/P/more", "out-of-range", said.format(2147483648)),
            ("/P/word", "bad-number", said.format("x"))])
        self.assertEqual(classes(result), {"Dimension": 6 + 7})
        self.assertEqual(skips(result), {
            (f"{word}-EXP", reason): 1
            for word in ("LENGTH", "MASS") for reason in ("out-of-range", "bad-number")})

    def test_the_one_si_unit_of_a_dimension_is_its_base(self):
        of = "<PHYSICAL-DIMENSION-REF>/P/{}</PHYSICAL-DIMENSION-REF>"
        units = {"si": ("1", ""), "si2": ("", ""), "shifted": ("1", "5"), "kilo": ("1e-3", ""),
                 "broken": ("two", ""), "zero": ("0", "")}
        for names, base in [
                (["kilo", "si", "shifted"], "si"), (["si2", "kilo"], "si2"),
                (["si", "kilo", "si2"], None), (["si", "si2", "kilo"], None),
                (["kilo", "shifted"], None),
                # What can't be read is not the unit that all others are measured in.
                (["broken", "kilo"], None), (["zero", "si", "broken"], "si")]:
            with self.subTest(names):
                elements = named("PHYSICAL-DIMENSION", "d") + "".join(
                    self.unit(name, *units[name], of.format("d")) for name in names)
                objects = held(elements)
                self.assertEqual(
                    [line for line in objects["/P/d"] if line.startswith("  BaseUnit")],
                    [f'  BaseUnit: Unit "{base}"'] if base else [])
                for name in names:
                    self.assertIn('  Dimension: Dimension "d"', objects[f"/P/{name}"])
                    self.assertEqual(
                        [line for line in objects[f"/P/{name}"] if line.startswith("  ConvUnit")],
                        [f'  ConvUnit: Unit "{base}"'] if base and name != base else [])
        result = imported(self.unit("a", content=of.format("b")) + self.unit("b"))
        self.assertEqual(
            findings(result),
            [("/P/a", "wrong-dest", "The target (/P/b) is no PHYSICAL-DIMENSION.")])

    def test_the_name_to_display(self):
        element = named(
            "UNIT", "u", "<DISPLAY-NAME>m<SUP>2</SUP>/s<SUP>3</SUP><SUB>x</SUB><SUP>2</SUP><I/>"
            "</DISPLAY-NAME>")
        lines = held(element)["/P/u"]
        for line in ['  Symbol: "m/s"', '  Superscript: "2", "3"', '  Subscript: "x"']:
            self.assertIn(line, lines)
        self.assertEqual(findings(imported(element)), [
            ("/P/u", "duplicate-value", "The text (2) is there already.")])
        self.assertEqual(
            skips(imported(element)), {("SUP", "duplicate-value"): 1, ("I", "no-property"): 1})


class ConstantTest(unittest.TestCase):
    @staticmethod
    def constant(name, value):
        return named("CONSTANT-SPECIFICATION", name, f"<VALUE-SPEC>{value}</VALUE-SPEC>")

    @staticmethod
    def value(kind, content):
        return f"<{kind}-VALUE-SPECIFICATION>{content}</{kind}-VALUE-SPECIFICATION>"

    def number(self, value, label=""):
        return self.value("NUMERICAL", (f"<SHORT-LABEL>{label}</SHORT-LABEL>" if label else "") +
                          f"<VALUE>{value}</VALUE>")

    def shown_value(self, value, more=""):
        (line,) = shown(more + self.constant("c", value), "/P/c")
        return line.removeprefix("/P/c: constant ")

    def test_numbers_in_every_form(self):
        for written, expected in {
                "0x1f": "31", "0X1F": "31", "-0x10": "-16", "0b101": "5", "010": "8", "0": "0",
                "010.5": "10.5", "1E-5": "1e-05", "1e1": "10", " 7\n": "7", "+3": "3", ".5": "0.5",
                "true": "1", "false": "0", "INF": "inf", "+INF": "inf", "-INF": "-inf",
                "NaN": "nan", "2147483648": "2147483648", "-2147483648": "-2147483648",
                "1.7976931348623157e308": "1.7976931348623157e+308",
                "9007199254740992": "9007199254740992"}.items():
            with self.subTest(written):
                value = self.number(written)
                self.assertEqual(self.shown_value(value), expected)
                result = imported(self.constant("c", value))
                self.assertEqual((result.returncode, findings(result)), (0, []))
                self.assertEqual(skips(result), {})

    def test_numbers_that_are_none(self):
        for written, reason in {
                "": "bad-number", "08": "bad-number", "0x": "bad-number", "1,5": "bad-number",
                "inf": "bad-number", "TRUE": "bad-number", "--1": "bad-number", "1 2": "bad-number",
                "1e999": "out-of-range", "0x10000000000000000": "out-of-range",
                "<SYSC-REF>/P/N</SYSC-REF>": "symbolic",
                "2 * <SYSC-REF>/P/N</SYSC-REF>": "symbolic"}.items():
            with self.subTest(written):
                value = self.number(written)
                system = named("SW-SYSTEMCONST", "N")
                self.assertEqual(self.shown_value(value, system), "?")
                result = imported(system + self.constant("c", value))
                self.assertEqual(
                    [(path, found) for path, found, _ in findings(result)], [("/P/c", reason)])
                self.assertEqual(skips(result)[("VALUE", reason)], 1)
                self.assertEqual(result.returncode, 0 if reason == "symbolic" else 1)

    def test_the_kinds_of_values(self):
        elements = "<ELEMENTS>{}</ELEMENTS>"
        words = self.value("TEXT", "<VALUE>on</VALUE>")
        to_d = "<CONSTANT-REFERENCE><CONSTANT-REF>/P/{}</CONSTANT-REF></CONSTANT-REFERENCE>"
        rows = self.value("ARRAY", elements.format(
            self.value("ARRAY", elements.format(self.number(1) + self.number(2))) +
            self.value("ARRAY", elements.format(self.number(3)))))
        record = self.value("RECORD", "<FIELDS>" + self.number(1, "x") + words + "</FIELDS>")
        more = self.constant("d", self.number(4)) + named("UNIT", "u")
        for value, expected in {
                words: '"on"', to_d.format("d"): "d", to_d.format("u"): "?",
                rows: "{{1, 2}, {3}}", record: '{x = 1, "on"}', "": "?",
                self.value("ARRAY", ""): "{}", self.value("NOT-AVAILABLE", ""): "?",
                "<REFERENCE-VALUE-SPECIFICATION/>": "?"}.items():
            with self.subTest(value):
                self.assertEqual(self.shown_value(value, more), expected)
        cells = [line.strip() for line in held(self.constant("c", rows))["/P/c"]
                 if "index" in line]
        self.assertEqual(cells, [f"index: {i}" for i in (0, 1, 0, 0, 1)])
        result = imported(more + self.constant("c", to_d.format("u")))
        self.assertEqual(
            findings(result),
            [("/P/c", "wrong-dest", "The target (/P/u) is no CONSTANT-SPECIFICATION.")])
        self.assertEqual(
            skips(imported(self.constant("c", self.value("NOT-AVAILABLE", "<DEFAULT/>")))),
            {("VALUE-SPEC", "no-property"): 1, ("DEFAULT", "no-class"): 1,
             ("NOT-AVAILABLE-VALUE-SPECIFICATION", "no-class"): 1})

    @staticmethod
    def content(values, sizes="", tag="SW-VALUE-CONT", before=""):
        written = f"<SW-ARRAYSIZE>{sizes}</SW-ARRAYSIZE>" if sizes else ""
        return (f"<{tag}>{before}<UNIT-REF>/P/u</UNIT-REF>{written}"
                f"<SW-VALUES-PHYS>{values}</SW-VALUES-PHYS></{tag}>")

    def test_the_contents_of_application_values(self):
        v = "".join(f"<V>{i}</V>" for i in (1, 2, 3))
        group = "<VG><LABEL>x</LABEL>{}</VG>"
        unit = named("UNIT", "u")
        for values, sizes, expected in [
                ("<V>0x1</V>", "", "0x1"), (v, "", "3 {1 2 3}"),
                (v, "<V>3</V><VF>1</VF>", "3 x 1 {1 2 3}"),
                (group.format(v) * 2, "", "2 x 3 {1 2 3 1 2 3}"),
                (group.format(v), "<V>3</V>", "3 {1 2 3}"),
                (group.format(v) + group.format("<V>4</V>"), "", "4 {1 2 3 4}"),
                (group.format("<V>4</V>") + group.format(v), "", "4 {4 1 2 3}"),
                (group.format(v) + "<V>4</V>", "", "4 {1 2 3 4}"),
                ("<VT>on</VT><VTF><VF>2</VF></VTF><VF>1.50</VF><VTF>x</VTF>", "", "4 {on 2 1.50 x}"),
                ("<V>1</V><V>1</V>", "<V>x</V><V>2</V>", "? x 2 {1 1}"),
                ("<V>1</V><V>1</V>", "<V>-1</V>", "? {1 1}"), ("", "", "0 {}")]:
            with self.subTest(values=values, sizes=sizes):
                value = self.value(
                    "APPLICATION", "<CATEGORY>VAL_BLK</CATEGORY>" + self.content(values, sizes))
                self.assertEqual(self.shown_value(value, unit), expected)
                result = imported(unit + self.constant("c", value))
                faults = {"? x 2 {1 1}": ["bad-number"], "? {1 1}": ["out-of-range"]}
                self.assertEqual(
                    [reason for _, reason, _ in findings(result)], faults.get(expected, []))
                labels = values.count("<LABEL>")
                self.assertEqual(skips(result).get(("LABEL", "no-property"), 0), labels)
        self.assertEqual(self.shown_value(self.value("APPLICATION", "")), "{}")

    def test_the_values_of_tables(self):
        def axis(index, *values):
            index = f"<SW-AXIS-INDEX>{index}</SW-AXIS-INDEX>" if index else ""
            return self.content(
                "".join(f"<V>{value}</V>" for value in values), tag="SW-AXIS-CONT", before=index)

        axes = "<SW-AXIS-CONTS>" + axis(2, 5, 6) + axis("", 9, 9) + axis(1, 3) + "</SW-AXIS-CONTS>"
        for word, written, expected in [
                ("MAP", axes, "7 over 3 over 2 {5 6} over 2 {9 9}"), ("CURVE", "", "7"),
                ("", axes, "7 over 3 over 2 {5 6} over 2 {9 9}"), ("CUBE_4", "", "7"),
                ("VALUE", "", "7")]:
            with self.subTest(word):
                value = self.value("APPLICATION", f"<CATEGORY>{word}</CATEGORY>" + written +
                                   self.content("<V>7</V>"))
                self.assertEqual(self.shown_value(value, named("UNIT", "u")), expected)
                objects = classes(imported(named("UNIT", "u") + self.constant("c", value)))
                self.assertEqual(
                    objects.get("LookupTableSpecification", 0),
                    0 if word == "VALUE" else 4 if written else 1)


class ReferenceTest(unittest.TestCase):
    """Where a reference leads, seen at the type that a type of the same document refers to."""

    TYPE = named("IMPLEMENTATION-DATA-TYPE", "t",
                 "<CATEGORY>VALUE</CATEGORY>" + properties("<BASE-TYPE-REF{}>{}</BASE-TYPE-REF>"))

    @staticmethod
    def base(label, target, *flags, attributes=""):
        return ("<REFERENCE-BASE>" + (f"<SHORT-LABEL>{label}</SHORT-LABEL>" if label else "") +
                "".join(f"<{flag}>true</{flag}>" for flag in flags) +
                (f"<PACKAGE-REF{attributes}>{target}</PACKAGE-REF>" if target else "") +
                "</REFERENCE-BASE>")

    def said(self, reference, bases="", attributes=""):
        """The findings about a reference in /A/B, with /C/b to be found."""
        if bases:
            bases = f"<REFERENCE-BASES>{bases}</REFERENCE-BASES>"
        inner = package("B", self.TYPE.format(attributes, reference), bases)
        outer = named("AR-PACKAGE", "A", f"<AR-PACKAGES>{inner}</AR-PACKAGES>")
        with Folder() as folder:
            folder.write("f.arxml", document(outer, package("C", BYTE)))
            result = folder.run("import", "--json", "f.arxml")
        objects = classes(result)
        said = findings(result)
        is_kept = all(text.endswith("It is used.") for _, _, text in said)
        self.assertEqual(objects.get("Integer", 0), 1 if is_kept else 0)
        self.assertEqual(result.returncode, 0 if is_kept else 1)
        return [(reason, text) for _, reason, text in said]

    def test_paths_and_bases(self):
        nowhere = "The target ({}) is not in the files."
        no_base = "The reference base{} of the target (b) is not declared."
        to_c = self.base("Here", "/C")
        for reference, bases, attributes, expected in [
                ("/C/b", "", "", ""), ("\n /C/b\t", "", "", ""),
                ("/C/b", self.base("", "/C", "IS-GLOBAL"), "", ""),
                ("/C/c", "", "", nowhere.format("/C/c")), ("/c/b", "", "", nowhere.format("/c/b")),
                ("/C/b/", "", "", nowhere.format("/C/b/")), ("b", "", "", no_base.format("")),
                ("b", to_c, ' BASE="Here"', ""), ("b", to_c, "", no_base.format("")),
                ("b", to_c, ' BASE="There"', no_base.format(" (There)")),
                ("b", self.base("Here", "/C", "IS-DEFAULT"), "", ""),
                ("b", self.base("Here", "/C") + self.base("Else", "/A", "IS-DEFAULT"), "",
                 nowhere.format("b")),
                ("b", self.base("Here", "", "IS-DEFAULT", "BASE-IS-THIS-PACKAGE"), "",
                 nowhere.format("b")),
                ("t", self.base("Here", "", "BASE-IS-THIS-PACKAGE"), ' BASE="Here"', None)]:
            with self.subTest(reference=reference, bases=bases, attributes=attributes):
                said = [("dangling", expected)] if expected else []
                if expected is None:
                    said = [("wrong-dest", "The target (t) is no SW-BASE-TYPE.")]
                self.assertEqual(self.said(reference, bases, attributes), said)

    def test_the_kind_of_the_target(self):
        for dest in ["SW-BASE-TYPE", "AR-ELEMENT", "IDENTIFIABLE", "REFERRABLE", "ATP-TYPE",
                     "PACKAGEABLE-ELEMENT", "COLLECTABLE-ELEMENT"]:
            self.assertEqual(self.said("/C/b", attributes=f' DEST="{dest}"'), [])
        for dest in ["UNIT", "AUTOSAR-DATA-TYPE", "APPLICATION-DATA-TYPE", "sw-base-type"]:
            self.assertEqual(self.said("/C/b", attributes=f' DEST="{dest}"'), [
                ("wrong-dest",
                 f"The target (/C/b) is of the kind SW-BASE-TYPE; DEST says {dest}. "
                 "It is used.")])
        self.assertEqual(self.said("/C"), [
            ("wrong-dest", "The target (/C) is no SW-BASE-TYPE.")])

    def test_the_superclasses_of_data_types(self):
        primitive = application("a", "<SW-ALIGNMENT/>")
        byte = implementation("i", "<SW-ALIGNMENT/>")
        row = named("APPLICATION-ARRAY-DATA-TYPE", "r")
        for dest, fitting in {
                "AUTOSAR-DATA-TYPE": "air", "APPLICATION-DATA-TYPE": "ar",
                "APPLICATION-COMPOSITE-DATA-TYPE": "r", "APPLICATION-PRIMITIVE-DATA-TYPE": "a",
                "ABSTRACT-IMPLEMENTATION-DATA-TYPE": "i", "DATA-TYPE": ""}.items():
            for target in "air":
                with self.subTest(dest=dest, target=target):
                    result = imported(BYTE + primitive + byte + row + named(
                        "APPLICATION-RECORD-DATA-TYPE", "s", "<ELEMENTS>" + named(
                            "APPLICATION-RECORD-ELEMENT", "e",
                            f'<TYPE-TREF DEST="{dest}">/P/{target}</TYPE-TREF>') + "</ELEMENTS>"))
                    self.assertEqual(
                        [reason for _, reason, _ in findings(result)],
                        [] if target in fitting else ["wrong-dest"])

    def test_loose_references_know_their_bases_too(self):
        signal = named("I-SIGNAL", "s", '<X-REF BASE="Here">b</X-REF><Y-REF BASE="Here">c</Y-REF>'
                       '<Z-REF BASE="There">b</Z-REF>')
        with Folder() as folder:
            folder.write("f.arxml", document(
                package("A", signal, f"<REFERENCE-BASES>{self.base('Here', '/C')}<OTHER/>"
                        "</REFERENCE-BASES>"), package("C", BYTE)))
            result = folder.run("import", "--json", "f.arxml")
        self.assertEqual([said for _, _, said in findings(result)], [
            "The target (c) is not in the files.",
            "The reference base (There) of the target (b) is not declared."])

    def test_what_is_held_of_a_base(self):
        for flag, value, skipped in [
                ("IS-DEFAULT", "true", {}), ("BASE-IS-THIS-PACKAGE", "1", {}),
                ("IS-GLOBAL", "false", {}), ("IS-GLOBAL", "0", {}),
                ("IS-GLOBAL", "true", {("IS-GLOBAL", "no-property"): 1}),
                ("IS-GLOBAL", "1", {("IS-GLOBAL", "no-property"): 1}),
                ("GLOBAL-ELEMENTS", "UNIT", {("GLOBAL-ELEMENTS", "no-property"): 1})]:
            with self.subTest(flag=flag, value=value), Folder() as folder:
                base = self.base("Here", "/P", flag).replace(">true<", f">{value}<")
                folder.write("f.arxml", document(package(
                    "P", "", f"<REFERENCE-BASES>{base}</REFERENCE-BASES>")))
                self.assertEqual(skips(folder.run("import", "--json", "f.arxml")), skipped)

    def test_packages_of_one_name_merge(self):
        byte = named("IMPLEMENTATION-DATA-TYPE", "t", "<CATEGORY>VALUE</CATEGORY>" + properties(
            "<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>"))
        with Folder() as folder:
            folder.write("2.arxml", document(package("P", BYTE)))
            folder.write("1.arxml", document(package("P", byte), package("P", named("UNIT", "u"))))
            result = folder.run("import", "--json", "2.arxml", "1.arxml")
            self.assertEqual(folder.run("show", "2.arxml", "1.arxml", "/P").stdout.decode(), (
                "/P/b: base type of 1 type\n  used by /P/t\n/P/t: unsigned 8-bit integer\n/P/u: unit u\n"))
            self.assertEqual(folder.run("import", "1.arxml").returncode, 1)
        self.assertEqual(
            [file["findings"] for file in json.loads(result.stdout)["files"]], [[], []])

    def test_what_makes_two_elements_of_a_path_the_same(self):
        def constraint(interval="CLOSED", value="1", dest="UNIT", more="", uuid="a", base=""):
            return (f'<DATA-CONSTR UUID="{uuid}"><SHORT-NAME>c</SHORT-NAME><DATA-CONSTR-RULES>'
                    '<DATA-CONSTR-RULE><PHYS-CONSTRS>'
                    f'<LOWER-LIMIT INTERVAL-TYPE="{interval}">{value}</LOWER-LIMIT>'
                    f'<UNIT-REF{base} DEST="{dest}">/P/u</UNIT-REF>{more}</PHYS-CONSTRS>'
                    '</DATA-CONSTR-RULE></DATA-CONSTR-RULES></DATA-CONSTR>')
        for other, reasons in [
                (constraint(), []), (constraint(uuid="b"), []), (constraint(value=" 1\n"), []),
                (constraint(interval="OPEN"), ["duplicate-path"]),
                (constraint(value="2"), ["duplicate-path"]),
                (constraint(dest="AR-ELEMENT"), ["duplicate-path"]),
                (constraint(base=' BASE="x"'), ["duplicate-path"]),
                (constraint(more="<MAX-DIFF>1</MAX-DIFF>"), ["duplicate-path"]),
                (named("UNIT", "c"), ["duplicate-path"])]:
            with self.subTest(other):
                result = imported(named("UNIT", "u") + constraint() + other)
                self.assertEqual([reason for _, reason, _ in findings(result)], reasons)
                self.assertEqual(classes(result), {"DataConstr": 1, "Unit": 1})


class DocumentTest(unittest.TestCase):
    def run_on(self, text, *options):
        with Folder() as folder:
            folder.write("f.arxml", text)
            return folder.run(*(options or ("import", "--json")), "f.arxml")

    def test_what_stands_around_the_elements(self):
        uri = "http://autosar.org/schema/r4.0"
        content = ("<{0}AR-PACKAGES><{0}AR-PACKAGE><{0}SHORT-NAME>P</{0}SHORT-NAME>"
                   "<{0}SHORT-NAME>Q</{0}SHORT-NAME><{0}CATEGORY>STANDARD</{0}CATEGORY><{0}ELEMENTS>"
                   "<{0}UNIT><{0}SHORT-NAME>u</{0}SHORT-NAME></{0}UNIT><{0}UNIT-GROUP/>"
                   "</{0}ELEMENTS></{0}AR-PACKAGE><{0}OTHER/></{0}AR-PACKAGES><{0}ADMIN-DATA/>")
        for text in [f'<AUTOSAR xmlns="{uri}">{content.format("")}</AUTOSAR>',
                     f'<a:AUTOSAR xmlns:a="{uri}">{content.format("a:")}</a:AUTOSAR>']:
            result = self.run_on(text)
            self.assertEqual(classes(result), {"Unit": 1})
            self.assertEqual(skips(result), {
                ("SHORT-NAME", "no-property"): 1, ("CATEGORY", "no-property"): 1,
                ("UNIT-GROUP", "no-class"): 1, ("OTHER", "no-class"): 1,
                ("ADMIN-DATA", "no-property"): 1})
            self.assertEqual(self.run_on(text, "show").stdout, b"/P/u: unit u\n")

    def test_elements_of_another_namespace_mean_nothing(self):
        text = document(package("P", '<UNIT xmlns="urn:x"><SHORT-NAME>u</SHORT-NAME></UNIT>' + named(
            "UNIT", "v", '<x:FACTOR-SI-TO-UNIT xmlns:x="urn:x">2</x:FACTOR-SI-TO-UNIT>')))
        result = self.run_on(text)
        self.assertEqual(skips(result), {
            ("{urn:x}UNIT", "no-class"): 1, ("{urn:x}SHORT-NAME", "no-class"): 1,
            ("{urn:x}FACTOR-SI-TO-UNIT", "no-property"): 1})
        self.assertEqual(self.run_on(text, "show").stdout, b"/P/v: unit v\n")

    def test_texts_are_what_they_mean(self):
        text = document(package("P", named(
            "UNIT", "<!-- x -->u", "<DISPLAY-NAME><![CDATA[<m>]]>&amp;<?pi x?>&#x41;\n</DISPLAY-NAME>"
            "<FACTOR-SI-TO-UNIT>1<!-- 5 -->0</FACTOR-SI-TO-UNIT>")))
        self.assertEqual(
            self.run_on(text, "show").stdout, b"/P/u: unit <m>&A, base = 0 + 0.1 x\n")

    def test_one_fault_is_enough_to_be_strict(self):
        good = named("UNIT", "u", "<FACTOR-SI-TO-UNIT>2</FACTOR-SI-TO-UNIT>")
        method_without = method("m", "")
        for elements, is_kept in [
                (good, True), (good + method_without, True), (good + named("X-Y", "x"), True),
                (good + good.replace("2", "4"), False), (good + "<UNIT/>", False),
                (good + named("X-Y", "x", "<Z-REF>/P/z</Z-REF>"), True)]:
            with self.subTest(elements):
                result = imported(elements, "import", "--strict", "--json")
                data = json.loads(result.stdout)
                self.assertEqual(data["kept"], is_kept)
                self.assertEqual(bool(data["objects"]), is_kept)
                self.assertEqual(result.returncode, 0 if is_kept else 1)
                # The account is the same as if it was kept.
                self.assertEqual(data["files"], json.loads(imported(elements).stdout)["files"])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
