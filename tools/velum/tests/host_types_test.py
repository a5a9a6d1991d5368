"""Holds what becomes of data types, with their tables and values, to the rules of the mapping.

usage: host_types_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import sys
import unittest

from host import classes, findings, held, imported, named, properties, shown, skips


def base_type(name, encoding="NONE", size="8", more=""):
    return named(
        "SW-BASE-TYPE", name,
        (f"<BASE-TYPE-SIZE>{size}</BASE-TYPE-SIZE>" if size else "") +
        (f"<BASE-TYPE-ENCODING>{encoding}</BASE-TYPE-ENCODING>" if encoding else "") + more)


def category(word):
    return f"<CATEGORY>{word}</CATEGORY>" if word else ""


def refer(kind, target):
    return f"<{kind}-REF>/P/{target}</{kind}-REF>"


def parts(*elements):
    return f"<SUB-ELEMENTS>{''.join(elements)}</SUB-ELEMENTS>"


def implementation(name, word="VALUE", content="", tail="", tag="IMPLEMENTATION-DATA-TYPE"):
    return named(tag, name, category(word) + (properties(content) if content else "") + tail)


def part(name, word="VALUE", content="", tail=""):
    return implementation(name, word, content, tail, "IMPLEMENTATION-DATA-TYPE-ELEMENT")


def size(text):
    return f"<ARRAY-SIZE>{text}</ARRAY-SIZE>"


def alias(name, target, content=""):
    return implementation(
        name, "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", target) + content)


def application(name, content="", word="VALUE"):
    return named(
        "APPLICATION-PRIMITIVE-DATA-TYPE", name,
        category(word) + (properties(content) if content else ""))


def mapping(*pairs):
    maps = "".join(
        f"<DATA-TYPE-MAP>{refer('APPLICATION-DATA-TYPE', a)}"
        f"{refer('IMPLEMENTATION-DATA-TYPE', i)}</DATA-TYPE-MAP>" for a, i in pairs)
    return named("DATA-TYPE-MAPPING-SET", "maps", f"<DATA-TYPE-MAPS>{maps}</DATA-TYPE-MAPS>")


def text_table(name, **texts):
    scales = "".join(
        f"<COMPU-SCALE><LOWER-LIMIT>{value}</LOWER-LIMIT><UPPER-LIMIT>{value}</UPPER-LIMIT>"
        f"<COMPU-CONST><VT>{text}</VT></COMPU-CONST></COMPU-SCALE>"
        for text, value in texts.items())
    return named(
        "COMPU-METHOD", name, "<CATEGORY>TEXTTABLE</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
        f"<COMPU-SCALES>{scales}</COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>")


def line(name, offset, slope, word="LINEAR"):
    return named(
        "COMPU-METHOD", name, f"<CATEGORY>{word}</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
        "<COMPU-SCALES><COMPU-SCALE><COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR>"
        f"<V>{offset}</V><V>{slope}</V></COMPU-NUMERATOR><COMPU-DENOMINATOR><V>1</V>"
        "</COMPU-DENOMINATOR></COMPU-RATIONAL-COEFFS></COMPU-SCALE></COMPU-SCALES>"
        "</COMPU-INTERNAL-TO-PHYS>")


BYTE = base_type("b") + implementation("byte", "VALUE", refer("BASE-TYPE", "b"))


class EncodingTest(unittest.TestCase):
    ROWS = [
        # encoding, size, native declaration, what a VALUE type of it is
        ("NONE", "8", "", "unsigned 8-bit integer"),
        ("NONE", "1", "", "unsigned 1-bit integer"),
        ("NONE", "0x0C", "", "unsigned 12-bit integer"),
        ("NONE", "", "", "unsigned integer"),
        ("2C", "64", "", "signed 64-bit integer"),
        ("1C", "16", "", "signed 16-bit integer"),
        ("SM", "16", "", "signed 16-bit integer"),
        ("UTF-8", "8", "", "unsigned 8-bit integer"),
        ("UTF-16", "16", "", "unsigned 16-bit integer"),
        ("UCS-2", "16", "", "unsigned 16-bit integer"),
        ("ISO-8859-15", "8", "", "unsigned 8-bit integer"),
        ("WINDOWS-1252", "8", "", "unsigned 8-bit integer"),
        ("", "32", "", "unsigned 32-bit integer"),
        ("sint8", "8", "", "signed 8-bit integer"),
        ("int64", "64", "", "signed 64-bit integer"),
        ("uint16", "16", "", "unsigned 16-bit integer"),
        ("uint32", "32", "signed long", "signed 32-bit integer"),
        ("IEEE754", "64", "", "64-bit float"),
        ("IEEE754", "32", "", "32-bit float"),
        ("IEEE754", "16", "", None),
        ("IEEE754", "", "", None),
        ("BOOLEAN", "8", "", "boolean, [0, 1]"),
        ("VOID", "8", "", None),
        ("BCD-P", "8", "", None),
        ("uint24", "24", "", None),
    ]

    @classmethod
    def setUpClass(cls):
        cls.elements = "".join(
            base_type(f"b{i}", encoding, bits,
                      f"<NATIVE-DECLARATION>{native}</NATIVE-DECLARATION>" if native else "") +
            implementation(f"t{i}", "VALUE", refer("BASE-TYPE", f"b{i}"))
            for i, (encoding, bits, native, _) in enumerate(cls.ROWS))

    def test_the_type_follows_from_the_encoding(self):
        lines = dict(line.split(": ", 1) for line in shown(self.elements))
        for i, (*row, expected) in enumerate(self.ROWS):
            with self.subTest(row):
                self.assertEqual(lines.get(f"/P/t{i}"), expected)

    def test_what_is_guessed_is_told(self):
        guessed = [i for i, (encoding, *_) in enumerate(self.ROWS)
                   if encoding in ("", "sint8", "int64", "uint16", "uint32")]
        result = imported(self.elements)
        self.assertEqual(result.returncode, 0)
        self.assertEqual(
            [(path, reason) for path, reason, _ in findings(result)],
            [(f"/P/b{i}", "inferred") for i in guessed])

    def test_what_is_not_held_is_told(self):
        skipped = skips(imported(self.elements))
        # Seven codes that the model has no place for, and those of the five types that are none.
        self.assertEqual(skipped[("BASE-TYPE-ENCODING", "no-property")], 7 + 5)
        # The size of the boolean, and those that four of the five have.
        self.assertEqual(skipped[("BASE-TYPE-SIZE", "no-property")], 1 + 4)
        self.assertEqual(skipped[("IMPLEMENTATION-DATA-TYPE", "no-class")], 5)
        self.assertNotIn(("NATIVE-DECLARATION", "no-property"), skipped)

    def test_the_greatest_size_stands_in_for_the_size(self):
        most = "<MAX-BASE-TYPE-SIZE>24</MAX-BASE-TYPE-SIZE>"
        elements = "".join(
            base_type(f"b{bits}", "2C", bits, most + category("VARIABLE_LENGTH")) +
            implementation(f"t{bits}", "VALUE", refer("BASE-TYPE", f"b{bits}"))
            for bits in ("", "16"))
        lines = shown(elements)
        self.assertIn("/P/t: signed 24-bit integer", lines)
        self.assertIn("/P/t16: signed 16-bit integer", lines)
        self.assertEqual(skips(imported(elements)), {
            ("MAX-BASE-TYPE-SIZE", "no-property"): 1, ("CATEGORY", "no-property"): 2})

    def test_a_boolean_stays_one_whatever_its_method(self):
        elements = (
            base_type("b", "BOOLEAN") + base_type("f", "IEEE754", "32") +
            text_table("m", off=0, on=1) + "".join(
                implementation(name, "VALUE", refer("BASE-TYPE", base) + refer("COMPU-METHOD", "m"))
                for name, base in {"truth": "b", "real": "f"}.items()))
        lines = shown(elements)
        self.assertIn("/P/truth: boolean, [0, 1], by m", lines)
        self.assertIn("/P/real: 32-bit float, by m", lines)


class ImplementationTypeTest(unittest.TestCase):
    def test_other_categories_have_no_class_and_can_be_no_target(self):
        words = ["UNION", "FUNCTION_REFERENCE", "STRING", "VECTOR", "ASSOCIATIVE_MAP", "VARIANT"]
        elements = BYTE + "".join(
            implementation(word, word) + alias(f"to_{word}", word) for word in words)
        elements += implementation("s", "STRUCTURE", tail=parts(
            part("other", "UNION", tail=parts(part("x"))),
            part("to_other", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", "UNION")),
            part("to_none", "TYPE_REFERENCE")))
        elements += implementation("m", "ARRAY", tail=parts(
            part("e", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", "VECTOR"), size(2))))
        result = imported(elements)
        self.assertEqual(classes(result), {
            "Integer": 1, "Matrix": 1, "StructElement": 3, "Structure": 1, "SwBaseType": 1})
        no_object = "No object is made of the target (/P/{})."
        self.assertEqual(findings(result), [
            *((f"/P/to_{word}", "dangling", no_object.format(word)) for word in words),
            ("/P/s/to_none", "dangling", "The element refers to no IMPLEMENTATION-DATA-TYPE.")])
        self.assertEqual(shown(elements, "/P/s"), [
            "/P/s: structure", "  other     of an unknown type", "  to_other  of an unknown type (/P/UNION)",
            "  to_none   of an unknown type"])
        self.assertEqual(
            shown(elements, "/P/m"), ["/P/m: array [2] of an unknown type (/P/VECTOR)"])

    def test_a_reference_is_what_the_end_of_its_chain_is(self):
        elements = (
            BYTE + text_table("m", one=1) + named("COMPU-METHOD", "same", category("IDENTICAL")) +
            alias("first", "second") + alias("second", "byte", refer("COMPU-METHOD", "m")) +
            alias("third", "first", refer("COMPU-METHOD", "same")) + implementation(
                "value", "VALUE", refer("IMPLEMENTATION-DATA-TYPE", "byte")) + implementation(
                    "pointer", "DATA_REFERENCE",
                    "<SW-IMPL-POLICY>CONST</SW-IMPL-POLICY><SW-POINTER-TARGET-PROPS>"
                    "<TARGET-CATEGORY>VALUE</TARGET-CATEGORY>" +
                    properties(refer("BASE-TYPE", "b")) + "</SW-POINTER-TARGET-PROPS>") +
            alias("other", "pointer"))
        self.assertEqual(classes(imported(elements)), {
            "CompuMethod": 2, "Enumeration": 2, "EnumerationLiteral": 2, "Integer": 3,
            "SwBaseType": 1, "VoidPointer": 2})
        objects = held(elements)
        for path, target in {
                "/P/first": 'Enumeration "second"', "/P/second": 'Integer "byte"',
                "/P/third": 'Enumeration "first"', "/P/value": 'Integer "byte"'}.items():
            self.assertIn(f"  Reference: {target}", objects[path])
        self.assertIn("  CompuMethod: CompuMethod \"m\"", objects["/P/first"])
        self.assertIn("  CompuMethod: CompuMethod \"same\"", objects["/P/third"])
        for path in ("/P/pointer", "/P/other"):
            self.assertEqual(shown(elements, path), [f"{path}: pointer to b, CONST"])
        skipped = skips(imported(elements))
        for name in ("TARGET-CATEGORY", "IMPLEMENTATION-DATA-TYPE-REF"):
            self.assertEqual(skipped[(name, "no-property")], 1)

    def test_what_an_alias_takes_over(self):
        def constraint(name, most):
            return named("DATA-CONSTR", name, "<DATA-CONSTR-RULES><DATA-CONSTR-RULE>"
                         f"<INTERNAL-CONSTRS><UPPER-LIMIT>{most}</UPPER-LIMIT></INTERNAL-CONSTRS>"
                         "</DATA-CONSTR-RULE></DATA-CONSTR-RULES>")

        wide = base_type("w", "2C", "16") + implementation(
            "word", "VALUE", refer("BASE-TYPE", "w") + refer("DATA-CONSTR", "ten"))
        element = part("e", "VALUE", refer("BASE-TYPE", "b"), size(3))
        elements = BYTE + constraint("ten", 10) + constraint("five", 5) + wide + "".join([
            alias("same", "word"), alias("own", "word", refer("DATA-CONSTR", "five")),
            alias("over", "own"), implementation(
                "both", "VALUE",
                refer("BASE-TYPE", "b") + refer("IMPLEMENTATION-DATA-TYPE", "word")),
            alias("row2", "row1"), alias("row1", "row"),
            implementation("row", "ARRAY", tail=parts(element)),
            alias("pair2", "pair1"), alias("pair1", "pair"),
            implementation("pair", "STRUCTURE", tail=parts(element))])
        word = "signed 16-bit integer, (-inf, {}]"
        for name, expected in {
                "same": [word.format(10)], "own": [word.format(5)], "over": [word.format(5)],
                # What is written comes before what is referred to.
                "both": ["unsigned 8-bit integer"],
                "row2": ["array [3] of e: unsigned 8-bit integer"],
                "pair2": ["structure", "  e  array [3] of unsigned 8-bit integer"]}.items():
            with self.subTest(name):
                self.assertEqual(
                    shown(elements, f"/P/{name}"), [f"/P/{name}: {expected[0]}", *expected[1:]])

    def test_the_sizes_of_arrays(self):
        def array(name, *sizes, end="byte"):
            inner = "".join(size(text) for text in sizes[-1:])
            tail = part("e", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", end), inner)
            for text in reversed(sizes[:-1]):
                tail = part("e", "ARRAY", tail=size(text) + parts(tail))
            return implementation(name, "ARRAY", tail=parts(tail))

        elements = BYTE + "".join([
            array("a", "010"), array("b1", "0x10", "3", "2"), array("c", "many", "4"),
            array("d", "-4"), array("e", "0"), array("f"), array("g", "2147483648"),
            array("h", "2", end="a"), array("j", "3", "3"), implementation("i", "ARRAY")])
        of = " of byte: unsigned 8-bit integer"
        lines = shown(elements)
        for text in [
                "a: array [8]" + of, "b1: array [16 x 3 x 2]" + of, "c: array [? x 4]" + of,
                "d: array [?]" + of, "e: array [0]" + of, "f: array [?]" + of,
                "g: array [?]" + of, "h: array [2] of a: array [8]" + of,
                "j: array [3 x 3]" + of,
                "i: array [?] of an unknown type"]:
            self.assertIn(f"/P/{text}", lines)
        said = "The size ({}) is no number of elements."
        self.assertEqual(findings(imported(elements)), [
            ("/P/c/e", "bad-number", said.format("many")),
            ("/P/d/e", "out-of-range", said.format("-4")),
            ("/P/g/e", "out-of-range", said.format("2147483648"))])

    def test_sizes_that_are_constants(self):
        def of(name):
            return size(f"<SYSC-REF>/P/{name}</SYSC-REF>")

        elements = BYTE + named("SW-SYSTEMCONST", "N") + named("SW-SYSTEMCONST", "M") + (
            implementation("a", "ARRAY", tail=parts(part("x", "ARRAY", tail=of("N") + parts(
                part("y", "ARRAY", tail=size(4) + parts(
                    part("z", "VALUE", refer("BASE-TYPE", "b"), of("M")))))))))
        self.assertEqual(
            shown(elements, "/P/a"), ["/P/a: array [N x 4 x M] of z: unsigned 8-bit integer"])
        result = imported(elements)
        self.assertEqual(result.returncode, 0)
        self.assertEqual(findings(result), [
            ("/P/a/x", "symbolic", "The size is the system constant (N)."),
            ("/P/a/x/y/z", "symbolic", "The size is the system constant (M).")])
        lines = held(elements)["/P/a"]
        self.assertIn("  Dimensions: 0, 4, 0", lines)
        self.assertIn('  SymbolicDimensions: "N", "M"', lines)

    def test_arrays_that_lead_back_to_themselves(self):
        def array(name, target):
            return implementation(name, "ARRAY", tail=parts(part(
                "e", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", target), size(2))))

        elements = array("a", "a") + array("b", "c") + array("c", "b") + implementation(
            "s", "STRUCTURE", tail=parts(
                part("x", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", "t")))) + array(
                    "t", "s")
        two = "array [2] of "
        self.assertEqual(shown(elements), [
            f"/P/a: {two}a: ...", "  ...", f"/P/b: {two}c: {two}b: ...", "  ...",
            f"/P/c: {two}b: {two}c: ...", "  ...", "/P/s: structure", f"  x  t: {two}s: structure",
            "    ...", f"/P/t: {two}s: structure", f"  x  t: {two}s: structure", "    ..."])

    def test_a_small_file_does_not_make_a_large_text(self):
        def structure(name, *members):
            return implementation(name, "STRUCTURE", tail=parts(*(
                part(f"m{i}", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", target))
                for i, target in enumerate(members))))

        deep = 1000
        rows = "".join(
            implementation(f"a{i}", "ARRAY", tail=parts(part(
                "e", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", f"a{i + 1}"), size(1))))
            for i in range(deep))
        chain = "".join(structure(f"s{i}", f"s{i + 1}") for i in range(deep))
        lines = shown(BYTE + chain + structure(f"s{deep}", "byte"), "/P/s0")
        self.assertEqual([len(lines), lines[-1]], [1 + 64 + 1, "  " * 65 + "..."])
        lines = shown(BYTE + chain + structure(f"s{deep}", "byte"), f"/P/s{deep - 63}")
        self.assertEqual(lines[-1], "  " * 64 + "m0  byte: unsigned 8-bit integer")
        line, rest = shown(BYTE + rows + alias(f"a{deep}", "byte"), "/P/a0")
        self.assertEqual((line.count("array"), line[-5:], rest), (64, ": ...", "  ..."))
        doubled = "".join(structure(f"s{i}", f"s{i + 1}", f"s{i + 1}") for i in range(40))
        lines = shown(BYTE + doubled + structure("s40", "byte"), "/P/s0")
        self.assertGreater(len(lines), 10_000)
        self.assertLess(len(lines), 10_000 + 40 * 4)

    def test_what_a_member_is(self):
        to_byte = refer("IMPLEMENTATION-DATA-TYPE", "byte")
        elements = BYTE + implementation("s", "STRUCTURE", tail=parts(
            part("named", "TYPE_REFERENCE", to_byte),
            part("some", "TYPE_REFERENCE", to_byte, size(4)),
            part("value", "VALUE", refer("BASE-TYPE", "b")),
            part("values", "VALUE", refer("BASE-TYPE", "b"), size(3)),
            part("inner", "STRUCTURE", tail=parts(part("x", "VALUE", refer("BASE-TYPE", "b")))),
            part("grid", "ARRAY", tail=size(2) + parts(
                part("row", "TYPE_REFERENCE", to_byte, size(5)))),
            part("at", "DATA_REFERENCE"),
            # An array without parts is what it refers to, one with parts what they are.
            part("alias", "ARRAY", to_byte),
            part("parts", "ARRAY", refer("IMPLEMENTATION-DATA-TYPE", "s"),
                 parts(part("e", "VALUE", refer("BASE-TYPE", "b"), size(7)))),
            part("self", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", "s"))))
        self.assertEqual(shown(elements, "/P/s"), [
            "/P/s: structure", "  named   byte: unsigned 8-bit integer",
            "  some    array [4] of byte: unsigned 8-bit integer",
            "  value   unsigned 8-bit integer", "  values  array [3] of unsigned 8-bit integer",
            "  inner   structure", "    x  unsigned 8-bit integer",
            "  grid    array [2 x 5] of byte: unsigned 8-bit integer", "  at      pointer",
            "  alias   byte: unsigned 8-bit integer",
            "  parts   array [7] of e: unsigned 8-bit integer", "  self    s: structure",
            "    ..."])
        self.assertEqual(findings(imported(elements)), [])
        lines = held(elements)["/P/s"]
        place = lines.index('    StructElement "some"')
        self.assertEqual(lines[place + 3:place + 6], [
            "      InlineType:", '        Matrix "some"', '          Name: "some"'])
        self.assertIn('      Type: Integer "byte"', lines)

    def test_how_references_to_types_go_wrong(self):
        elements = BYTE + application("a") + "".join([
            alias("to_application", "a"), alias("to_base", "b"),
            implementation("to_nothing", "TYPE_REFERENCE", "<SW-ALIGNMENT>8</SW-ALIGNMENT>"),
            implementation("empty", "TYPE_REFERENCE", "<IMPLEMENTATION-DATA-TYPE-REF/>"),
            alias("itself", "itself"), alias("into", "itself"), implementation(
                "method", "VALUE", refer("BASE-TYPE", "b") + "<COMPU-METHOD-REF/>")])
        self.assertEqual(findings(imported(elements)), [
            ("/P/to_application", "wrong-dest",
             "The target (/P/a) is no IMPLEMENTATION-DATA-TYPE."),
            ("/P/to_base", "wrong-dest", "The target (/P/b) is no IMPLEMENTATION-DATA-TYPE."),
            ("/P/to_nothing", "dangling", "The type refers to no IMPLEMENTATION-DATA-TYPE."),
            ("/P/empty", "dangling", "The reference is empty."),
            ("/P/itself", "dangling", "The type references lead back to this type."),
            ("/P/into", "dangling", "No object is made of the target (/P/itself)."),
            ("/P/method", "dangling", "The reference is empty.")])
        self.assertEqual(
            classes(imported(elements)), {"FloatingPoint": 1, "Integer": 2, "SwBaseType": 1})

    def test_an_invalid_value_is_of_its_type(self):
        def number(value, label=""):
            return (f"<NUMERICAL-VALUE-SPECIFICATION>{label}<VALUE>{value}</VALUE>"
                    "</NUMERICAL-VALUE-SPECIFICATION>")

        def label(name):
            return f"<SHORT-LABEL>{name}</SHORT-LABEL>"

        def array(*values):
            return ("<ARRAY-VALUE-SPECIFICATION><ELEMENTS>" + "".join(values) +
                    "</ELEMENTS></ARRAY-VALUE-SPECIFICATION>")

        def text(word):
            return (f"<TEXT-VALUE-SPECIFICATION><VALUE>{word}</VALUE>"
                    "</TEXT-VALUE-SPECIFICATION>")

        def invalid(value):
            return f"<INVALID-VALUE>{value}</INVALID-VALUE>"

        record = "<RECORD-VALUE-SPECIFICATION><FIELDS>{}</FIELDS></RECORD-VALUE-SPECIFICATION>"
        base = refer("BASE-TYPE", "b")
        cell = part("c", "VALUE", base, size(3))
        elements = (
            BYTE + text_table("m", off=0, on=1) +
            implementation("e", "VALUE",
                           base + refer("COMPU-METHOD", "m") + invalid(text("on"))) +
            implementation("f", "VALUE",
                           base + refer("COMPU-METHOD", "m") + invalid(text("other"))) +
            implementation("grid", "ARRAY", invalid(array(
                array(number(1), number(2), number(3)), array(number(4), number(5), number(6)))),
                           parts(part("r", "ARRAY", tail=size(2) + parts(cell)))) +
            implementation("row", "ARRAY", tail=parts(cell)) +
            implementation("cube", "ARRAY", invalid(array(
                array(array(number(1), number(2))), array(array(number(3))))),
                           parts(part("p", "ARRAY", tail=size(2) + parts(
                               part("r", "TYPE_REFERENCE",
                                    refer("IMPLEMENTATION-DATA-TYPE", "row"), size(1)))))) +
            implementation("rows", "ARRAY", invalid(array(
                array(number(1), number(2)), array(number(3)))),
                           parts(part("r", "TYPE_REFERENCE",
                                      refer("IMPLEMENTATION-DATA-TYPE", "row"), size(2)))) +
            implementation("s", "STRUCTURE", invalid(record.format(
                number(1, label("y")) + number(2, label("x")) + number(3) + number(4))),
                           parts(part("x", "VALUE", base), part("y", "VALUE", base),
                                 part("z", "VALUE", base))))
        objects = held(elements)

        def values_of(path, key):
            return [text.strip() for text in objects[path] if text.strip().startswith(key)]

        self.assertIn('Value: EnumerationLiteral "on"', values_of("/P/e", "Value: Enum"))
        self.assertEqual(values_of("/P/f", "Value: Enum"), [])
        self.assertIn('LiteralText: "other"', values_of("/P/f", "LiteralText"))
        # The cells of one matrix are counted through, those of a matrix of matrices aren't.
        self.assertEqual(values_of("/P/grid", "index"), [f"index: {i}" for i in range(6)])
        self.assertEqual(len(values_of("/P/grid", "MatrixValueSpecification")), 1)
        for path in ("/P/rows", "/P/cube"):
            self.assertEqual(
                values_of(path, "index"), [f"index: {i}" for i in (0, 1, 0, 0, 1)])
            self.assertEqual(len(values_of(path, "MatrixValueSpecification")), 3)
        # By its label, or else by its place; beyond the last member there is none.
        self.assertEqual(values_of("/P/s", "structElement"), [
            f'structElement: StructElement "{name}"' for name in "yxz"])
        self.assertEqual(values_of("/P/s", "Slot"), ['Slot "y"', 'Slot "x"', "Slot", "Slot"])
        self.assertEqual(findings(imported(elements)), [])


class ApplicationTypeTest(unittest.TestCase):
    def test_the_mapping_decides(self):
        methods = "".join([
            line("half", 1, 0.5), line("scaled", 0, 2, "SCALE_LINEAR"), line("flat", 3, 0),
            line("ratio", 0, 2, "RAT_FUNC"), named("COMPU-METHOD", "same", category("IDENTICAL")),
            text_table("words", no=0, yes=1)])
        bases = "".join([
            base_type("i16", "2C", "16"), base_type("truth", "BOOLEAN"),
            base_type("single", "IEEE754", "32"), base_type("tiny", "IEEE754", "16"),
            implementation("structure", "STRUCTURE"), implementation("union", "UNION"), *(
                implementation(f"{name}_t", "VALUE", refer("BASE-TYPE", name))
                for name in ("i16", "truth", "single", "tiny"))])
        fixed = "signed 16-bit fixed point "
        rows = [
            # mapped to, method, what it is
            ("i16_t", "half", fixed + "1 + 0.5 x, by half"),
            ("i16_t", "scaled", fixed + "0 + 2 x, by scaled"),
            ("i16_t", "flat", "signed 16-bit integer, by flat"),
            ("i16_t", "ratio", "signed 16-bit integer, by ratio"),
            ("i16_t", "same", "signed 16-bit integer, by same"),
            ("i16_t", "", "signed 16-bit integer"),
            ("i16_t", "words", "signed 16-bit enumeration of 2, by words"),
            ("truth_t", "half", "boolean, [0, 1], by half"),
            ("single_t", "half", "32-bit float, by half"),
            ("tiny_t", "half", "64-bit float, by half"),
            ("structure", "half", "64-bit float, by half"),
            ("union", "", "64-bit float"),
            ("none", "half", "64-bit float, by half"),
            ("", "half", "64-bit float, by half"),
            ("", "words", "signed 32-bit enumeration of 2, by words"),
        ]
        elements = methods + bases + "".join(
            application(f"a{i}", refer("COMPU-METHOD", method) if method else "<SW-ALIGNMENT/>")
            for i, (_, method, _) in enumerate(rows))
        elements += mapping(*((f"a{i}", row[0]) for i, row in enumerate(rows) if row[0]))
        references = {"i16_t": "Integer", "truth_t": "Boolean", "single_t": "FloatingPoint"}
        lines = dict(text.split(": ", 1) for text in shown(elements) if text[0] == "/")
        objects = held(elements)
        for i, (target, method, expected) in enumerate(rows):
            with self.subTest(target=target, method=method):
                self.assertEqual(lines[f"/P/a{i}"], expected)
                self.assertIn("  IsApplication: true", objects[f"/P/a{i}"])
                self.assertEqual(
                    [text for text in objects[f"/P/a{i}"] if text.startswith("  Reference")],
                    [f'  Reference: {references[target]} "{target}"'] if target in references
                    else [])
        self.assertIn("  FractionLength: 0|bit", objects["/P/a0"])

    def test_the_first_mapping_counts(self):
        elements = (
            BYTE + base_type("w", "2C", "16") +
            implementation("word", "VALUE", refer("BASE-TYPE", "w")) + application("a") +
            mapping(("a", "byte"), ("a", "word")))
        self.assertEqual(shown(elements, "/P/a"), ["/P/a: unsigned 8-bit integer"])
        self.assertEqual(skips(imported(elements))[("IMPLEMENTATION-DATA-TYPE-REF", "no-property")], 1)

    def test_the_metaclass_of_each_category(self):
        expected = {
            "VALUE": "FloatingPoint", "": "FloatingPoint", "BOOLEAN": "Boolean",
            "VAL_BLK": "Matrix", "CURVE": "LookupTableType", "CUBE_5": "LookupTableType",
            "COM_AXIS": "SharedAxisType", "RES_AXIS": "SharedAxisType",
            "CURVE_AXIS": "SharedAxisType", "STRING": None, "value": None}
        for word, metaclass in expected.items():
            with self.subTest(word):
                result = imported(application("a", word=word))
                objects = classes(result)
                if word == "VAL_BLK":
                    self.assertEqual(objects.pop("FloatingPoint"), 1)
                self.assertEqual(objects, {metaclass: 1} if metaclass else {})
                if metaclass == "SharedAxisType":
                    self.assertEqual(
                        skips(result),
                        {} if word == "COM_AXIS" else {("CATEGORY", "no-property"): 1})
        self.assertEqual(findings(imported(application("a", word=""))), [
            ("/P/a", "inferred", "The type has no category; it is taken as VALUE.")])

    def test_blocks_of_values(self):
        one = "<SW-VALUE-BLOCK-SIZE>{}</SW-VALUE-BLOCK-SIZE>"
        many = ("<SW-VALUE-BLOCK-SIZE-MULTS><SW-VALUE-BLOCK-SIZE-MULT>3</SW-VALUE-BLOCK-SIZE-MULT>"
                "<SW-VALUE-BLOCK-SIZE-MULT>4</SW-VALUE-BLOCK-SIZE-MULT>"
                "</SW-VALUE-BLOCK-SIZE-MULTS>")
        elements = BYTE + text_table("m", one=1) + "".join(
            application(name, content, "VAL_BLK") for name, content in {
                "a": one.format(6), "c": one.format(12) + many, "d": refer("BASE-TYPE", "b"),
                "e": one.format("x") + refer("COMPU-METHOD", "m")}.items())
        lines = shown(elements)
        for text in ["a: array [6] of 64-bit float", "c: array [3 x 4] of 64-bit float",
                     "d: array [?] of unsigned 8-bit integer",
                     "e: array [?] of signed 32-bit enumeration of 1, by m"]:
            self.assertIn(f"/P/{text}", lines)
        self.assertEqual(skips(imported(elements)), {
            ("SW-VALUE-BLOCK-SIZE", "no-property"): 1, ("SW-VALUE-BLOCK-SIZE", "bad-number"): 1})

    def test_arrays_and_records(self):
        def array(name, target, number):
            return named(
                "APPLICATION-ARRAY-DATA-TYPE", name, "<CATEGORY>ARRAY</CATEGORY>" + named(
                    "ELEMENT", "e", "<CATEGORY>VALUE</CATEGORY>"
                    f"<TYPE-TREF>/P/{target}</TYPE-TREF><ARRAY-SIZE-SEMANTICS>{number[0]}"
                    "</ARRAY-SIZE-SEMANTICS>"
                    f"<MAX-NUMBER-OF-ELEMENTS>{number[1]}</MAX-NUMBER-OF-ELEMENTS>"))

        elements = (
            BYTE + application("x") + application("text", word="STRING") +
            array("row", "x", ("FIXED-SIZE", 3)) + array("rows", "row", ("VARIABLE-SIZE", 2)) +
            array("texts", "text", ("FIXED-SIZE", 1)) + named(
                "APPLICATION-RECORD-DATA-TYPE", "r", category("STRUCTURE") + "<ELEMENTS>" +
                named("APPLICATION-RECORD-ELEMENT", "one", "<TYPE-TREF>/P/x</TYPE-TREF>") +
                named("APPLICATION-RECORD-ELEMENT", "two", "<TYPE-TREF>/P/rows</TYPE-TREF>") +
                named("APPLICATION-RECORD-ELEMENT", "three", "<TYPE-TREF>/P/b</TYPE-TREF>") +
                "</ELEMENTS>") + implementation("list", "ARRAY", tail=parts(
                    part("e", "TYPE_REFERENCE", refer("IMPLEMENTATION-DATA-TYPE", "byte"),
                         size(3)))) + mapping(("row", "list")))
        self.assertEqual(shown(elements, "/P/r"), [
            "/P/r: structure", "  one    x: 64-bit float",
            "  two    rows: array [2] of row: array [3] of x: 64-bit float",
            "  three  of an unknown type (/P/b)"])
        self.assertEqual(
            shown(elements, "/P/texts"), ["/P/texts: array [1] of an unknown type (/P/text)"])
        result = imported(elements)
        self.assertEqual(findings(result), [
            ("/P/texts/e", "dangling", "No object is made of the target (/P/text)."),
            ("/P/r/three", "wrong-dest", "The target (/P/b) is no IMPLEMENTATION-DATA-TYPE.")])
        skipped = skips(result)
        self.assertEqual(skipped[("ARRAY-SIZE-SEMANTICS", "no-property")], 1)
        # A mapping of arrays is not held.
        self.assertEqual(skipped[("DATA-TYPE-MAP", "no-class")], 1)
        self.assertIn("  IsApplication: true", held(elements)["/P/r"])
        self.assertIn("  IsApplication: false", held(elements)["/P/list"])

    def test_the_first_variant_counts(self):
        def variant(word):
            return ("<SW-DATA-DEF-PROPS-CONDITIONAL>" + refer("UNIT", word) +
                    "</SW-DATA-DEF-PROPS-CONDITIONAL>")

        elements = named("UNIT", "u") + named("UNIT", "v") + named(
            "APPLICATION-PRIMITIVE-DATA-TYPE", "a", category("VALUE") +
            "<SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS>" + variant("u") + variant("v") +
            "</SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>")
        self.assertEqual(shown(elements, "/P/a"), ["/P/a: 64-bit float, unit u"])
        self.assertEqual(skips(imported(elements)), {
            ("SW-DATA-DEF-PROPS-CONDITIONAL", "no-property"): 1, ("UNIT-REF", "no-property"): 1})

    def test_a_type_and_its_method_may_have_different_units(self):
        elements = named("UNIT", "u") + named("UNIT", "v") + named(
            "COMPU-METHOD", "m", category("IDENTICAL") + refer("UNIT", "u")) + application(
                "a", refer("COMPU-METHOD", "m") + refer("UNIT", "v")) + application(
                    "b", refer("COMPU-METHOD", "m"))
        objects = held(elements)
        self.assertIn('  Unit: Unit "u"', objects["/P/m"])
        self.assertIn('  Unit: Unit "v"', objects["/P/a"])
        self.assertFalse([text for text in objects["/P/b"] if text.startswith("  Unit")])
        self.assertEqual(shown(elements, "/P/a"), ["/P/a: 64-bit float, unit v, by m"])
        self.assertEqual(shown(elements, "/P/b"), ["/P/b: 64-bit float, unit u, by m"])


class TableTest(unittest.TestCase):
    @staticmethod
    def axis(index, content, word="STD_AXIS"):
        return (f"<SW-CALPRM-AXIS><SW-AXIS-INDEX>{index}</SW-AXIS-INDEX>" + category(word) +
                f"{content}</SW-CALPRM-AXIS>").replace("<SW-AXIS-INDEX></SW-AXIS-INDEX>", "")

    @staticmethod
    def own(points, content="", least=""):
        return ("<SW-AXIS-INDIVIDUAL>" + content +
                (f"<SW-MAX-AXIS-POINTS>{points}</SW-MAX-AXIS-POINTS>" if points else "") +
                (f"<SW-MIN-AXIS-POINTS>{least}</SW-MIN-AXIS-POINTS>" if least else "") +
                "</SW-AXIS-INDIVIDUAL>")

    @staticmethod
    def shared(target):
        return ("<SW-AXIS-GROUPED><SHARED-AXIS-TYPE-REF>/P/" + target +
                "</SHARED-AXIS-TYPE-REF></SW-AXIS-GROUPED>")

    @staticmethod
    def table(name, word, *axes, content=""):
        return application(
            name, f"<SW-CALPRM-AXIS-SET>{''.join(axes)}</SW-CALPRM-AXIS-SET>{content}", word)

    def test_axes_stand_in_the_order_of_their_index(self):
        elements = self.table(
            "t", "CUBE_4", self.axis("0x3", self.own(30)), self.axis("", self.own(99)),
            self.axis("2", self.own(20), "STD-AXIS"), self.axis("1", self.own(10), "FIX_AXIS"))
        self.assertEqual(shown(elements, "/P/t"), [
            "/P/t: CUBE_4 of 594000 values", "  axis 1: 10 points", "  axis 2: 20 points",
            "  axis 3: 30 points", "  axis 4: 99 points"])
        self.assertEqual(skips(imported(elements)), {("CATEGORY", "no-property"): 1})
        elements = self.table(
            "t", "CURVE", self.axis("one", self.own(2)), "<OTHER/>")
        result = imported(elements)
        self.assertEqual(findings(result), [
            ("/P/t", "bad-number", "The axis index (one) is no whole number.")])
        self.assertEqual(classes(result), {"Axis": 1, "LookupTableType": 1})

    def test_the_number_of_axes_is_the_category(self):
        words = ["CURVE", "MAP", "CUBOID", "CUBE_4", "CUBE_5"]
        for count, word in enumerate(words, 1):
            axes = [self.axis(i, self.own(2)) for i in range(count)]
            for said in words:
                with self.subTest(count=count, said=said):
                    result = imported(self.table("t", said, *axes))
                    expected = [] if said == word else [
                        ("/P/t", "wrong-dest", f"By its axes the table is a {word}, not a {said}.")]
                    self.assertEqual(findings(result), expected)
                    self.assertEqual(result.returncode, len(expected))

    def test_the_points_of_an_axis(self):
        rows = {
            # most and fewest points: the size, what is not held, what is told
            ("4", "4"): (4, {}, ""),
            ("4", "0x4"): (4, {}, ""),
            ("4", "2"): (4, {("SW-MIN-AXIS-POINTS", "no-property"): 1}, ""),
            ("0", ""): (0, {}, ""),
            ("x", ""): (None, {("SW-MAX-AXIS-POINTS", "bad-number"): 1},
                        "The number of points (x) is no whole number."),
            ("-3", ""): (None, {("SW-MAX-AXIS-POINTS", "out-of-range"): 1},
                         "The number of points (-3) is none that an axis can have."),
            ("4294967296", ""): (None, {("SW-MAX-AXIS-POINTS", "out-of-range"): 1},
                                 "The number of points (4294967296) is none that an axis can have."),
            ("<SYSC-REF>/P/N</SYSC-REF>", ""): (
                None, {("SW-MAX-AXIS-POINTS", "symbolic"): 1, ("SYSC-REF", "symbolic"): 1},
                "The number is the system constant (N)."),
        }
        constant = named("SW-SYSTEMCONST", "N")
        for (most, least), (points, expected, text) in rows.items():
            with self.subTest(most=most, least=least):
                elements = self.table("t", "CURVE", self.axis(1, self.own(most, "", least)))
                result = imported(elements + constant)
                skipped = skips(result)
                for name in ("SW-SYSTEMCONST", "SHORT-NAME"):
                    del skipped[(name, "no-class")]
                if points is None:
                    # Nothing of the axis but that it is there is held.
                    skipped.pop(("SW-AXIS-INDIVIDUAL", "no-property"))
                self.assertEqual(skipped, expected)
                self.assertEqual([said for _, _, said in findings(result)], [text] if text else [])
                shown_points = "?" if points is None else points
                self.assertEqual(shown(elements + constant, "/P/t"), [
                    f"/P/t: CURVE of {shown_points} values", f"  axis 1: {shown_points} points"])

    def test_what_a_table_and_its_axes_refer_to(self):
        layout = "<SW-RECORD-LAYOUT-REF>/P/l</SW-RECORD-LAYOUT-REF>"
        values = "<VALUE-AXIS-DATA-TYPE-REF>/P/x</VALUE-AXIS-DATA-TYPE-REF>"
        elements = (
            BYTE + application("x") + text_table("m", one=1) + named("UNIT", "u") + named(
                "SW-RECORD-LAYOUT", "l", "<SW-RECORD-LAYOUT-GROUP/>") +
            self.table("rpm", "COM_AXIS", self.axis(1, self.own(
                8, "<INPUT-VARIABLE-TYPE-REF>/P/x</INPUT-VARIABLE-TYPE-REF>"), "COM_AXIS"),
                       content=values + layout) +
            self.table("t", "MAP", self.axis(1, self.shared("rpm"), "COM_AXIS"), self.axis(
                2, self.own(3, refer("COMPU-METHOD", "m") + refer("UNIT", "u"))),
                       content=layout + values + refer("BASE-TYPE", "b")) +
            self.table("v", "CURVE", self.axis(1, self.own(2)), content=refer("UNIT", "u")))
        self.assertEqual(shown(elements, "/P/t"), [
            "/P/t: MAP of 24 values", "  values: x: 64-bit float",
            "  axis 1: rpm, 8 points, input x: 64-bit float",
            "  axis 2: 3 points, signed 32-bit enumeration of 1, unit u, by m", "  record layout: l"])
        self.assertEqual(shown(elements, "/P/rpm"), [
            "/P/rpm: shared axis", "  axis: 8 points, input x: 64-bit float",
            "  values: x: 64-bit float", "  record layout: l"])
        self.assertEqual(shown(elements, "/P/v"), [
            "/P/v: CURVE of 2 values", "  values: 64-bit float, unit u", "  axis 1: 2 points"])
        lines = held(elements)["/P/t"]
        place = lines.index("  BaseType:")
        self.assertEqual(lines[place + 1], "    Integer")
        self.assertEqual(
            skips(imported(elements)), {("SW-RECORD-LAYOUT-GROUP", "no-property"): 1})

    def test_what_a_table_can_not_refer_to(self):
        layout = "<SW-RECORD-LAYOUT-REF>/P/x</SW-RECORD-LAYOUT-REF>"
        values = "<VALUE-AXIS-DATA-TYPE-REF>/P/{}</VALUE-AXIS-DATA-TYPE-REF>"
        elements = (
            application("x") + application("text", word="STRING") +
            self.table("a", "CURVE", self.axis(1, self.shared("x")), content=layout) +
            self.table("b", "CURVE", self.axis(1, self.own(2)), content=values.format("a")) +
            self.table("c", "CURVE", self.axis(1, self.own(2)), content=values.format("text")) +
            self.table("d", "CURVE", self.axis(1, self.shared("text"))) +
            # Axes that lead back to themselves have no size.
            self.table("e", "COM_AXIS", self.axis(1, self.shared("f"))) +
            self.table("f", "COM_AXIS", self.axis(1, self.shared("e"))) +
            self.table("g", "CURVE", self.axis(1, self.shared("f"))))
        self.assertEqual(findings(imported(elements)), [
            ("/P/a", "wrong-dest", "The target (/P/x) is no axis."),
            ("/P/a", "wrong-dest", "The target (/P/x) is no SW-RECORD-LAYOUT."),
            ("/P/b", "wrong-dest", "The target (/P/a) is no primitive type."),
            ("/P/c", "dangling", "No object is made of the target (/P/text)."),
            *((f"/P/{name}", "dangling",
               f"The shared axis (/P/{target}) has no axis of its own.")
              for name, target in ("ef", "fe", "gf"))])
        self.assertEqual(shown(elements, "/P/g"), ["/P/g: CURVE of ? values", "  axis 1: ? points"])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
