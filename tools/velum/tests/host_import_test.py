"""Runs the built program and looks at what it prints.

usage: host_import_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import collections
import json
import os
import pathlib
import re
import resource
import select
import subprocess
import sys
import unittest
import xml.parsers.expat

from host import (
    OPENING, PROGRAM, SAMPLES, Folder, document, findings, imported, named, package, properties, run,
    shown)

# Well above what any refusal needs, also under a sanitizer; far below the size of the input.
MOST_MEMORY_KB = 700_000


def report(*samples):
    return json.loads(run("import", "--json", *samples).stdout)


def elements_of(path):
    """The name of every element of a file with the place where its tag begins."""
    found = []
    parser = xml.parsers.expat.ParserCreate()
    parser.StartElementHandler = lambda name, _: found.append(
        (name, parser.CurrentLineNumber, parser.CurrentColumnNumber + 1))
    with open(path, "rb") as file:
        parser.ParseFile(file)
    return found


def counts(*samples):
    """How many objects of each class the samples give."""
    return {row["class"]: row["count"] for row in report(*samples)["objects"]}


def show(*arguments):
    """What is shown, but for what uses the objects."""
    return [line for line in run("show", *arguments).stdout.decode().splitlines()
            if not line.startswith("  used by ")]


class SampleTest(unittest.TestCase):
    DICTIONARY = ("platform.arxml", "gearbox.arxml")

    def test_every_element_is_consumed_or_skipped(self):
        names = [path.name for path in sorted(SAMPLES.glob("*.arxml"))]
        for files in [names, *([name] for name in names)]:
            for name, file in zip(files, report(*files)["files"]):
                with self.subTest(name):
                    self.assertEqual(file["file"], name)
                    elements = elements_of(SAMPLES / name)
                    counted = collections.Counter(element for element, _, _ in elements)
                    accounted = collections.Counter()
                    for entry in file["consumed"] + file["skipped"]:
                        self.assertGreater(entry["count"], 0)
                        accounted[entry["element"]] += entry["count"]
                    self.assertEqual(accounted, counted)
                    for key in ("consumed", "skipped"):
                        self.assertEqual(
                            file["elements"][key], sum(e["count"] for e in file[key]))
                    self.assertEqual(file["elements"]["met"], len(elements))
                    places = set(elements)
                    for entry in file["skipped"]:
                        first = entry["first"]
                        self.assertIn((entry["element"], first["line"], first["column"]), places)

    def test_the_text_says_the_same_as_the_json(self):
        for name in sorted(path.name for path in SAMPLES.glob("*.arxml")):
            with self.subTest(name):
                lines = run("import", name).stdout.decode().splitlines()
                words = [line.split() for line in lines]
                data = report(name)
                for row in data["objects"]:
                    self.assertIn([str(row["count"]), row["class"]], words)
                (file,) = data["files"]
                elements = file["elements"]
                self.assertIn(
                    f"{name}: {elements['met']} elements, {elements['consumed']} consumed, "
                    f"{elements['skipped']} skipped.", lines)
                for entry in file["skipped"]:
                    first = entry["first"]
                    self.assertIn(
                        [str(entry["count"]), entry["element"], entry["reason"],
                         f"{first['line']}:{first['column']}", first["path"]], words)
                text = "\n".join(lines)
                for finding in file["findings"]:
                    self.assertRegex(
                        text, re.escape(f"\n{name}:{finding['line']}:{finding['column']}: ") +
                        "(note: )?" + re.escape(f"{finding['reason']}: {finding['path']}: "
                                                f"{finding['text']}"))

    def test_the_objects_of_a_whole_dictionary(self):
        self.assertEqual(run("import", *self.DICTIONARY).returncode, 0)
        self.assertEqual(counts(*self.DICTIONARY), {
            "ApplicationValueSpecification": 1, "Axis": 10, "Boolean": 2, "Cell": 6,
            "CompuMethod": 14, "ConstantReference": 1, "ConstantSpecification": 9,
            "DataConstr": 10, "Dimension": 9, "Enumeration": 2, "EnumerationLiteral": 6,
            "EnumerationLiteralReference": 3, "FixedPoint": 3, "FloatingPoint": 9, "Integer": 12,
            "LiteralReal": 8, "LookupTableSpecification": 5, "LookupTableType": 4, "Matrix": 9,
            "MatrixValueSpecification": 3, "SharedAxisType": 2, "Slot": 3, "StructElement": 16,
            "Structure": 4, "StructureValueSpecification": 1, "SwBaseType": 14,
            "SwRecordLayout": 3, "Unit": 9, "VoidPointer": 1})

    def test_verbose_prints_every_object_once(self):
        text = run("import", "--verbose", *self.DICTIONARY).stdout.decode()
        plain = run("import", *self.DICTIONARY).stdout.decode()
        self.assertTrue(text.startswith(plain))
        heads = re.findall(r'^ *(\w+) #(\d+)(?: ".*")?$', text, re.MULTILINE)
        self.assertEqual(collections.Counter(name for name, _ in heads), counts(*self.DICTIONARY))
        self.assertEqual(len(set(heads)), len(heads))
        self.assertRegex(text, r"""
Unit #\d+ "RevolutionsPerMinute"
  Name: "RevolutionsPerMinute"
  Visibility: public
  ConvFactor: 0.016666666666666666
  ConvOffset: 0
  ConvUnit: Unit #\d+ "Hertz"
