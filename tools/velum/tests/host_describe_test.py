"""Compares what the built program says of the metamodel with the files that the metamodel is made of.

usage: host_describe_test.py PROGRAM SOURCE_FOLDER DOT [UNITTEST ARGUMENT...]
"""

import collections
import pathlib
import re
import subprocess
import sys
import tomllib
import unittest
import xml.etree.ElementTree as ElementTree

PROGRAM = pathlib.Path(sys.argv[1])
SOURCE = pathlib.Path(sys.argv[2])
DOT = sys.argv[3]

SVG = "{http://www.w3.org/2000/svg}"
WIDTH = 100


def declared(package):
    with open(SOURCE / "metamodel" / f"{package}.toml", "rb") as file:
        return tomllib.load(file)


TYPES = declared("types")
FOUNDATION = declared("foundation")
KERNEL = declared("qob")
CLASSES = {metaclass["name"]: metaclass for metaclass in TYPES["class"]}
PROPERTIES = [(metaclass, each) for metaclass in TYPES["class"]
              for each in metaclass.get("property", [])]


def run(*arguments):
    return subprocess.run(
        [PROGRAM, "describe", *arguments], capture_output=True, timeout=300, check=False)


def described(*arguments):
    result = run(*arguments)
    if (result.returncode, result.stderr) != (0, b""):
        raise AssertionError(f"describe {arguments}: {result.returncode}, {result.stderr}")
    return result.stdout.decode()


def as_list(value):
    return value if isinstance(value, list) else [value]


def comments(metaclass):
    return as_list(metaclass.get("documentation", []))


def sections(text):
    """The text of each type, by its heading."""
    heading = re.compile(r"^(?=(?:abstract class|class|data type|enumeration) \S+$)", re.MULTILINE)
    return {part.split("\n", 1)[0]: part for part in heading.split(text)[1:]}


def property_sections(section):
    """The line of each property with what stands below it, by name."""
    line = re.compile(r"^(?=  \S+ +\S+ +\d+\.\.(?:\d+|\*)(?: .*)?$)", re.MULTILINE)
    return {part.split(None, 1)[0]: part for part in line.split(section)[1:]}


def wrapped(text, indent):
    """A pattern for a text with its line breaks, in which long lines are broken between words."""
    pattern = ""
    for line in text.split("\n"):
        pattern += r"^ {%d}" % indent if line.strip() else "^"
        for word in re.split("( +)", line.rstrip()):
            pattern += (r"(?: {%d}|\n {%d})" % (len(word), indent) if word.isspace()
                        else re.escape(word))
        pattern += r"\n"
    return f"(?m){pattern}"


class TextTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.text = described()
        cls.sections = sections(cls.text)

    def section(self, metaclass):
        kind = "abstract class" if metaclass.get("abstract") else "class"
        return self.sections[f"{kind} {metaclass['name']}"]

    def test_the_package(self):
        self.assertEqual(
            self.text.splitlines()[:3],
            ["package Zorvane.metamodel.types: 35 classes with 109 properties, 6 data types",
             "  uri         qob://metamodels/types",
             "  tags        qob_metamodel = Zorvane.metamodel.types"])
        kinds = collections.Counter(heading.rsplit(" ", 1)[0] for heading in self.sections)
        self.assertEqual(
            kinds, {"class": 31, "abstract class": 4, "data type": 2, "enumeration": 4})
        names = [heading.rsplit(" ", 1)[1] for heading in self.sections]
        self.assertEqual(names, sorted(names[:6]) + sorted(names[6:]))
        self.assertLessEqual(max(map(len, self.text.splitlines())), WIDTH)
        self.assertNotIn(" \n", self.text)

    def test_data_types(self):
        for each in TYPES["data_type"]:
            with self.subTest(each["name"]):
                if each["kind"] == "enumeration":
                    self.assertIn(
                        f"\n  literals    {', '.join(each['literals'])}\n",
                        self.sections[f"enumeration {each['name']}"])
                else:
                    self.assertIn(f"data type {each['name']}", self.sections)

    def test_classes(self):
        for metaclass in TYPES["class"]:
            with self.subTest(metaclass["name"]):
                section = self.section(metaclass)
                self.assertIn(f"\n  supers      {', '.join(as_list(metaclass['base']))}\n", section)
                tags = metaclass.get("tags", ["qob_metaclass"])
                self.assertIn(f"\n  tags        {', '.join(tags)}\n", section)
                subs = sorted(each["name"] for each in TYPES["class"]
                              if metaclass["name"] in as_list(each["base"]))
                self.assertEqual(
                    re.findall(r"\n  subclasses  ((?:.*\n {14})*.*)\n", section),
                    [", ".join(subs)] if subs else [])
                for comment in comments(metaclass):
                    self.assertRegex(section, wrapped(comment, 2))

    def test_properties(self):
        self.assertEqual(len(PROPERTIES), 109)
        found = {heading.rsplit(" ", 1)[1]: property_sections(section)
                 for heading, section in self.sections.items()}
        self.assertEqual(sum(map(len, found.values())), 109)
        for metaclass, each in PROPERTIES:
            with self.subTest(metaclass=metaclass["name"], property=each["name"]):
                lines = found[metaclass["name"]][each["name"]].split("\n")
                words = list(each.get("flags", []))
                if each.get("private"):
                    words.append("private")
                expected = [each["name"], each["type"], each["multiplicity"]]
                if "default" in each:
                    expected += ["=", each["default"]]
                self.assertEqual(lines[0].split(), expected + ", ".join(words).split())

                association = each.get("association", "")
                other_end = each.get("opposite", each.get("other_end", ""))
                if other_end and association:
                    other_end += f" in association {association}"
                facts = {
                    "opposite": other_end if "opposite" in each else "",
                    "other end": other_end if "opposite" not in each else "",
                    "redefines": ", ".join(each.get("redefines", [])),
                    "subsets": ", ".join(each.get("subsets", [])),
                    "tags": "qob_hide_in_lumvo" if each.get("hidden") else ""}
                expected = [f"      {label:12}{fact}" for label, fact in facts.items() if fact]
                self.assertEqual(lines[1:len(expected) + 1], expected)
                rest = "\n".join(lines[len(expected) + 1:]).rstrip("\n")
                if "documentation" in each:
                    self.assertRegex(rest + "\n", rf"{wrapped(each['documentation'], 6)}\Z")
                else:
                    self.assertEqual(rest, "")

    def test_what_is_easily_lost(self):
        """Facts by hand, in case that the files and the program err together."""
        boolean = property_sections(self.sections["class Boolean"])["minValue"]
        self.assertRegex(boolean, r"^  minValue +QOB\.Real +0\.\.1 +=\ 0 +composite\n")
        self.assertIn("redefines   Real.minValue\n", boolean)
        value = property_sections(self.sections["abstract class ValueElement"])["Value"]
        self.assertIn("other end   owningSlot in association A_value_owningSlot\n", value)
        literal = property_sections(self.sections["class EnumerationLiteral"])["pvalue"]
        self.assertRegex(literal, r"^  pvalue .*\bprivate\n")
        self.assertIn("for the compulted the", " ".join(literal.split()))
        axis = self.sections["class Axis"].split("\n\n")[0].splitlines()
        self.assertEqual(axis[-1], "  tags        qob_hide_in_lumvo")
        exponent = property_sections(self.sections["class Dimension"])["BaseExponent"]
        self.assertRegex(exponent, r"^  BaseExponent .* non-unique\n")
        self.assertIn("This typivcally correspond", self.sections["class FloatingPoint"])
        matrix = property_sections(self.sections["class Matrix"])["SymbolicDimensions"]
        self.assertIn(' = ""', matrix.split("\n")[0])
        self.assertIn("  IEEE_Double, IEEE_Single\n", self.sections["enumeration FloatingPointKind"])


