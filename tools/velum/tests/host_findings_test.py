"""Looks at what findings mean: what is a fault, what is a note, what is one finding, what has none.

usage: host_findings_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import json
import sys
import unittest

from host import (
    OPENING, Folder, classes, document, findings, imported, named, package, properties, shown, skips)

BYTE = named("SW-BASE-TYPE", "b", "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
             "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")
MISSING = "The target (/X/{}) is not in the files."


def implementation(name, content, category="VALUE", tail=""):
    return named("IMPLEMENTATION-DATA-TYPE", name,
                 f"<CATEGORY>{category}</CATEGORY>" + properties(content) + tail)


def application(name, content=""):
    return named("APPLICATION-PRIMITIVE-DATA-TYPE", name,
                 "<CATEGORY>VALUE</CATEGORY>" + properties(content))


def reference(tag, target):
    return f"<{tag}-REF>{target}</{tag}-REF>"


def data_map(application_type, implementation_type):
    return ("<DATA-TYPE-MAP>" + reference("APPLICATION-DATA-TYPE", application_type) +
            reference("IMPLEMENTATION-DATA-TYPE", implementation_type) + "</DATA-TYPE-MAP>")


def mapping_set(*maps, name="s"):
    return named(
        "DATA-TYPE-MAPPING-SET", name, f"<DATA-TYPE-MAPS>{''.join(maps)}</DATA-TYPE-MAPS>")


def all_findings(result):
    return json.loads(result.stdout)["files"][0]["findings"]


def marks(result):
    """Path, reason and whether it is a fault, of each finding."""
    return [(f["path"], f["reason"], f["fault"]) for f in all_findings(result)]


class MeaningTest(unittest.TestCase):
    def test_a_reference_that_no_object_needs_is_a_note(self):
        lost = reference("BASE-TYPE", "/X/b")
        rows = {
            # An object lacks something.
            implementation("t", lost): True,
            BYTE + implementation("t", reference("BASE-TYPE", "/P/b") +
                                  reference("COMPU-METHOD", "/X/m")): True,
            named("UNIT", "u", reference("PHYSICAL-DIMENSION", "/X/d")): True,
            # None is made of what it stands in, or none has a place for it.
            named("PORT", "p", reference("UNIT", "/X/u")): False,
            implementation("t", reference("COMPU-METHOD", "/X/m"), "UNION"): False,
            BYTE + implementation("t", reference("BASE-TYPE", "/P/b") +
                                  reference("SW-ADDR-METHOD", "/X/a")): False,
            mapping_set(data_map("/X/a", "/X/i")): False,
        }
        for elements, is_fault in rows.items():
            with self.subTest(elements):
                result = imported(elements)
                self.assertEqual({f["fault"] for f in all_findings(result)}, {is_fault})
                self.assertEqual({f["reason"] for f in all_findings(result)}, {"dangling"})
                self.assertEqual(result.returncode, 1 if is_fault else 0)

    def test_a_type_that_is_none_needs_nothing_else(self):
        result = imported(implementation(
            "t", reference("BASE-TYPE", "/X/b") + reference("COMPU-METHOD", "/X/m") +
            reference("DATA-CONSTR", "/X/c")))
        self.assertEqual([(f["target"], f["fault"]) for f in all_findings(result)],
                         [("/X/b", True), ("/X/m", False), ("/X/c", False)])

    def test_findings_about_one_target_are_one(self):
        elements = "\n".join(named("UNIT", f"u{i}", reference("PHYSICAL-DIMENSION", "/X/d"))
                             for i in range(5)) + named(
                                 "UNIT", "v", reference("PHYSICAL-DIMENSION", "/X/e"))
        first, second = all_findings(imported(elements))
        self.assertEqual(
            (first["target"], first["count"], first["text"], first["path"], first["line"]),
            ("/X/d", 5, MISSING.format("d"), "/P/u0", 2))
        self.assertEqual([(place["path"], place["line"]) for place in first["places"]],
                         [(f"/P/u{i}", i + 2) for i in range(3)])
        self.assertEqual((second["target"], second["count"]), ("/X/e", 1))
        column = first["column"]
        lines = imported(elements, "import").stdout.decode().splitlines()
        self.assertIn(
            f"f.arxml:2:{column}: dangling: /P/u0: {MISSING.format('d')} "
            f"[5 times, also at 3:{column} and 4:{column}]", lines)
        # Notes of what else would be a fault say that they are.
        note = imported(named("PORT", "p", reference("UNIT", "/X/u")), "import").stdout.decode()
        self.assertRegex(note, r"\nf.arxml:2:\d+: note: dangling: /P/p: ")

    def test_duplicates_name_the_place_and_the_difference(self):
        def base(size="8", more="", encoding="NONE"):
            return named("SW-BASE-TYPE", "b", f"{more}<BASE-TYPE-SIZE>{size}</BASE-TYPE-SIZE>"
                         f"<BASE-TYPE-ENCODING>{encoding}</BASE-TYPE-ENCODING>")
        desc = "<DESC><L-2>x</L-2></DESC>"
        note = ", which makes no difference to the model."
        for second, is_fault, said in [
                (base("16"), True, "BASE-TYPE-SIZE is (8) there and (16) here."),
                (base(encoding="2C"), True, "BASE-TYPE-ENCODING is (NONE) there and (2C) here."),
                (base(more="<CATEGORY>c</CATEGORY>"), True,
                 "CATEGORY of SW-BASE-TYPE stands only here."),
                (named("UNIT", "b"), True, "SW-BASE-TYPE stands there and UNIT here."),
                (base("0x8"), False, "BASE-TYPE-SIZE is (8) there and (0x8) here" + note),
                (base(more=desc), False, "DESC of SW-BASE-TYPE stands only here" + note),
                (base("16", desc), True, "BASE-TYPE-SIZE is (8) there and (16) here.")]:
            with self.subTest(second):
                result = imported(base() + "\n" + second)
                (finding,) = all_findings(result)
                self.assertEqual((finding["reason"], finding["fault"], finding["line"]),
                                 ("duplicate-path", is_fault, 3))
                self.assertEqual(
                    finding["text"],
                    f"Another SW-BASE-TYPE of this path counts, at f.arxml:2:1: {said}")
        self.assertEqual(all_findings(imported(base() + base())), [])

    def test_what_has_no_object_is_listed(self):
        elements = (BYTE + implementation("either", "", "UNION") + implementation(
            "lost", reference("BASE-TYPE", "/X/b")) + implementation(
                "good", reference("BASE-TYPE", "/P/b")) + named(
                    "COMPU-METHOD", "steps", "<CATEGORY>TAB_NOINTP</CATEGORY>") + named(
                        "SW-BASE-TYPE", "v", "<BASE-TYPE-ENCODING>VOID</BASE-TYPE-ENCODING>") +
                    implementation("nothing", reference("BASE-TYPE", "/P/v")))
        expected = {
            "/P/either": ("no-class", "The model has no class for the category (UNION)."),
            "/P/lost": ("dangling", "What it refers to is missing, or no object is made of it."),
            "/P/steps": ("no-class", "The model has no class for the category (TAB_NOINTP)."),
            "/P/nothing": ("no-class", "The model has no class for values of the encoding (VOID) "
                           "with the size ()."),
        }
        listed = json.loads(imported(elements).stdout)["files"][0]["omitted"]
        self.assertEqual({row["path"]: (row["reason"], row["text"]) for row in listed}, expected)
        text = imported(elements, "import", "--skipped").stdout.decode()
        for path, (reason, said) in expected.items():
            self.assertRegex(text, rf"\nf.arxml:\d+:\d+: {reason}: {path}: [A-Z-]+\. "
                             + said.replace("(", r"\(").replace(")", r"\)"))
        self.assertNotIn("No object is made of these", imported(elements, "import").stdout.decode())

    def test_what_makes_a_run_fail(self):
        fault = named("UNIT", "u", "<FACTOR-SI-TO-UNIT>x</FACTOR-SI-TO-UNIT>")
        note = named("PORT", "p", reference("UNIT", "/X/u"))
        inferred = application("a").replace("<CATEGORY>VALUE</CATEGORY>", "")
        for elements, options, code in [
                (fault, [], 1), (note, [], 0), (inferred, [], 0),
                (fault, ["--fail-on", "none"], 0), (fault, ["--fail-on", "dangling"], 0),
                (fault, ["--fail-on", "dangling,bad-number"], 1),
                (note, ["--fail-on", "dangling"], 0),
                (note, ["--fail-on", "no-class"], 1), (inferred, ["--fail-on", "inferred"], 1),
                (fault, ["--fail-on", "nothing"], 2)]:
            for command in ("import", "check", "show"):
                with self.subTest(options=options, elements=elements, command=command):
                    result = imported(elements, command, *options)
                    self.assertEqual(result.returncode, code)
        kept = json.loads(imported(fault, "import", "--json", "--strict").stdout)["kept"]
        self.assertFalse(kept)
        options = ["import", "--json", "--strict", "--fail-on", "dangling"]
        self.assertTrue(json.loads(imported(fault, *options).stdout)["kept"])
        said = imported(fault, "import", "--fail-on", "nothing").stderr
        self.assertIn(b"There is no reason (nothing); there are: no-class,", said)


class MappingTest(unittest.TestCase):
    TYPES = BYTE + application("a") + application("c") + implementation(
        "i", reference("BASE-TYPE", "/P/b")) + implementation("j", reference("BASE-TYPE", "/P/b"))

    def test_sets_of_one_path_all_count(self):
        with Folder() as folder:
            folder.write("1.arxml", document(package("P", self.TYPES)))
            folder.write("2.arxml", document(package("P", mapping_set(data_map("/P/a", "/P/i")))))
            folder.write("3.arxml", document(package("P", mapping_set(
                data_map("/P/c", "/P/j"), data_map("/P/a", "/P/i")))))
            result = folder.run("import", "--json", ".")
            data = json.loads(result.stdout)
            self.assertEqual([file["findings"] for file in data["files"]], [[]] * 3)
            self.assertEqual([[row["element"] for row in file["skipped"]]
                              for file in data["files"][1:]], [["SHORT-NAME"]] * 2)
            self.assertEqual(
                folder.run("show", ".", "/P/c").stdout,
                b"/P/c: unsigned 8-bit integer\n  refers to /P/j\n")

    def test_maps_that_disagree(self):
        sets = mapping_set(data_map("/P/a", "/P/i")) + "\n" + mapping_set(
            data_map("/P/a", "/P/j"), name="t")
        (finding,) = all_findings(imported(self.TYPES + "\n" + sets))
        self.assertEqual(
            (finding["path"], finding["reason"], finding["fault"], finding["line"]),
            ("/P/t", "contradiction", True, 4))
        self.assertRegex(
            finding["text"], r"\AThe type \(/P/a\) is mapped to \(/P/i\) at f.arxml:3:\d+, which "
            r"counts, and to \(/P/j\) here.\Z")

    def test_a_dest_of_a_sibling_kind(self):
        sets = mapping_set(data_map("/P/a", "/P/i").replace(
            "<APPLICATION-DATA-TYPE-REF>",
            '<APPLICATION-DATA-TYPE-REF DEST="APPLICATION-RECORD-DATA-TYPE">'))
        result = imported(self.TYPES + sets)
        self.assertEqual(marks(result), [("/P/s", "wrong-dest", False)])
        self.assertEqual(
            findings(result)[0][2],
            "The target (/P/a) is of the kind APPLICATION-PRIMITIVE-DATA-TYPE; DEST says "
            "APPLICATION-RECORD-DATA-TYPE. It is used.")
        self.assertEqual(
            shown(self.TYPES + sets, "/P/a"), ["/P/a: unsigned 8-bit integer"])

    def test_formulas_around_system_constants(self):
        n = "<SYSC-REF>/P/N</SYSC-REF>"
        for written, kept, what in [
                (n, "N", "the system constant (N)"), (f" {n}\n ", "N", "the system constant (N)"),
                (f"2 * {n}", "2 * N", "the formula (2 * N)"),
                (f"\n {n}  + 1 ", "N + 1", "the formula (N + 1)"),
                (f"{n}*({n} - <SYSC-REF>/Q/M</SYSC-REF>)", "N*(N - M)", "the formula (N*(N - M))"),
                (f"\u00e9 {n} \u00e9", "\u00e9 N \u00e9", "the formula (\u00e9 N \u00e9)")]:
            with self.subTest(written):
                array = BYTE + named("SW-SYSTEMCONST", "N") + implementation(
                    "m", "", "ARRAY", "<SUB-ELEMENTS>" + named(
                        "IMPLEMENTATION-DATA-TYPE-ELEMENT", "e", "<CATEGORY>VALUE</CATEGORY>"
                        f"<ARRAY-SIZE>{written}</ARRAY-SIZE>" + properties(
                            reference("BASE-TYPE", "/P/b"))) + "</SUB-ELEMENTS>")
                self.assertEqual(
                    shown(array, "/P/m"), [f"/P/m: array [{kept}] of e: unsigned 8-bit integer"])
                said = [text for _, reason, text in findings(imported(array))
                        if reason == "symbolic"]
                self.assertEqual(said, [f"The size is {what}."])
                unit = named("UNIT", "u", f"<FACTOR-SI-TO-UNIT>{written}</FACTOR-SI-TO-UNIT>")
                constant = named("CONSTANT-SPECIFICATION", "c", "<VALUE-SPEC><NUMERICAL-VALUE-"
                                 f"SPECIFICATION><VALUE>{written}</VALUE></NUMERICAL-VALUE-"
                                 "SPECIFICATION></VALUE-SPEC>")
                self.assertEqual(
                    [text for path, _, text in findings(imported(unit + constant))
                     if path == "/P/c" and "target" not in text], [f"The number is {what}."])

    def test_the_line_of_a_method_with_texts_counts(self):
        scales = ("<COMPU-SCALE><COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR><V>-40</V><V>0.5</V>"
                  "</COMPU-NUMERATOR><COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR>"
                  "</COMPU-RATIONAL-COEFFS></COMPU-SCALE><COMPU-SCALE><LOWER-LIMIT>255</LOWER-LIMIT>"
                  "<UPPER-LIMIT>255</UPPER-LIMIT><COMPU-CONST><VT>none</VT></COMPU-CONST>"
                  "</COMPU-SCALE>")
        method = named(
            "COMPU-METHOD", "m", "<CATEGORY>SCALE_LINEAR_AND_TEXTTABLE</CATEGORY>"
            f"<COMPU-INTERNAL-TO-PHYS><COMPU-SCALES>{scales}</COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>")
        limits = named("DATA-CONSTR", "d", "<DATA-CONSTR-RULES><DATA-CONSTR-RULE><INTERNAL-CONSTRS>"
                       "<LOWER-LIMIT>0</LOWER-LIMIT><UPPER-LIMIT>250</UPPER-LIMIT></INTERNAL-CONSTRS>"
                       "</DATA-CONSTR-RULE></DATA-CONSTR-RULES>")
        elements = BYTE + method + limits + application(
            "a", reference("COMPU-METHOD", "/P/m") + reference("DATA-CONSTR", "/P/d")) + (
                implementation("i", reference("BASE-TYPE", "/P/b"))) + mapping_set(
                    data_map("/P/a", "/P/i"))
        self.assertEqual(shown(elements, "/P/a")[0],
                         "/P/a: unsigned 8-bit fixed point -40 + 0.5 x, [-40, 85], by m")
        self.assertEqual(findings(imported(elements)), [])

    def test_a_direction_that_is_lost(self):
        def direction(tag, *numerators):
            scales = "".join(
                f"<COMPU-SCALE><COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR><V>{n[0]}</V><V>{n[1]}</V>"
                "</COMPU-NUMERATOR><COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR>"
                "</COMPU-RATIONAL-COEFFS></COMPU-SCALE>" for n in numerators)
            return f"<{tag}><COMPU-SCALES>{scales}</COMPU-SCALES></{tag}>"
        for physical, reasons in [
                ([(0, 0.5)], []), ([(0, 3)], ["not-invertible"]), ([(1, 0)], ["not-invertible"]),
                ([(0, 0.5), (1, 1)], ["not-invertible"])]:
            with self.subTest(physical):
                result = imported(named(
                    "COMPU-METHOD", "m", "<CATEGORY>LINEAR</CATEGORY>" +
                    direction("COMPU-INTERNAL-TO-PHYS", *physical) +
                    direction("COMPU-PHYS-TO-INTERNAL", (0, 2))))
                self.assertEqual([reason for _, reason, _ in findings(result)], reasons)
                self.assertEqual(result.returncode, 0)

    def test_two_axes_with_one_index(self):
        axis = ("<SW-CALPRM-AXIS><SW-AXIS-INDEX>{}</SW-AXIS-INDEX><SW-AXIS-INDIVIDUAL>"
                "<SW-MAX-AXIS-POINTS>2</SW-MAX-AXIS-POINTS></SW-AXIS-INDIVIDUAL></SW-CALPRM-AXIS>")
        for indexes, count in [("12", 0), ("21", 0), ("11", 1), ("00", 1)]:
            with self.subTest(indexes):
                result = imported(named(
                    "APPLICATION-PRIMITIVE-DATA-TYPE", "t", "<CATEGORY>MAP</CATEGORY>" + properties(
                        "<SW-CALPRM-AXIS-SET>" + "".join(axis.format(i) for i in indexes) +
                        "</SW-CALPRM-AXIS-SET>")))
                self.assertEqual(
                    [reason for _, reason, _ in findings(result)], ["contradiction"] * count)

    def test_constants_that_refer_to_themselves(self):
        def constant(name, *targets):
            parts = "".join(f"<CONSTANT-REFERENCE>{reference('CONSTANT', '/P/' + target)}"
                            "</CONSTANT-REFERENCE>" for target in targets)
            return named("CONSTANT-SPECIFICATION", name,
                         "<VALUE-SPEC><ARRAY-VALUE-SPECIFICATION><ELEMENTS>" + parts +
                         "</ELEMENTS></ARRAY-VALUE-SPECIFICATION></VALUE-SPEC>")
        for graph, expected in [
                ({"a": "b", "b": "c", "c": ""}, []), ({"a": "bc", "b": "c", "c": ""}, []),
                ({"a": "a"}, [("a", "a")]), ({"a": "b", "b": "a"}, [("a", "b"), ("b", "a")]),
                ({"x": "a", "a": "bz", "b": "c", "c": "ay", "y": "z", "z": ""},
                 [("a", "b"), ("b", "c"), ("c", "a")]),
                # A way from one circle to another is in neither.
                ({"a": "ab", "b": "c", "c": "c"}, [("a", "a"), ("c", "c")])]:
            with self.subTest(graph):
                elements = "".join(constant(name, *targets) for name, targets in graph.items())
                self.assertEqual(findings(imported(elements)), [
                    (f"/P/{name}", "contradiction",
                     f"The constant (/P/{name}) refers to itself" +
                     ("" if name == target else f" by way of (/P/{target})") +
                     "; it has no value.") for name, target in expected])
        chain = "".join(constant(f"c{i}", f"c{(i + 1) % 20_000}") for i in range(20_000))
        self.assertEqual(len(all_findings(imported(chain))), 20_000)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