""")
        self.assertEqual(run("import", "--verbose", "--strict", "gearbox.arxml").stdout,
                         run("import", "--strict", "gearbox.arxml").stdout)

    def test_what_the_dictionary_says_is_held(self):
        lines = show(*self.DICTIONARY)
        for line in [
                "/Gearbox/ApplicationTypes/OilTemperature: unsigned 8-bit fixed point -40 + 0.5 x, "
                "[-40, 215], unit \u00b0C, by Celsius",
                # Internal limits of an application type go through its method.
                "/Gearbox/ApplicationTypes/ClutchTorque: signed 16-bit fixed point 0 + 0.125 x, "
                "[-1000, 1000], unit Nm, by Torque",
                "/Gearbox/ApplicationTypes/Slip: 32-bit float, (0, 1), unit %, by Same",
                "/Gearbox/ApplicationTypes/Angle: 64-bit float, [0, 360), unit -",
                "/Gearbox/ApplicationTypes/Wear: 64-bit float",
                "/Gearbox/ApplicationTypes/Sensor: unsigned 8-bit fixed point 0 + 0.4 x, [2, 3.2], "
                "unit %, by SensorOrError",
                "/Gearbox/ApplicationTypes/GearRatios: array [8] of 64-bit float, by Same",
                "/Gearbox/ApplicationTypes/TorqueGrid: array [3] of ClutchTorques: array [2] of "
                "ClutchTorque: signed 16-bit fixed point 0 + 0.125 x, [-1000, 1000], unit Nm, "
                "by Torque",
                "/Gearbox/CompuMethods/Celsius: computation method, Linear, unit \u00b0C, "
                "internal = (40 + 1 p) / (0.5)",
                "/Gearbox/CompuMethods/Period: computation method, RatFunc, unit 1/min, "
                "internal = (-60000) / (-1 p)",
                "/Gearbox/CompuMethods/Trimmed: computation method, RatFunc, unit %, "
                "internal = (1 p) / (1)",
                "/Gearbox/CompuMethods/Quadratic: computation method, RatFunc, unit %",
                "/Gearbox/CompuMethods/SensorOrError: computation method, LinearAndTextTable, "
                "unit %, internal = (1 p) / (0.4)",
                "/Gearbox/ImplementationTypes/Clutches: array [CLUTCHES] of uint8: "
                "unsigned 8-bit integer, [0, 255]",
                "/Gearbox/ImplementationTypes/Grid: array [3 x 4] of cell: signed 16-bit integer",
                "/Gearbox/ImplementationTypes/GridAlias: array [3 x 4] of cell: "
                "signed 16-bit integer",
                "/Gearbox/ImplementationTypes/Buffer: pointer to nothing, CONST",
                "/Gearbox/Constants/Grid: constant {{0, 1}, {10, 1}}",
                "/Gearbox/Constants/Frame: constant {id = 7, raw = 16, gear = \"Neutral\"}",
                "/Gearbox/Constants/Map: constant 3 x 2 {0 1 1 2 2 3} over 3 {1000 2000 3000} "
                "over 2 {0 100}",
                "/Platform/Units/DegreeFahrenheit: unit \u00b0F of Temperature, "
                "K = 255.37222222222223 + 0.5555555555555556 x",
                "/Platform/Units/RevolutionsPerMinute: unit 1/min of Frequency, "
                "Hz = 0 + 0.016666666666666666 x",
                "/Platform/PhysicalDimensions/Torque: dimension L^2 M^1 T^-2",
                "/Platform/Types/named16: signed 16-bit integer",
                "/Platform/Types/odd24: unsigned 24-bit integer"]:
            self.assertIn(line, lines)

    def test_one_type_is_shown_with_its_parts(self):
        folder = "/Gearbox/ImplementationTypes/"
        frame = [
            "  id       uint8: unsigned 8-bit integer, [0, 255]",
            "  raw      unsigned 16-bit integer",
            "  inner    structure",
            "    low   sint16: signed 16-bit integer, [-32768, 32767]",
            "    high  float32: 32-bit float",
            "  samples  array [5] of uint16: unsigned 16-bit integer",
            "  table    array [2 x 6] of float32: 32-bit float",
        ]
        for name in ("Frame", "FrameAlias"):
            self.assertEqual(
                show(*self.DICTIONARY, folder + name), [f"{folder}{name}: structure", *frame])
        self.assertEqual(
            show(*self.DICTIONARY, "/Gearbox/ApplicationTypes/ShiftMap"), [
                "/Gearbox/ApplicationTypes/ShiftMap: MAP of 24 values",
                "  values: Gear: unsigned 8-bit enumeration of 3, by Gears",
                "  axis 1: SpeedAxis, 6 points, input InputSpeed: 64-bit float, unit 1/min, "
                "by Period",
                "  axis 2: TorqueAxis, 4 points, input ClutchTorque: "
                "signed 16-bit fixed point 0 + 0.125 x, [-1000, 1000], unit Nm, by Torque",
                "  record layout: Map"])
        self.assertEqual(
            show(*self.DICTIONARY, "/Gearbox/ApplicationTypes/Gear"), [
                "/Gearbox/ApplicationTypes/Gear: unsigned 8-bit enumeration of 3, by Gears",
                "  refers to /Platform/Types/uint8", '  invalid value "Neutral"', "  -1 = Reverse",
                "  0 = Neutral", "  1 = FIRST"])
        self.assertEqual(
            show(*self.DICTIONARY, folder + "Frame/inner/low"),
            [f"{folder}Frame/inner/low: sint16: signed 16-bit integer, [-32768, 32767]"])
        self.assertEqual(len(show(*self.DICTIONARY, "/Platform/Units")), 9)
        result = run("show", *self.DICTIONARY, "/Gearbox/None")
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        self.assertEqual(
            result.stderr, b"velum: Nothing in the files has the path (/Gearbox/None); \"velum find\" "
            b"lists the paths.\n")

    def test_checks_of_the_dictionary(self):
        result = run("check", *self.DICTIONARY)
        self.assertEqual((result.returncode, result.stderr), (1, b""))
        issues = json.loads(run("check", "--json", *self.DICTIONARY).stdout)["issues"]
        self.assertEqual(
            [f"{i['file']}:{i['line']}:{i['column']}: {i['severity']}: {i['rule']}: {i['path']}: "
             f"{i['text']}" for i in issues], result.stdout.decode().splitlines())
        self.assertEqual([(i["rule"], i["path"]) for i in issues], [
            ("zero-factor", "/Gearbox/CompuMethods/Flat"),
            ("limits-beyond-type", "/Gearbox/ApplicationTypes/OilTemperature"),
            ("literal-beyond-type", "/Gearbox/ApplicationTypes/Gear"),
            ("limits-beyond-type", "/Gearbox/ImplementationTypes/Wheel")])

    def test_the_order_on_the_command_line_says_nothing(self):
        names = [path.name for path in SAMPLES.glob("*.arxml")]
        for command in ("import", "show", "check"):
            expected = run(command, *sorted(names)).stdout
            self.assertEqual(run(command, *sorted(names, reverse=True)).stdout, expected)
            self.assertEqual(run(command, *names, *names).stdout, expected)


class FindingTest(unittest.TestCase):
    def test_faults_are_told_and_the_rest_is_kept(self):
        result = run("import", "faulty_references.arxml")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, b"")
        lines = result.stdout.decode().splitlines()
        self.assertEqual(counts("faulty_references.arxml"), {"Integer": 1, "SwBaseType": 1})
        self.assertEqual(
            [line.removeprefix("faulty_references.arxml:")
             for line in lines if line.startswith("faulty_references.arxml:") and "skipped." not in line],
            [
                "25:17: dangling: /Faults/NoTarget: "
                "The target (/Faults/u9) is not in the files.",
                "36:17: dangling: /Faults/NoBase: "
                "The reference base of the target (u8) is not declared.",
                "41:9: dangling: /Faults/NoReference: The type refers to no SW-BASE-TYPE.",
                "51:17: wrong-dest: /Faults/WrongKind: "
                "The target (/Faults/Good) is no SW-BASE-TYPE.",
                "62:17: dangling: /Faults/ToNoTarget: "
                "No object is made of the target (/Faults/NoTarget).",
                "73:17: dangling: /Faults/Left: "
                "No object is made of the target (/Faults/Right).",
                "84:17: dangling: /Faults/Right: The type references lead back to this type.",
                "89:9: no-name: /Faults: This IMPLEMENTATION-DATA-TYPE has no SHORT-NAME.",
                "99:9: duplicate-path: /Faults/Good: "
                "Another IMPLEMENTATION-DATA-TYPE of this path counts, at "
                "faulty_references.arxml:8:9: CATEGORY is (VALUE) there and (TYPE_REFERENCE) "
                "here.",
                "114:9: duplicate-path: /Faults/u8: "
                "Another SW-BASE-TYPE of this path counts, at faulty_references.arxml:110:9: "
                "BASE-TYPE-ENCODING is (NONE) there and (2C) here.",
                "120:5: no-name: /: This package has no SHORT-NAME.",
            ])

    def test_strict_keeps_nothing_of_a_faulty_file(self):
        result = run("import", "--strict", "faulty_references.arxml", "platform.arxml")
        self.assertEqual(result.returncode, 1)
        lines = result.stdout.decode().splitlines()
        self.assertEqual(lines[0], "Nothing is kept: something is wrong in the files.")
        data = json.loads(
            run("import", "--strict", "--json", "faulty_references.arxml").stdout)
        self.assertEqual((data["kept"], data["objects"]), (False, []))
        self.assertTrue(report("faulty_references.arxml")["kept"])

    def test_numbers_that_are_none_are_told_and_left_open(self):
        sizes = {"a": "eight", "b": "99999999999", "c": "-8", "d": "0x10"}
        result = imported("".join(
            named("SW-BASE-TYPE", name, f"<BASE-TYPE-SIZE>{size}</BASE-TYPE-SIZE>"
                  "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")
            for name, size in sizes.items()))
        self.assertEqual(result.returncode, 1)
        self.assertEqual(findings(result), [
            ("/P/a", "bad-number", "The size (eight) is no number of bits."),
            ("/P/b", "out-of-range",
             "The size (99999999999) is no number of bits that an integer can have."),
            ("/P/c", "out-of-range",
             "The size (-8) is no number of bits that an integer can have.")])

    def test_units_that_cant_be_converted(self):
        elements = "".join(
            named("UNIT", name, f"<FACTOR-SI-TO-UNIT>{factor}</FACTOR-SI-TO-UNIT>")
            for name, factor in {"none": "0", "word": "two", "endless": "INF"}.items())
        elements += named(
            "PHYSICAL-DIMENSION", "half", "<TIME-EXP>-2.5</TIME-EXP><MASS-EXP>1</MASS-EXP>")
        self.assertEqual(findings(imported(elements)), [
            ("/P/none", "bad-number", "The factor is 0; it is taken as 1 and the offset as 0."),
            ("/P/word", "bad-number", "The text (two) is no number; it is taken as 1."),
            ("/P/endless", "bad-number", "The text (INF) is no number; it is taken as 1."),
            ("/P/half", "out-of-range", "The exponent (-2.5) is no whole number; "
             "no exponent of the dimension is held.")])
        self.assertEqual(imported(elements, "show").stdout.decode().splitlines(), [
            "/P/endless: unit endless", "/P/half: dimension", "/P/none: unit none",
            "/P/word: unit word"])

    def test_methods_that_cant_be_held(self):
        def method(name, direction, numerator, denominator):
            def numbers(values):
                return "".join(f"<V>{value}</V>" for value in values)
            return named(
                "COMPU-METHOD", name, "<CATEGORY>LINEAR</CATEGORY>"
                f"<{direction}><COMPU-SCALES><COMPU-SCALE><COMPU-RATIONAL-COEFFS>"
                f"<COMPU-NUMERATOR>{numbers(numerator)}</COMPU-NUMERATOR>"
                f"<COMPU-DENOMINATOR>{numbers(denominator)}</COMPU-DENOMINATOR>"
                f"</COMPU-RATIONAL-COEFFS></COMPU-SCALE></COMPU-SCALES></{direction}>")
        to_physical, to_internal = "COMPU-INTERNAL-TO-PHYS", "COMPU-PHYS-TO-INTERNAL"
        elements = "".join([
            method("flat", to_physical, [5, 0], [1]),
            method("bent", to_physical, [0, 1, 2], [1]),
            method("equal", to_internal, [1, 2, 1], [3]),
            method("survives", to_physical, [1, 1], [1]),
            method("half", to_internal, [1, 2], []),
            method("zero", to_internal, [1, 2], [0, 0]),
            method("word", to_internal, [1, "x"], [1])])
        result = imported(elements)
        turned = ("The coefficients can't be turned into a function from physical to internal "
                  "values.")
        self.assertEqual(findings(result), [
            ("/P/flat", "not-invertible", turned), ("/P/bent", "not-invertible", turned),
            ("/P/equal", "duplicate-value",
             "Two coefficients are equal, which the model can't hold; none is held."),
            ("/P/half", "bad-number", "There is no denominator."),
            ("/P/zero", "bad-number", "All coefficients of the denominator are zero."),
            ("/P/word", "bad-number", "The coefficient (x) is no number.")])
        lines = imported(elements, "show").stdout.decode().splitlines()
        self.assertEqual(lines[-3:], [
            "/P/survives: computation method, Linear, internal = (-1 + 1 p) / (1)",
            "/P/word: computation method, Linear", "/P/zero: computation method, Linear"])

    def test_literals_beyond_the_models_integers(self):
        def text(value, word):
            return (f"<COMPU-SCALE><LOWER-LIMIT>{value}</LOWER-LIMIT>"
                    f"<UPPER-LIMIT>{value}</UPPER-LIMIT>"
                    f"<COMPU-CONST><VT>{word}</VT></COMPU-CONST></COMPU-SCALE>")
        elements = (
            named("SW-BASE-TYPE", "b", "<BASE-TYPE-SIZE>32</BASE-TYPE-SIZE>"
                  "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>") +
            named("COMPU-METHOD", "m", "<CATEGORY>TEXTTABLE</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
                  "<COMPU-SCALES>" + text("0x7FFFFFFF", "0 = most") + text("0xFFFFFFFF", "beyond") +
                  text("-2147483648", "reserved") + text("0.5", "half") +
                  "</COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>") +
            named("IMPLEMENTATION-DATA-TYPE", "t", "<CATEGORY>VALUE</CATEGORY>" + properties(
                "<BASE-TYPE-REF>/P/b</BASE-TYPE-REF><COMPU-METHOD-REF>/P/m</COMPU-METHOD-REF>")))
        self.assertEqual(
            [(reason, text) for _, reason, text in findings(imported(elements))],
            [("out-of-range", f"The value ({value}) is none that a literal can have.")
             for value in ("0xFFFFFFFF", "-2147483648", "0.5")])
        self.assertEqual(
            imported(elements, "show").stdout.decode().splitlines()[-2:],
            ["/P/t: unsigned 32-bit enumeration of 1, by m", "  2147483647 = 0 = most"])

    def test_one_path_in_two_files(self):
        def unit(factor):
            return document(package(
                "P", named("UNIT", "u", f"<FACTOR-SI-TO-UNIT>{factor}</FACTOR-SI-TO-UNIT>")))
        with Folder() as folder:
            for name, factor in {"a": 2, "b": 2, "c": 4}.items():
                folder.write(f"{name}.arxml", unit(factor))
            same = json.loads(folder.run("import", "--json", "b.arxml", "a.arxml").stdout)
            other = json.loads(folder.run("import", "--json", "c.arxml", "a.arxml").stdout)
            self.assertEqual(
                folder.run("show", "c.arxml", "a.arxml").stdout,
                b"/P/u: unit u, base = 0 + 0.5 x\n")
        self.assertEqual(same["objects"], [{"class": "Unit", "count": 1}])
        self.assertEqual([file["elements"]["skipped"] for file in same["files"]], [0, 0])
        self.assertEqual(other["objects"], [{"class": "Unit", "count": 1}])
        first, second = other["files"]
        self.assertEqual(first["findings"], [])
        self.assertEqual(
            [(f["reason"], f["text"]) for f in second["findings"]],
            [("duplicate-path", "Another UNIT of this path counts, at a.arxml:2:1: "
              "FACTOR-SI-TO-UNIT is (2) there and (4) here.")])

    def test_references_in_elements_without_a_class_are_checked_too(self):
        result = imported(named("I-SIGNAL", "s", "<SYSTEM-SIGNAL-REF>/P/none</SYSTEM-SIGNAL-REF>"
                                "<OTHER-REF>/P/s</OTHER-REF>"))
        self.assertEqual(result.returncode, 0)
        self.assertEqual(
            findings(result), [("/P/s", "dangling", "The target (/P/none) is not in the files.")])

    def test_a_shared_axis_without_an_axis_is_left_out(self):
        def axis(content):
            return properties(
                f"<SW-CALPRM-AXIS-SET><SW-CALPRM-AXIS><SW-AXIS-INDEX>1</SW-AXIS-INDEX>{content}"
                "</SW-CALPRM-AXIS></SW-CALPRM-AXIS-SET>")
        def table(name, target):
            return named(
                "APPLICATION-PRIMITIVE-DATA-TYPE", name, "<CATEGORY>MAP</CATEGORY>" + axis(
                    "<SW-AXIS-GROUPED><SHARED-AXIS-TYPE-REF DEST=\"APPLICATION-PRIMITIVE-DATA-TYPE\">"
                    f"{target}</SHARED-AXIS-TYPE-REF></SW-AXIS-GROUPED>"))
        result = imported(
            named("APPLICATION-PRIMITIVE-DATA-TYPE", "empty", "<CATEGORY>COM_AXIS</CATEGORY>") +
            table("t", "/P/empty") + table("u", "/P/none"))
        self.assertEqual(findings(result), [
            ("/P/t", "wrong-dest", "By its axes the table is a CURVE, not a MAP."),
            ("/P/t", "dangling", "The shared axis (/P/empty) has no axis of its own."),
            ("/P/u", "wrong-dest", "By its axes the table is a CURVE, not a MAP."),
            ("/P/u", "dangling", "The target (/P/none) is not in the files.")])

    def test_a_long_chain_of_type_references_is_followed_once(self):
        count = 20_000
        types = "".join(
            named("IMPLEMENTATION-DATA-TYPE", f"T{i}", "<CATEGORY>TYPE_REFERENCE</CATEGORY>" +
                  properties(f"<IMPLEMENTATION-DATA-TYPE-REF>/P/T{i + 1}"
                             "</IMPLEMENTATION-DATA-TYPE-REF>")) for i in range(count))
        result = imported(
            types + named("IMPLEMENTATION-DATA-TYPE", f"T{count}",
                          properties("<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>")) +
            named("SW-BASE-TYPE", "b", "<BASE-TYPE-ENCODING>SM</BASE-TYPE-ENCODING>"))
        self.assertEqual(
            json.loads(result.stdout)["objects"],
            [{"class": "Integer", "count": count + 1}, {"class": "SwBaseType", "count": 1}])


class TypeTest(unittest.TestCase):
    """What a type becomes, where the samples don't show it."""

    BASE = named("SW-BASE-TYPE", "b", "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
                 "<BASE-TYPE-ENCODING>2C</BASE-TYPE-ENCODING>")

    @staticmethod
    def type(name, content="", category="VALUE", tail=""):
        return named("IMPLEMENTATION-DATA-TYPE", name,
                     (f"<CATEGORY>{category}</CATEGORY>" if category else "") +
                     (properties(content) if content else "") + tail)

    @staticmethod
    def application(name, content):
        return named("APPLICATION-PRIMITIVE-DATA-TYPE", name,
                     "<CATEGORY>VALUE</CATEGORY>" + properties(content))

    def test_limits_through_a_method_of_falling_slope(self):
        elements = (
            named("COMPU-METHOD", "m", "<CATEGORY>LINEAR</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
                  "<COMPU-SCALES><COMPU-SCALE><COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR><V>10</V>"
                  "<V>-2</V></COMPU-NUMERATOR><COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR>"
                  "</COMPU-RATIONAL-COEFFS></COMPU-SCALE></COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>") +
            named("DATA-CONSTR", "c", "<DATA-CONSTR-RULES><DATA-CONSTR-RULE><INTERNAL-CONSTRS>"
                  "<LOWER-LIMIT INTERVAL-TYPE=\"OPEN\">0</LOWER-LIMIT><UPPER-LIMIT>5</UPPER-LIMIT>"
                  "</INTERNAL-CONSTRS></DATA-CONSTR-RULE></DATA-CONSTR-RULES>") +
            self.application("a", "<COMPU-METHOD-REF>/P/m</COMPU-METHOD-REF>"
                             "<DATA-CONSTR-REF>/P/c</DATA-CONSTR-REF>"))
        self.assertEqual(shown(elements, "/P/a"), ["/P/a: 64-bit float, [0, 10), by m"])

    def test_a_reference_must_lead_to_what_it_says(self):
        elements = self.BASE + "".join(
            self.type(name, f"<BASE-TYPE-REF DEST=\"{dest}\">/P/b</BASE-TYPE-REF>")
            for name, dest in {"good": "SW-BASE-TYPE", "super": "AR-ELEMENT", "bad": "UNIT"}.items())
        result = imported(elements)
        self.assertEqual(findings(result), [
            ("/P/bad", "wrong-dest",
             "The target (/P/b) is of the kind SW-BASE-TYPE; DEST says UNIT. It is used.")])
        self.assertEqual(result.returncode, 0)
        self.assertEqual(json.loads(result.stdout)["objects"][0], {"class": "Integer", "count": 3})

    def test_an_alias_takes_over_method_and_constraint(self):
        elements = (
            self.BASE +
            named("COMPU-METHOD", "m", "<CATEGORY>TEXTTABLE</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
                  "<COMPU-SCALES><COMPU-SCALE><LOWER-LIMIT>1</LOWER-LIMIT><UPPER-LIMIT>1</UPPER-LIMIT>"
                  "<COMPU-CONST><VT>one</VT></COMPU-CONST></COMPU-SCALE></COMPU-SCALES>"
                  "</COMPU-INTERNAL-TO-PHYS>") +
            named("COMPU-METHOD", "same", "<CATEGORY>IDENTICAL</CATEGORY>") +
            named("COMPU-METHOD", "steps", "<CATEGORY>TAB_NOINTP</CATEGORY>") +
            self.type("t", "<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>"
                      "<COMPU-METHOD-REF>/P/m</COMPU-METHOD-REF>") +
            self.type("as_it_is", "<IMPLEMENTATION-DATA-TYPE-REF>/P/t</IMPLEMENTATION-DATA-TYPE-REF>",
                      "TYPE_REFERENCE") +
            self.type("number", "<COMPU-METHOD-REF>/P/same</COMPU-METHOD-REF>"
                      "<IMPLEMENTATION-DATA-TYPE-REF>/P/t</IMPLEMENTATION-DATA-TYPE-REF>",
                      "TYPE_REFERENCE") +
            self.type("lost", "<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>"
                      "<COMPU-METHOD-REF>/P/steps</COMPU-METHOD-REF>"))
        self.assertEqual(
            shown(elements, "/P/as_it_is"),
            ["/P/as_it_is: signed 8-bit enumeration of 1, by m", "  1 = one"])
        self.assertEqual(
            shown(elements, "/P/number"), ["/P/number: signed 8-bit integer, by same"])
        self.assertEqual(shown(elements, "/P/lost"), ["/P/lost: signed 8-bit integer"])
        self.assertEqual(
            findings(imported(elements)),
            [("/P/lost", "dangling", "No object is made of the target (/P/steps).")])

    def test_what_a_type_without_category_is(self):
        def part(name, content):
            return named("IMPLEMENTATION-DATA-TYPE-ELEMENT", name, content)
        base = properties("<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>")
        elements = self.BASE + "".join([
            self.type("array", category="", tail="<SUB-ELEMENTS>" + part(
                "e", "<ARRAY-SIZE>3</ARRAY-SIZE>" + base) + "</SUB-ELEMENTS>"),
            self.type("record", category="", tail="<SUB-ELEMENTS>" + part("e", base) +
                      part("e", base) + "</SUB-ELEMENTS>"),
            self.type("nothing", category="")])
        self.assertEqual(
            [(path, reason) for path, reason, _ in findings(imported(elements))],
            [("/P/array", "inferred"), ("/P/array/e", "inferred"), ("/P/record", "inferred"),
             ("/P/record/e", "inferred"), ("/P/record/e", "duplicate-path"),
             ("/P/record/e", "inferred")])
        self.assertEqual(
            shown(elements, "/P/array"), ["/P/array: array [3] of e: signed 8-bit integer"])
        self.assertEqual(shown(elements, "/P/record"), [
            "/P/record: structure", "  e  signed 8-bit integer", "  e  signed 8-bit integer"])
        self.assertEqual(shown(elements, "/P/nothing"), [])

    def test_a_matrix_of_one_constant_squared(self):
        size = "<ARRAY-SIZE><SYSC-REF>/P/N</SYSC-REF></ARRAY-SIZE>"
        elements = self.BASE + named("SW-SYSTEMCONST", "N") + self.type(
            "m", category="ARRAY", tail="<SUB-ELEMENTS>" + named(
                "IMPLEMENTATION-DATA-TYPE-ELEMENT", "r", "<CATEGORY>ARRAY</CATEGORY>" + size +
                "<SUB-ELEMENTS>" + named(
                    "IMPLEMENTATION-DATA-TYPE-ELEMENT", "c", "<CATEGORY>VALUE</CATEGORY>" + size +
                    properties("<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>")) + "</SUB-ELEMENTS>") +
            "</SUB-ELEMENTS>")
        self.assertEqual(
            [reason for _, reason, _ in findings(imported(elements))],
            ["symbolic", "symbolic", "duplicate-value"])
        self.assertEqual(
            shown(elements, "/P/m"), ["/P/m: array [N x N] of c: signed 8-bit integer"])

    def test_without_its_implementation_an_application_type_is_a_float(self):
        def mapping(target):
            return named("DATA-TYPE-MAPPING-SET", "s", "<DATA-TYPE-MAPS><DATA-TYPE-MAP>"
                         "<APPLICATION-DATA-TYPE-REF>/P/a</APPLICATION-DATA-TYPE-REF>"
                         f"<IMPLEMENTATION-DATA-TYPE-REF>{target}</IMPLEMENTATION-DATA-TYPE-REF>"
                         "</DATA-TYPE-MAP></DATA-TYPE-MAPS>")
        types = self.BASE + self.application("a", "<INVALID-VALUE/>") + self.type(
            "i", "<BASE-TYPE-REF>/P/b</BASE-TYPE-REF>")
        self.assertEqual(
            shown(types + mapping("/P/i"), "/P/a"), ["/P/a: signed 8-bit integer"])
        self.assertEqual(shown(types + mapping("/P/none"), "/P/a"), ["/P/a: 64-bit float"])