class OneTypeTest(unittest.TestCase):
    def test_one_is_described_as_among_all(self):
        package = "\n  package     Zorvane.metamodel.types"
        for heading, section in sections(described()).items():
            with self.subTest(heading):
                alone, _, _ = described(heading.rsplit(" ", 1)[1]).partition("\n  inherited\n")
                self.assertTrue(alone.startswith(heading + package))
                self.assertEqual(alone.replace(package, "", 1).rstrip(), section.rstrip())

    def test_what_is_inherited(self):
        """From the nearest class on, each once; a property that is redefined isn't there twice."""
        expected = {
            "Boolean": ["PrimitiveType", "foundation.ValueType", "foundation.Namespace",
                        "foundation.NamedElement", "foundation.Element", "QOB.ClassObject"],
            "StructElement": ["foundation.TypedElement", "foundation.NamedElement",
                              "foundation.Element", "QOB.ClassObject"],
            "Factory": ["QOB.ClassObject"],
            "QOB.ClassObject": [], "DataSize": []}
        for name, classes in expected.items():
            with self.subTest(name):
                _, _, text = described(name).partition("\n  inherited\n")
                rows = dict(line.split(None, 1) for line in text.splitlines()
                            if re.match(" {6}[^ ]", line))
                self.assertEqual(list(rows), classes)
        _, _, text = described("StructElement").partition("\n  inherited\n")
        rows = [line.split(None, 1) for line in text.splitlines()]
        self.assertEqual(rows[:2], [["foundation.TypedElement", "OwnedType"],
                                    ["foundation.NamedElement", "Name, Visibility, clientDependency"]])

    def test_names_with_packages(self):
        real = described("Real")
        self.assertTrue(real.startswith("abstract class Real\n"))
        for name in ("types.Real", "metamodel.types.Real", "Zorvane.metamodel.types.Real"):
            self.assertEqual(described(name), real)
        self.assertEqual(described("QOB.Real"), "data type Real\n  package     QOB\n")
        for metaclass in FOUNDATION["class"]:
            with self.subTest(metaclass["name"]):
                text = described(f"foundation.{metaclass['name']}")
                self.assertEqual(text, described(metaclass["name"]))
                declared_text, _, _ = text.partition("\n  inherited\n")
                self.assertEqual(
                    list(property_sections(declared_text)),
                    [each["name"] for each in metaclass.get("property", [])])
        self.assertIn("  supers      PackageableElement, Namespace\n", described("Type"))

    def test_the_kernel_describes_itself(self):
        for metaclass in KERNEL["class"]:
            if "index" not in metaclass:
                continue # what has no table isn't live
            with self.subTest(metaclass["name"]):
                text, _, _ = described(f"QOB.{metaclass['name']}").partition("\n  inherited\n")
                kind = "abstract class" if metaclass.get("abstract") else "class"
                self.assertTrue(text.startswith(f"{kind} {metaclass['name']}\n  package     QOB\n"))
                self.assertEqual(
                    list(property_sections(text)),
                    [each["name"] for each in metaclass.get("property", [])])

    def test_names_that_are_unknown(self):
        for name, said in {
                "Enumration": "(Enumration). Like it: Enumeration.",
                "matrix": "(matrix). Like it: Matrix, MatrixValueSpecification.",
                "types.Element2": "(types.Element2). Like it: Element.",
                "Zorvane.Real": "(Zorvane.Real). Like it: Real.",
                "": "().",
                ".": "(.).",
                "x" * 10_000: f"({'x' * 10_000}).",
                "a\n\x1b[1m": "(a\\x0A\\x1B[1m)."}.items():
            with self.subTest(name[:20]):
                result = run(name)
                self.assertEqual((result.returncode, result.stdout), (2, b""))
                self.assertEqual(
                    result.stderr.decode(), f"velum: There is no class or data type {said}\n")
        for arguments in (["Real", "Unit"], ["--format", "xml"], ["--format"]):
            with self.subTest(arguments):
                result = run(*arguments)
                self.assertEqual((result.returncode, result.stdout), (2, b""))


