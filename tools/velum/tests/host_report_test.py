"""Looks at the pages and pictures that the program writes, without a browser.

usage: host_report_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import base64
import hashlib
import html
import html.parser
import json
import re
import resource
import stat
import sys
import unittest
import xml.etree.ElementTree as ElementTree

from host import SAMPLES, Folder, document, named, package, properties, run

DICTIONARY = [SAMPLES / name for name in ("platform.arxml", "gearbox.arxml", "ignition.arxml")]
SVG = "{http://www.w3.org/2000/svg}"


class Page(html.parser.HTMLParser):
    """What a browser would see of a page, as far as the tests ask."""

    def __init__(self, text):
        super().__init__()
        self.text, self.tags, self.sections, self.open = text, [], {}, None
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.tags.append((tag, attributes))
        if tag == "section" and "data-c" in attributes:
            self.open = self.sections[attributes["id"]] = {"class": attributes["data-c"], "text": "",
                                                           "links": []}
        elif tag == "a" and self.open is not None:
            self.open["links"].append(attributes["href"][1:])

    def handle_endtag(self, tag):
        if tag == "section":
            self.open = None

    def handle_data(self, data):
        if self.open is not None:
            self.open["text"] += data

    def ids(self):
        return [attributes["id"] for _, attributes in self.tags if "id" in attributes]

    def section(self, name, metaclass):
        """The section that begins with a name."""
        found = [section for section in self.sections.values() if section["class"] == metaclass
                 and section["text"].split()[0] == name]
        assert len(found) == 1, (name, metaclass, len(found))
        return found[0]

    def markup(self, name, metaclass):
        return self.text.partition(f"<section id={self.id_of(name, metaclass)} ")[2].partition("</section>")[0]

    def id_of(self, name, metaclass):
        section = self.section(name, metaclass)
        return next(key for key, value in self.sections.items() if value is section)


def reported(*arguments):
    """The page about files or, with --diff, releases."""
    with Folder() as folder:
        result = folder.run("report", *arguments, "-o", "page.html")
        return Page((folder.path / "page.html").read_text(encoding="utf-8")), result


def constant(name, category, axes, values):
    numbers = "".join(f"<V>{value}</V>" for value in values)
    conts = "".join(
        f"<SW-AXIS-CONT><SW-AXIS-INDEX>{i + 1}</SW-AXIS-INDEX><SW-VALUES-PHYS>"
        + "".join(f"<V>{point}</V>" for point in axis) + "</SW-VALUES-PHYS></SW-AXIS-CONT>"
        for i, axis in enumerate(axes))
    return named("CONSTANT-SPECIFICATION", name,
                 f"<VALUE-SPEC><APPLICATION-VALUE-SPECIFICATION><CATEGORY>{category}</CATEGORY>"
                 f"<SW-AXIS-CONTS>{conts}</SW-AXIS-CONTS><SW-VALUE-CONT><SW-VALUES-PHYS>{numbers}"
                 "</SW-VALUES-PHYS></SW-VALUE-CONT></APPLICATION-VALUE-SPECIFICATION></VALUE-SPEC>")


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page, cls.result = reported(*DICTIONARY)

    def test_a_page_asks_for_nothing_and_lets_only_its_own_script_run(self):
        for tag, attributes in self.page.tags:
            self.assertNotIn(tag, ("link", "img", "iframe", "object", "embed", "base"))
            self.assertFalse([name for name in attributes if name.startswith("on")
                              or name in ("src", "srcset", "style", "xlink:href", "action")])
            self.assertRegex(attributes.get("href", "#"), "^#")
        policy = next(attributes["content"] for tag, attributes in self.page.tags
                      if attributes.get("http-equiv") == "Content-Security-Policy")
        self.assertTrue(policy.startswith("default-src 'none'; "))
        for tag in ("script", "style"):
            content = re.search(f"<{tag}>(.*?)</{tag}>", self.page.text, re.DOTALL)[1]
            digest = base64.b64encode(hashlib.sha256(content.encode()).digest()).decode()
            self.assertIn(f"{tag}-src 'sha256-{digest}'", policy)

    def test_every_link_has_its_target_and_every_anchor_stays(self):
        ids = self.page.ids()
        self.assertEqual(len(ids), len(set(ids)))
        for section in self.page.sections.values():
            self.assertLessEqual(set(section["links"]), set(ids))
        alone, _ = reported(DICTIONARY[2])
        for name, metaclass in (("SparkAdvance", "ConstantSpecification"), ("Load", "FloatingPoint")):
            self.assertEqual(alone.id_of(name, metaclass), self.page.id_of(name, metaclass))

    def test_every_object_has_a_section_with_links_both_ways(self):
        found = run("find", *DICTIONARY).stdout.decode().splitlines()
        named_ones = re.findall(r"<h4><a href=#\w+>(.*?)</a>", self.page.text)
        parts = [path for path in found if path.rpartition("/")[2] not in named_ones]
        members = re.findall(r"<b>(\w+)</b>", self.page.text) + ["row", "torque", "cell"]
        self.assertFalse([path for path in parts if path.rpartition("/")[2] not in members])
        # Whoever is named as a user links back.
        links = 0
        for used, text in re.findall(r"<section id=(\w{7}) (.*?)</section>", self.page.text, re.DOTALL):
            for user in re.findall(r"<a href=#(\w+)>", text.partition("Used by")[2]):
                self.assertIn(used, self.page.sections[user]["links"], text[:200])
                links += 1
            # What it uses is linked once.
            uses = re.search(r"<p class=by>Uses (.*?)(?:<p class=by>|$)", text)
            if uses:
                self.assertFalse(set(re.findall(r"<a href=#(\w+)>", uses[1])) &
                                 set(re.findall(r"<a href=#(\w+)>", text[:uses.start()])), text[:200])
        self.assertGreater(links, 100)
        for user, used in ((("ShiftMap", "LookupTableType"), ("SpeedAxis", "SharedAxisType")),
                           (("NewtonMetre", "Unit"), ("Torque", "Dimension"))):
            self.assertIn(self.page.id_of(*used), self.page.section(*user)["links"])

    def test_sections_say_what_objects_are(self):
        for name, metaclass, said in (
                ("Celsius", "CompuMethod", "physical = -40 + 0.5 × internal"),
                ("Gear", "Enumeration", "literal-beyond-type: The literal Reverse has the value -1"),
                ("Frame", "Structure", "532inner.highfloat32"),  # at, bits, member, type
                ("Frame", "Structure", "19384tablearray [2 x 6] of float32"),
                ("DegreeCelsius", "Unit", "K = 273.15 + 1 × °C"),
                ("SparkAdvance", "ConstantSpecification", "Fills SparkAdvance"),
                ("SparkAdvance", "LookupTableType", "Filled by SparkAdvance; the picture is there."),
                ("AlsoForty", "ConstantSpecification", "The value of Forty")):
            self.assertIn(said, self.page.section(name, metaclass)["text"])
        text = self.page.section("KnockRetard", "ConstantSpecification")["text"]
        for temperature in (40, 80, 110):
            self.assertIn(f"CoolantTemperature = {temperature} °C", text)

    def test_limits_bits_and_methods_are_drawn(self):
        for name, metaclass, bits, ends, labels in (
                ("OilTemperature", "FixedPoint", 8, ["", ""], ["-40", "215"]),
                ("Slip", "FloatingPoint", 32, ["o", "o"], ["0", "1"]),
                ("Angle", "FloatingPoint", 64, ["", "o"], ["0", "360"]),
                ("Wear", "FloatingPoint", 64, [], [])):
            markup = self.page.markup(name, metaclass)
            self.assertIn(f'<path d="M0 .5h{bits * 5}v10', markup)
            self.assertEqual(markup.count("v11"), bits // 8 - 1)
            self.assertEqual(re.findall("<circle(?: class=)?(.*?) cx=", markup), ends)
            self.assertEqual(re.findall("<text x=[^>]*>(.*?)</text>", markup), labels)
        # From corner to corner of the plot, between the limits of the types.
        celsius = self.page.markup("Celsius", "CompuMethod")
        self.assertIn('<path class="line" d="M62 210L430 30"/><path class="limit" d="M62 210H430"/>'
                      '<path class="limit" d="M62 30H430"/>', celsius)
        self.assertIn(">physical [°C]</text>", celsius)

    def test_findings_of_checks_and_import_stand_in_the_page(self):
        self.assertEqual(self.result.returncode, 0)
        checks = run("check", *DICTIONARY).stdout.decode().splitlines()
        rows = [attributes for tag, attributes in self.page.tags if tag == "tr" and "data-r" in attributes]
        for line in checks:
            rule = line.split(": ")[2]
            self.assertIn(rule, [row["data-r"] for row in rows])
        self.assertIn("inferred", [row["data-r"] for row in rows])
        page, result = reported(DICTIONARY[1])
        self.assertEqual(result.returncode, 1)
        shown = set(re.findall(r"data-r=([\w-]+)><td>.*?<td>.*?<td>(?:<a href=#(\w+)>)?(.*?)(?:</a>)?<td>(.*?)<td ",
                               html.unescape(page.text)))
        several = 0
        for finding in json.loads(run("import", "--json", DICTIONARY[1]).stdout)["files"][0]["findings"]:
            for place in finding.get("places", [finding]):
                rows = [row for row in shown if row[0] == finding["reason"] and row[2] == place["path"]]
                self.assertTrue(rows, place)
                for _, anchor, _, text in rows:
                    if anchor:
                        self.assertIn(text, page.sections[anchor]["text"])
            several += len(finding.get("places", [])) > 1
        self.assertGreater(several, 0)
        self.assertEqual(reported("--fail-on", "none", DICTIONARY[1])[1].returncode, 0)

    def test_tables_show_what_does_not_fit(self):
        elements = "\n".join((
            constant("Short", "MAP", [[1, 2, 3], [4, 5]], [1, 2, 3, 4]),
            constant("Long", "CURVE", [[1, 2]], [1, 2, 3, "INF"]),
            constant("None", "CURVE", [[1, 2]], []),
            constant("Odd", "CURVE", [[3, "x", 1]], ["NaN", "-INF", 7])))
        with Folder() as folder:
            folder.write("f.arxml", document(package("P", elements)))
            page, _ = reported(folder.path / "f.arxml")
        self.assertIn("The axes have 3 x 2 points, there are 4 values.",
                      page.section("Short", "ConstantSpecification")["text"])
        self.assertEqual(page.section("Short", "ConstantSpecification")["text"].count("none"), 2)
        self.assertIn("Without a place in the table: 3 INF",
                      page.section("Long", "ConstantSpecification")["text"])
        self.assertIn("there are 0 values", page.section("None", "ConstantSpecification")["text"])
        self.assertNotRegex(page.text, r"(?i) (d|cx|cy|x|y|width|height)=\"?[^\" >]*(nan|inf)")


class DiffTest(unittest.TestCase):
    def test_a_page_about_two_releases_says_what_diff_says(self):
        old = ["--old", DICTIONARY[0], DICTIONARY[1]]
        new = ["--new", DICTIONARY[0], SAMPLES / "next" / "gearbox.arxml"]
        page, result = reported("--diff", *old, *new)
        self.assertEqual(result.returncode, 0)
        lines = run("diff", *old, *new).stdout.decode().splitlines()
        told = [re.match(r"  (added|removed|renamed|changed) +([^ :]+)", line) for line in lines]
        expected = sorted((match[2], match[1]) for match in told if match)
        got = sorted(re.match(r"(\S+) \w+, (added|removed|renamed|changed)", section["text"]).groups()
                     for section in page.sections.values())
        self.assertEqual(got, expected)
        changed = page.section("OilTemperature", "FixedPoint")["text"]
        self.assertIn("Limits before (above) [-40, 215], and after [-40, 250]", changed)
        table = page.markup("Map", "ConstantSpecification")
        self.assertIn("<td class=changed><del>2</del> <ins>4</ins>", table)
        self.assertEqual(table.count('<rect class="changed"'), 2)
        self.assertEqual(reported("--diff", DICTIONARY[2], DICTIONARY[2])[0].sections, {})

    def test_wrong_usage_and_unwritable_files_are_told(self):
        for arguments, code, said in (
                ((), 2, "nothing to report"),
                (("--diff", "a"), 2, "Two releases"),
                (("missing.arxml",), 1, "missing.arxml")):
            _, result = self.attempt(arguments, "page.html")
            self.assertEqual((result.returncode, said in result.stderr.decode()), (code, True))
        written, result = self.attempt([DICTIONARY[2]], "no/such/folder.html")
        self.assertEqual((written, result.returncode), (False, 3))
        self.assertIn("cannot be written", result.stderr.decode())

    def test_a_file_that_cannot_be_written_whole_leaves_the_old_one(self):
        old = {"page": b"old", "Unit.csv": b"old"}
        for command in (("report", DICTIONARY[2], "-o", "page"),
                        ("report", "--diff", DICTIONARY[1], DICTIONARY[2], "-o", "page"),
                        ("export", DICTIONARY[2], "-o", "page"),
                        ("export", "--format", "csv", DICTIONARY[2], "-o", ".")):
            with self.subTest(command), Folder() as folder:
                for name, content in old.items():
                    folder.write(name, content)
                (folder.path / "page").chmod(0o640)
                result = run(*command, cwd=folder.path, restore_signals=False, preexec_fn=lambda: resource.setrlimit(
                    resource.RLIMIT_FSIZE, (512, 512)))
                self.assertEqual(result.returncode, 3)
                self.assertIn("cannot be written (File too large).", result.stderr.decode())
                self.assertEqual({each.name: each.read_bytes() for each in folder.path.iterdir()}, old)
                self.assertNotEqual(folder.run(*command).returncode, 3)
                new = {each.name: each.read_bytes() for each in folder.path.iterdir()}
                self.assertNotEqual({name: new[name] for name in old}, old)
                self.assertFalse([name for name in new if name != "page" and not name.endswith(".csv")])
                self.assertEqual(stat.S_IMODE((folder.path / "page").stat().st_mode), 0o640)

    def test_what_is_no_file_is_written_as_it_is(self):
        result = run("report", DICTIONARY[2], "-o", "/dev/stdout")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertTrue(Page(result.stdout.decode()).sections)

    @staticmethod
    def attempt(arguments, output):
        with Folder() as folder:
            result = folder.run("report", *arguments, "-o", output)
            return (folder.path / output).exists(), result


class PictureTest(unittest.TestCase):
    def test_a_picture_is_a_file_of_its_own(self):
        for path, lines, cells in (("/Ignition/Constants/SparkAdvance", None, True),
                                   ("/Ignition/Types/SparkAdvance", None, True),
                                   ("/Ignition/Constants/IdleSpeed", 9, False)):
            result = run("show", "--svg", path, DICTIONARY[2])
            self.assertEqual(result.returncode, 0)
            root = ElementTree.fromstring(result.stdout)
            texts = [text.text for text in root.iter(f"{SVG}text")]
            self.assertTrue(any("[1/min]" in text for text in texts))
            self.assertEqual(bool(root.findall(f"{SVG}path[@class='c0']")), cells)
            if lines:
                self.assertEqual(len(root.findall(f"{SVG}circle")), lines)
        for path in ("/Ignition/Types/Load", "/Ignition/Constants/KnockRetard", "/None", "SparkAdvance"):
            result = run("show", "--svg", path, DICTIONARY[2])
            self.assertEqual((result.returncode, result.stdout), (1, b""))
            self.assertIn(path, result.stderr.decode())

    def test_texts_of_files_stay_texts_in_pictures(self):
        name = "a&lt;svg>&lt;script>&amp;\"'&#x202E;&#x85;"
        reference = "<CONSTANT-REFERENCE><CONSTANT-REF>/P/{}</CONSTANT-REF></CONSTANT-REFERENCE>"
        elements = (
            named("APPLICATION-PRIMITIVE-DATA-TYPE", name, "<CATEGORY>CURVE</CATEGORY>" + properties(
                "<SW-CALPRM-AXIS-SET><SW-CALPRM-AXIS><SW-AXIS-INDEX>1</SW-AXIS-INDEX><CATEGORY>STD_AXIS"
                "</CATEGORY><SW-AXIS-INDIVIDUAL/></SW-CALPRM-AXIS></SW-CALPRM-AXIS-SET>")) +
            constant("c", "CURVE", [["x&lt;!-- ", 2]], ["1", "&lt;b>"]) +
            # The prototype begins with a constant that refers to the one that is drawn.
            named("CONSTANT-SPECIFICATION", "r", f"<VALUE-SPEC>{reference.format('c')}</VALUE-SPEC>") +
            named("PARAMETER-INTERFACE", "i", "<PARAMETERS>" + named(
                "PARAMETER-DATA-PROTOTYPE", "p", f"<TYPE-TREF>/P/{name}</TYPE-TREF><INIT-VALUE>"
                f"{reference.format('r')}</INIT-VALUE>") + "</PARAMETERS>"))
        with Folder() as folder:
            folder.write("f.arxml", document(package("P", elements)))
            root = ElementTree.fromstring(folder.run("show", "--svg", "/P/c", "f.arxml").stdout)
        self.assertEqual({each.tag.removeprefix(SVG) for each in root.iter()} -
                         {"svg", "style", "rect", "path", "g", "text", "circle"}, set())
        texts = [text.text for text in root.iter(f"{SVG}text")]
        self.assertIn("a<svg><script>&\"'[U+202E]\\x85", texts)
        self.assertIn("x<!--", texts)

    def test_the_metamodel_is_a_page_in_the_same_look(self):
        page = Page(run("describe", "--format", "html").stdout.decode())
        classes = re.findall(r"^ *(\w+)", run("classes").stdout.decode(), re.MULTILINE)
        names = [section["text"].split()[0] for section in page.sections.values()]
        self.assertLessEqual(set(classes), set(names))
        ids = page.ids()
        self.assertEqual(len(ids), len(set(ids)))
        links = {attributes["href"][1:] for tag, attributes in page.tags if tag == "a"}
        self.assertLessEqual(links, set(ids))
        self.assertIn('aria-label="Class diagram of Integer"', page.text)
        alone = Page(run("describe", "--format", "html", "Integer").stdout.decode())
        self.assertEqual(len(alone.sections), 1)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