class RefusalTest(unittest.TestCase):
    """A file that cannot be read gives one line, on stderr only, letter for letter."""

    def refused(self, result, line):
        self.assertEqual(result.stderr.decode(), f"velum: {line}\n")
        self.assertEqual(result.stdout, b"")
        self.assertEqual(result.returncode, 1)

    def check(self, content, line):
        with Folder() as folder:
            folder.write("f.arxml", content)
            self.refused(folder.run("import", "f.arxml"), line)
            self.refused(folder.run("import", "--json", "f.arxml"), line)

    def test_files_that_cannot_be_opened_or_read(self):
        with Folder() as folder:
            self.refused(
                folder.run("import", "none.arxml"),
                "none.arxml: The file cannot be opened (No such file or directory).")
            folder.write("f.arxml", OPENING)
            self.refused(
                folder.run("import", "f.arxml/x"),
                "f.arxml/x: The file cannot be opened (Not a directory).")
            if os.geteuid() != 0:
                (folder.path / "f.arxml").chmod(0)
                self.refused(
                    folder.run("import", "f.arxml"),
                    "f.arxml: The file cannot be opened (Permission denied).")
        if pathlib.Path("/proc/self/mem").exists():
            self.refused(
                run("import", "/proc/self/mem"),
                "/proc/self/mem: The file cannot be read (Input/output error).")

    def test_files_that_are_no_xml(self):
        malformed = "The file is no well-formed XML"
        self.check("", "f.arxml:1:1: The file is empty.")
        self.check("hello", f"f.arxml:1:1: {malformed} (it does not begin with a tag).")
        self.check(
            f"{OPENING}\n  <A>\n  </B></AUTOSAR>",
            f"f.arxml:3:7: {malformed} (Opening and ending tag mismatch: A line 2 and B).")
        self.check(
            f"{OPENING}\n<AR-PACKAGES>\n", "f.arxml:3:1: The file ends before its root element does.")
        self.check(
            f"{OPENING}</AUTOSAR>\n<AUTOSAR/>",
            f"f.arxml:2:1: {malformed} (Extra content at the end of the document).")
        self.check(
            f"{OPENING}\n&e;</AUTOSAR>", f"f.arxml:2:4: {malformed} (Entity 'e' not defined).")
        self.check(
            f"{OPENING}\n<p:A/></AUTOSAR>",
            f"f.arxml:2:5: {malformed} (Namespace prefix p on A is not defined).")
        self.check(
            OPENING.encode() + b"\n\xff</AUTOSAR>",
            f"f.arxml:2:1: {malformed} (Input is not proper UTF-8, indicate encoding ! "
            "Bytes: 0xFF 0x3C 0x2F 0x41).")
        self.check(
            f'<?xml version="1.0" encoding="SHIFT_JIS"?>{OPENING}</AUTOSAR>',
            "f.arxml:1:1: The encoding (SHIFT_JIS) is none of UTF-8, UTF-16, ASCII, ISO-8859 and "
            "Windows-125x.")

    def test_documents_of_another_kind(self):
        self.check("<html/>", "f.arxml:1:1: The root element (html) is not AUTOSAR.")
        self.check(
            "<!-- c -->\n <AUTOSAR xmlns='http://autosar.org/3.2.3'/>",
            "f.arxml:2:2: unsupported-schema: The namespace (http://autosar.org/3.2.3) of the root element is not "
            "http://autosar.org/schema/r4.0.")
        self.check(
            "<AUTOSAR/>",
            "f.arxml:1:1: unsupported-schema: The namespace () of the root element is not "
            "http://autosar.org/schema/r4.0.")

    def test_a_fault_at_the_very_end_leaves_nothing(self):
        content = (SAMPLES / "integer_types.arxml").read_bytes()
        cut = content[:content.rindex(b"</AUTOSAR>")]
        line = cut.count(b"\n") + 1
        column = len(cut) - cut.rfind(b"\n")
        self.check(cut, f"f.arxml:{line}:{column}: The file ends before its root element does.")

    def test_hostile_documents(self):
        bomb = "".join(
            f'<!ENTITY e{i + 1} "{f"&e{i};" * 10}">' for i in range(9))
        self.check(
            f'<?xml version="1.0"?>\n<!DOCTYPE AUTOSAR [<!ENTITY e0 "x">{bomb}]>\n'
            f'{OPENING}<A B="&e9;">&e9;</A></AUTOSAR>',
            "f.arxml:2:1: Document type declarations are not read.")
        self.check(
            f'<!DOCTYPE AUTOSAR SYSTEM "http://127.0.0.1/x.dtd">{OPENING}</AUTOSAR>',
            "f.arxml:1:1: Document type declarations are not read.")
        names = "".join(f"<N{i}/>\n" for i in range(60_000))
        self.check(
            f"{OPENING}\n{names}</AUTOSAR>",
            "f.arxml:50002:1: There are more than 50000 different element names.")
        many = " ".join(f"a{i}='1'" for i in range(1_001))
        self.check(
            f"{OPENING}\n<A {many}/></AUTOSAR>",
            "f.arxml:2:1: This element has more than 1000 attributes.")
        depth = 100_000
        with Folder() as folder:
            folder.write("f.arxml", OPENING + "<A>" * depth + "</A>" * depth + "</AUTOSAR>")
            self.refused(
                folder.run("import", "f.arxml"),
                "f.arxml:1:814: Elements are nested more than 256 deep.")
        parts = "<A/>" * 2_000_001
        self.check(
            f"{OPENING}<AR-PACKAGES><AR-PACKAGE><ELEMENTS>\n<SW-BASE-TYPE>{parts}</SW-BASE-TYPE>"
            "</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>",
            "f.arxml:2:8000011: The element around this one is larger than 2000000 elements or "
            "100000000 bytes of text.")

    @unittest.skipUnless(pathlib.Path("/dev/stdin").exists(), "needs a file that is a pipe")
    def test_an_endless_piece_does_not_fill_the_memory(self):
        pieces = {
            "<A B='": "2:1",
            "<!--": "2:1",
            "<A>": "2:4",
            "<A><![CDATA[": "2:4",
        }
        for piece, place in pieces.items():
            with self.subTest(piece):
                process = subprocess.Popen(
                    [PROGRAM, "import", "/dev/stdin"], stdin=subprocess.PIPE,
                    stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                try:
                    process.stdin.write(f"{OPENING}\n{piece}".encode())
                    for _ in range(1000):
                        process.stdin.write(b"x" * 1_000_000)
                except BrokenPipeError:
                    pass
                try:
                    process.stdin.close()
                except BrokenPipeError:
                    pass
                out, error = process.stdout.read(), process.stderr.read()
                process.stdout.close()
                process.stderr.close()
                self.assertEqual(process.wait(), 1)
                self.assertEqual(out, b"")
                self.assertEqual(
                    error.decode(),
                    f"velum: /dev/stdin:{place}: "
                    "This tag, comment or text is longer than 10000000 bytes.\n")
        used = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
        self.assertLess(used, MOST_MEMORY_KB)

    def test_names_stay_in_their_line(self):
        with Folder() as folder:
            result = folder.run("import", "a\nb\x1b[1m.arxml")
            self.refused(
                result, "a\\x0Ab\\x1B[1m.arxml: The file cannot be opened "
                "(No such file or directory).")


class CommandLineTest(unittest.TestCase):
    def test_help_and_version(self):
        result = run("--help")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertIn(b"import", result.stdout)
        self.assertIn(b"--json", run("import", "--help").stdout)
        result = run("--version")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertRegex(result.stdout.decode(), r"\Avelum \d+\.\d+\.\d+\.\d+\n\Z")

    def test_the_tree_of_metaclasses(self):
        result = run("classes")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        lines = result.stdout.decode().splitlines()
        self.assertEqual(lines[0], "Element (abstract)")
        real = lines.index("            Real (abstract)")
        self.assertEqual(
            lines[real - 1:real + 6],
            ["          PrimitiveType (abstract)", "            Real (abstract)",
             "              Boolean", "              Enumeration", "              FixedPoint",
             "              FloatingPoint", "              Integer"])
        self.assertIn(b"- Length 1..1\n", run("classes", "--properties").stdout)

    def test_progress_is_told_at_a_terminal_when_it_takes_long(self):
        try:
            main, terminal = os.openpty()
        except (AttributeError, OSError) as reason:
            self.skipTest(f"no pseudo-terminal here: {reason}")
        with Folder() as folder:
            os.mkfifo(folder.path / "slow.arxml")
            process = subprocess.Popen(
                [PROGRAM, "import", "slow.arxml"], cwd=folder.path, stdout=subprocess.PIPE,
                stderr=terminal)
            os.close(terminal)
            with open(folder.path / "slow.arxml", "w", encoding="utf-8") as pipe:
                pipe.write(OPENING)
                # Feed it slowly until it has something to tell.
                while not select.select([main], [], [], 0.1)[0]:
                    pipe.write("<!-- " + "x" * 100_000 + " -->")
                    pipe.flush()
                pipe.write("</AUTOSAR>")
            out = process.stdout.read()
            process.stdout.close()
            self.assertEqual(process.wait(), 0)
            said = b""
            try:
                while portion := os.read(main, 10_000):
                    said += portion
            except OSError:
                pass  # how Linux tells that the other end is closed
            os.close(main)
        self.assertRegex(said, rb"\A\r\x1b\[Kvelum: \d+ MB read")
        self.assertTrue(said.endswith(b"\r\x1b[K"))
        self.assertIn(b"1 element,", out)

    def test_wrong_usage(self):
        for arguments in [[], ["import"], ["show"], ["check"], ["classes", "a"], ["exprot", "a"],
                          ["import", "--yaml", "a"], ["import", "--json", "--verbose", "a"]]:
            with self.subTest(arguments):
                result = run(*arguments)
                self.assertEqual(result.returncode, 2)
                self.assertEqual(result.stdout, b"")
                self.assertNotEqual(result.stderr, b"")

    @unittest.skipUnless(pathlib.Path("/dev/full").exists(), "needs a device that is always full")
    def test_a_report_that_cannot_be_written(self):
        with open("/dev/full", "wb") as full:
            result = subprocess.run(
                [PROGRAM, "import", "integer_types.arxml"], cwd=SAMPLES, stdout=full,
                stderr=subprocess.PIPE, check=False)
        self.assertEqual(result.returncode, 3)
        self.assertEqual(
            result.stderr, b"velum: The report cannot be written to the standard output.\n")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