class ManualTest(unittest.TestCase):
    def test_the_example_in_the_documentation(self):
        manual = (SOURCE / "docs" / "velum.md").read_text(encoding="utf-8")
        (name, block), = re.findall(
            r"^    \$ velum describe (\S+)\n((?:    .*\n|\n(?=    ))+)", manual, re.MULTILINE)
        self.assertEqual(re.sub("^    ", "", block, flags=re.MULTILINE), described(name))


class DiagramTest(unittest.TestCase):
    def drawn(self, *arguments):
        """The diagram as Graphviz draws it: titles of nodes, titles of edges, all texts."""
        result = subprocess.run(
            [DOT, "-Tsvg"], input=described("--format", "dot", *arguments).encode(),
            capture_output=True, timeout=300, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        root = ElementTree.fromstring(result.stdout)
        groups = collections.defaultdict(list)
        for group in root.iter(f"{SVG}g"):
            groups[group.get("class")].append(group.find(f"{SVG}title").text)
        return groups["node"], groups["edge"], {each.text.strip() for each in root.iter(f"{SVG}text")}

    def test_the_whole(self):
        nodes, edges, texts = self.drawn()
        package = "Zorvane.metamodel.types."
        own = {node.removeprefix(package) for node in nodes if node.startswith(package)}
        self.assertEqual(own, {*CLASSES, *(each["name"] for each in TYPES["data_type"])})
        # Texts and numbers have no node of their own.
        self.assertEqual({node for node in nodes if node.startswith("QOB.")}, {"QOB.FactoryObject"})
        for metaclass in TYPES["class"]:
            for base in as_list(metaclass["base"]):
                dotted = (base if base.startswith("QOB.") else f"Zorvane.metamodel.{base}"
                          if "." in base else package + base)
                self.assertIn(f"{package}{metaclass['name']}->{dotted}", edges)
        for _, each in PROPERTIES:
            self.assertTrue({each["name"], "/" + each["name"], "- " + each["name"]} & texts)
            self.assertIn(each["multiplicity"], texts)
        for each in TYPES["data_type"]:
            for literal in each.get("literals", []):
                self.assertIn(literal, texts)

    def test_the_kinds_of_lines(self):
        dot = described("--format", "dot")
        bases = [base for metaclass in TYPES["class"] for base in as_list(metaclass["base"])]
        shown = {*bases, *(each["type"] for _, each in PROPERTIES)}
        among_shown = [
            base for metaclass in FOUNDATION["class"] if f"foundation.{metaclass['name']}" in shown
            for base in as_list(metaclass["base"]) if f"foundation.{base}" in shown]
        supers = len(bases) + len(among_shown)
        self.assertEqual(dot.count("[arrowhead=empty]"), supers)
        objects = [each for _, each in PROPERTIES if not each["type"].startswith("QOB.")]
        composites = [each for each in objects if "composite" in each.get("flags", [])]
        self.assertEqual(dot.count("arrowhead=diamond"), len(composites))
        # An association whose ends name each other is one line.
        ends = {(metaclass["name"], each["name"]): each for metaclass, each in PROPERTIES}
        mutual = [key for key, each in ends.items() if each.get("opposite")
                  and ends.get(tuple(each["opposite"].split(".")), {}).get("opposite")
                  == ".".join(key)]
        self.assertEqual(dot.count("->"), supers + len(objects) - len(mutual) // 2)
        for metaclass in TYPES["class"]:
            title = f"<b><i>{metaclass['name']}</i></b>"
            self.assertEqual(title in dot, bool(metaclass.get("abstract")), title)

    def test_one_class(self):
        nodes, edges, texts = self.drawn("Real")
        names = {node.rsplit(".", 1)[1] for node in nodes}
        subs = {metaclass["name"] for metaclass in TYPES["class"]
                if "Real" in as_list(metaclass["base"])}
        users = {metaclass["name"] for metaclass, each in PROPERTIES if each["type"] == "Real"}
        supers = {"PrimitiveType", "ValueType", "Type", "PackageableElement", "Namespace",
                  "NamedElement", "Element", "ClassObject"}
        self.assertEqual(names, {"Real"} | supers | subs | users)
        self.assertIn("Zorvane.metamodel.types.Boolean->Zorvane.metamodel.types.Real", edges)
        self.assertIn("minValue", texts)
        self.assertNotIn("IsSigned", texts)  # a neighbour's
        for name in [*CLASSES, "DataSize", "TimeUnitKind", "Element", "Type"]:
            with self.subTest(name):
                nodes, _, _ = self.drawn(name)
                self.assertIn(name, {node.rsplit(".", 1)[1] for node in nodes})


class ReferencePageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = described("--format", "md")

    def test_links_lead_somewhere(self):
        anchors = re.findall(r'<a id="([^"]*)"></a>', self.page)
        self.assertEqual(len(anchors), len(set(anchors)))
        self.assertLessEqual(
            {f"types.{metaclass['name']}.{each['name']}" for metaclass, each in PROPERTIES},
            set(anchors))
        targets = set(re.findall(r"\]\(#([^)]*)\)", self.page))
        self.assertLessEqual(targets, set(anchors))
        self.assertLessEqual({f"types.{name}" for name in CLASSES}, targets)
        for name in CLASSES:
            alone = described("--format", "md", name)
            self.assertLessEqual(
                set(re.findall(r"\]\(#([^)]*)\)", alone)),
                set(re.findall(r'<a id="([^"]*)"></a>', alone)))

    def test_tables_are_whole(self):
        bars = re.compile(r"(?<!\\)\|")
        widths = []
        rows = 0
        for line in self.page.splitlines() + [""]:
            if line.startswith("|"):
                widths.append(len(bars.findall(line)))
                continue
            if widths:
                self.assertEqual(len(set(widths)), 1, widths)
                rows += len(widths) - 2
                widths = []
        declared_by_all = sum(
            len(metaclass.get("property", []))
            for package in (TYPES, FOUNDATION, KERNEL) for metaclass in package["class"])
        self.assertEqual(rows, declared_by_all)

    def test_texts_are_escaped(self):
        """What a reader of the page sees is the text letter for letter, and no markup."""
        plain = re.sub(r"\\([!-/:-@\[-`{-~])", r"\1", self.page.replace("\\\n", "\n"))
        for metaclass in TYPES["class"]:
            for comment in comments(metaclass):
                self.assertIn(f"\n\n{comment}\n", plain)
        for _, each in PROPERTIES:
            if "documentation" in each:
                text = re.sub(r"\n *(?=.)", "\n  ", each["documentation"])
                self.assertIn(f"\n- **{each['name']}**: {text}\n", plain)
        self.assertIn("\n\\#Note 1: Complex", self.page)
        self.assertIn("`32\\|bit`", self.page)
        self.assertIn("\n\\[value-in-relative-base-unit\\] = ", self.page)
        # Outside of code and escapes, markup is only what the page is laid out with.
        bare = re.sub(r"`[^`]*`|\\[!-/:-@\[-`{-~]", "", self.page)
        self.assertEqual(
            set(re.findall(r"<[^>]*>", re.sub(r'<a id="[\w.-]+"></a>', "", bare))),
            {"<br>", "<!-- Written by \"velum describe --format md\": ./dev docs writes it anew. -->"})
        self.assertFalse(re.findall(r"^#+[^# ]", bare, re.MULTILINE))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
