"""Runs the built program and looks at what it prints.

usage: host_import_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import collections
import json
import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import unittest
import xml.parsers.expat

PROGRAM = pathlib.Path(sys.argv[1])
SAMPLES = pathlib.Path(sys.argv[2])

NAMESPACE = "http://autosar.org/schema/r4.0"
OPENING = f'<AUTOSAR xmlns="{NAMESPACE}">'
# Well above what any refusal needs, also under a sanitizer; far below the size of the input.
MOST_MEMORY_KB = 700_000


def run(*arguments, cwd=SAMPLES, **options):
    return subprocess.run(
        [PROGRAM, *arguments], cwd=cwd, capture_output=True, timeout=300, check=False, **options)


def report(sample):
    return json.loads(run("import", "--json", sample).stdout)


def elements_of(path):
    """The name of every element of a file with the place where its tag begins."""
    found = []
    parser = xml.parsers.expat.ParserCreate()
    parser.StartElementHandler = lambda name, _: found.append(
        (name, parser.CurrentLineNumber, parser.CurrentColumnNumber + 1))
    with open(path, "rb") as file:
        parser.ParseFile(file)
    return found


class SampleTest(unittest.TestCase):
    def test_types_get_their_sign_from_the_encoding(self):
        integers = report("integer_types.arxml")["integers"]
        self.assertEqual(
            [(row["name"], row["signed"], row["length"]) for row in integers],
            [("Counter", False, "8|bit"), ("Torque", True, "16|bit"),
             ("TorqueLimit", True, "16|bit"), ("Checksum", True, "16|bit"), ("spare", False, "32|bit")])
        ids = [row["id"] for row in integers]
        self.assertEqual(len(set(ids)), len(ids))

    def test_every_element_is_consumed_or_skipped(self):
        for path in sorted(SAMPLES.glob("*.arxml")):
            with self.subTest(path.name):
                elements = elements_of(path)
                counted = collections.Counter(name for name, _, _ in elements)
                (file,) = report(path.name)["files"]
                accounted = collections.Counter()
                for entry in file["consumed"] + file["skipped"]:
                    self.assertGreater(entry["count"], 0)
                    accounted[entry["element"]] += entry["count"]
                self.assertEqual(accounted, counted)
                self.assertEqual(file["elements"]["met"], len(elements))
                self.assertEqual(
                    file["elements"]["consumed"], sum(e["count"] for e in file["consumed"]))
                self.assertEqual(
                    file["elements"]["skipped"], sum(e["count"] for e in file["skipped"]))
                places = set(elements)
                for entry in file["skipped"]:
                    first = entry["first"]
                    self.assertIn((entry["element"], first["line"], first["column"]), places)

    def test_the_table_says_the_same_as_the_json(self):
        for path in sorted(SAMPLES.glob("*.arxml")):
            with self.subTest(path.name):
                lines = run("import", path.name).stdout.decode().splitlines()
                data = report(path.name)
                (file,) = data["files"]
                rows = [line.split() for line in lines[1:1 + len(data["integers"])]]
                self.assertEqual(
                    rows,
                    [[row["name"], str(row["id"]), "yes" if row["signed"] else "no",
                      row["length"] or "-"]
                     for row in data["integers"]])
                elements = file["elements"]
                self.assertIn(
                    f"{path.name}: {elements['met']} elements, {elements['consumed']} consumed, "
                    f"{elements['skipped']} skipped.", lines)
                for entry in file["skipped"]:
                    first = entry["first"]
                    self.assertIn(
                        [str(entry["count"]), entry["element"], entry["reason"],
                         f"{first['line']}:{first['column']}", first["path"]],
                        [line.split() for line in lines])
                for finding in file["findings"]:
                    self.assertIn(
                        f"{path.name}:{finding['line']}:{finding['column']}: {finding['reason']}: "
                        f"{finding['path']}: {finding['text']}", lines)

    def test_the_whole_text_of_a_small_report(self):
        with Folder() as folder:
            folder.write("small.arxml", f"""{OPENING}
<AR-PACKAGES><AR-PACKAGE><SHORT-NAME>P</SHORT-NAME><ELEMENTS>
<SW-BASE-TYPE><SHORT-NAME>größe</SHORT-NAME><BASE-TYPE-ENCODING>2C</BASE-TYPE-ENCODING></SW-BASE-TYPE>
<SW-BASE-TYPE><SHORT-NAME>u</SHORT-NAME><BASE-TYPE-SIZE>8</BASE-TYPE-SIZE></SW-BASE-TYPE>
</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>""")
            result = folder.run("import", "small.arxml")
            first, second = json.loads(
                folder.run("import", "--json", "small.arxml").stdout)["integers"]
        width = len(str(second["id"]))
        ids = [str(row["id"]).rjust(max(width, 2)) for row in (first, second)]
        self.assertEqual(result.stdout.decode(), f"""\
name   {'id'.rjust(max(width, 2))}  signed  length
größe  {ids[0]}  yes     -
u      {ids[1]}  no      8|bit

2 integers from 1 file.
small.arxml: 11 elements, 11 consumed, 0 skipped.

small.arxml:4:1: inferred: /P/u: The base type has no encoding; the values are taken as unsigned \
integers.
""")
        self.assertEqual((result.returncode, result.stderr), (0, b""))


class FindingTest(unittest.TestCase):
    def test_faults_are_told_and_the_rest_is_kept(self):
        result = run("import", "faulty_references.arxml")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, b"")
        lines = result.stdout.decode().splitlines()
        self.assertEqual(lines[1].split()[::2], ["Good", "no"])
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
                "The type (/Faults/NoTarget) that it refers to has no base type.",
                "73:17: dangling: /Faults/Left: "
                "The type (/Faults/Right) that it refers to has no base type.",
                "84:17: dangling: /Faults/Right: The type references lead back to this type.",
                "89:9: no-name: /Faults: This IMPLEMENTATION-DATA-TYPE has no SHORT-NAME.",
                "99:9: duplicate-path: /Faults/Good: "
                "Another IMPLEMENTATION-DATA-TYPE of this path stands before; that one counts.",
                "114:9: duplicate-path: /Faults/u8: "
                "Another SW-BASE-TYPE of this path stands before; that one counts.",
                "120:5: no-name: /: This package has no SHORT-NAME.",
            ])

    def test_a_size_that_is_none_is_told_and_left_open(self):
        sizes = {"a": "eight", "b": "99999999999", "c": "-8", "d": "0x10"}
        base_types = "".join(
            f"<SW-BASE-TYPE><SHORT-NAME>{name}</SHORT-NAME><BASE-TYPE-SIZE>{size}</BASE-TYPE-SIZE>"
            "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING></SW-BASE-TYPE>"
            for name, size in sizes.items())
        with Folder() as folder:
            folder.write("sizes.arxml", f"{OPENING}<AR-PACKAGES><AR-PACKAGE><SHORT-NAME>P</SHORT-NAME>"
                         f"<ELEMENTS>{base_types}</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>")
            result = folder.run("import", "--json", "sizes.arxml")
        data = json.loads(result.stdout)
        self.assertEqual(result.returncode, 1)
        self.assertEqual([row["length"] for row in data["integers"]], [None, None, None, "16|bit"])
        self.assertEqual(
            [(finding["path"], finding["reason"], finding["text"])
             for finding in data["files"][0]["findings"]],
            [("/P/a", "bad-number", "The size (eight) is no number of bits."),
             ("/P/b", "out-of-range",
              "The size (99999999999) is no number of bits that an integer can have."),
             ("/P/c", "out-of-range",
              "The size (-8) is no number of bits that an integer can have.")])

    def test_what_has_no_place_is_no_fault(self):
        self.assertEqual(run("import", "integer_types.arxml").returncode, 0)
        findings = report("integer_types.arxml")["files"][0]["findings"]
        self.assertEqual(
            [(f["reason"], f["fault"], f["line"], f["text"]) for f in findings],
            [("inferred", False, 59, "The type has no category; it is taken as VALUE."),
             ("inferred", False, 131,
              "The encoding (uint32) is not a known code; "
              "the values are taken as unsigned integers.")])

    def test_a_long_chain_of_type_references_is_followed_once(self):
        count = 20_000
        types = "".join(
            f"<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>T{i}</SHORT-NAME>"
            "<CATEGORY>TYPE_REFERENCE</CATEGORY><SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS>"
            "<SW-DATA-DEF-PROPS-CONDITIONAL>"
            f"<IMPLEMENTATION-DATA-TYPE-REF>/P/T{i + 1}</IMPLEMENTATION-DATA-TYPE-REF>"
            "</SW-DATA-DEF-PROPS-CONDITIONAL></SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>"
            "</IMPLEMENTATION-DATA-TYPE>" for i in range(count))
        last = (f"<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>T{count}</SHORT-NAME><SW-DATA-DEF-PROPS>"
                "<SW-DATA-DEF-PROPS-VARIANTS><SW-DATA-DEF-PROPS-CONDITIONAL>"
                "<BASE-TYPE-REF>/P/b</BASE-TYPE-REF></SW-DATA-DEF-PROPS-CONDITIONAL>"
                "</SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS></IMPLEMENTATION-DATA-TYPE>"
                "<SW-BASE-TYPE><SHORT-NAME>b</SHORT-NAME>"
                "<BASE-TYPE-ENCODING>SM</BASE-TYPE-ENCODING></SW-BASE-TYPE>")
        with Folder() as folder:
            folder.write(
                "chain.arxml",
                f"{OPENING}<AR-PACKAGES><AR-PACKAGE><SHORT-NAME>P</SHORT-NAME><ELEMENTS>"
                f"{types}{last}</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>")
            result = folder.run("import", "--json", "chain.arxml")
        integers = json.loads(result.stdout)["integers"]
        self.assertEqual(len(integers), count + 1)
        self.assertTrue(all(row["signed"] for row in integers))


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
            self.refused(folder.run("import", "."), ".: This is a directory, not a file.")
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
            f'<?xml version="1.0" encoding="UTF-16"?>{OPENING}</AUTOSAR>'.encode("utf-16"),
            "f.arxml:1:1: The encoding (UTF-16) is none of UTF-8, ASCII, ISO-8859 and "
            "Windows-125x.")

    def test_documents_of_another_kind(self):
        self.check("<html/>", "f.arxml:1:1: The root element (html) is not AUTOSAR.")
        self.check(
            "<!-- c -->\n <AUTOSAR xmlns='http://autosar.org/3.2.3'/>",
            "f.arxml:2:2: The namespace (http://autosar.org/3.2.3) of the root element is not "
            "http://autosar.org/schema/r4.0.")
        self.check(
            "<AUTOSAR/>",
            "f.arxml:1:1: The namespace () of the root element is not "
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
            "f.arxml:49978:1: There are more than 50000 different element names.")
        many = " ".join(f"a{i}='1'" for i in range(1_001))
        self.check(
            f"{OPENING}\n<A {many}/></AUTOSAR>",
            "f.arxml:2:1: This element has more than 1000 attributes.")
        depth = 100_000
        with Folder() as folder:
            folder.write("f.arxml", OPENING + "<A>" * depth + "</A>" * depth + "</AUTOSAR>")
            self.refused(
                folder.run("import", "f.arxml"),
                "f.arxml:1:819: Elements are nested more than 256 deep.")
        parts = "<A/>" * 1_000_001
        self.check(
            f"{OPENING}<AR-PACKAGES><AR-PACKAGE><ELEMENTS>\n<SW-BASE-TYPE>{parts}</SW-BASE-TYPE>"
            "</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>",
            "f.arxml:2:4000011: The element around this one is larger than 1000000 elements or "
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

    def test_wrong_usage(self):
        for arguments in [[], ["import"], ["export", "a"], ["import", "--yaml", "a"],
                          ["import", "a", "b"]]:
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


class Folder:
    """A temporary folder to run the program in."""

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self._folder.name)
        return self

    def __exit__(self, *_):
        self._folder.cleanup()

    def write(self, name, content):
        data = content if isinstance(content, bytes) else content.encode()
        (self.path / name).write_bytes(data)

    def run(self, *arguments):
        return run(*arguments, cwd=self.path)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
