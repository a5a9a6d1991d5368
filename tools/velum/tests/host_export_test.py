"""Exports the samples and reads the documents back.

usage: host_export_test.py PROGRAM SAMPLES SCHEMA [UNITTEST ARGUMENT...]
"""

import csv
import json
import pathlib
import sys
import unittest

from host import SAMPLES, Folder, document, named, package, run

SCHEMA = json.loads(pathlib.Path(sys.argv[3]).read_text(encoding="utf-8"))
DICTIONARY = ("platform.arxml", "gearbox.arxml")

TYPES = {"object": dict, "array": list, "string": str, "boolean": bool, "null": type(None)}


def faults(value, schema, place="document"):
    """In what a value breaks a schema, as far as the one of this project needs it."""
    if "$ref" in schema:
        return faults(value, SCHEMA["$defs"][schema["$ref"].rpartition("/")[2]], place)
    if "anyOf" in schema:
        tried = [faults(value, each, place) for each in schema["anyOf"]]
        return [] if [] in tried else [f"{place}: none of several"]
    if "const" in schema:
        return [] if value == schema["const"] else [f"{place}: {value!r}"]
    kind = schema.get("type")
    is_number = isinstance(value, (int, float)) and not isinstance(value, bool)
    if kind and not (is_number if kind == "number" else isinstance(value, TYPES[kind])):
        return [f"{place}: no {kind}"]
    found = []
    if isinstance(value, dict):
        found += [f"{place}: no {key}" for key in schema.get("required", []) if key not in value]
        for key, each in value.items():
            inner = schema.get("properties", {}).get(key, schema.get("additionalProperties", {}))
            found += [f"{place}: {key}"] if inner is False else faults(each, inner, f"{place}.{key}")
    if isinstance(value, list):
        for number, each in enumerate(value):
            found += faults(each, schema.get("items", {}), f"{place}[{number}]")
    return found


def nested(value):
    """All objects in a value, each before those that it contains."""
    if isinstance(value, dict):
        if "properties" in value:
            yield value
        value = list(value.values())
    for each in value if isinstance(value, list) else []:
        yield from nested(each)


class ExportTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.text = run("export", *DICTIONARY).stdout
        cls.document = json.loads(cls.text)
        cls.objects = {each["path"]: each for each in nested(cls.document["objects"])}

    def test_the_document_is_as_the_schema_says(self):
        self.assertEqual(faults(self.document, SCHEMA), [])
        broken = json.loads(self.text)
        broken["objects"][0]["more"] = 1
        self.assertNotEqual(faults(broken, SCHEMA), [])

    def test_everything_is_there_once(self):
        counts = {row["class"]: row["count"] for row in json.loads(
            run("import", "--json", *DICTIONARY).stdout)["objects"]}
        found = [each["class"] for each in nested(self.document["objects"])]
        self.assertEqual({name: found.count(name) for name in found}, counts)
        self.assertEqual(len(self.objects), len(found), "paths are unique")
        paths = [each["path"] for each in self.document["objects"]]
        withpath = [path for path in paths if path.startswith("/") and "#" not in path]
        self.assertEqual(withpath, sorted(withpath))
        self.assertEqual(paths[:len(withpath)], withpath)

    def test_references_lead_to_objects(self):
        def targets(value):
            if isinstance(value, dict):
                if "ref" in value:
                    yield value["ref"]
                value = list(value.values())
            for each in value if isinstance(value, list) else []:
                yield from targets(each)
        found = set(targets(self.document["objects"]))
        self.assertGreater(len(found), 20)
        self.assertLessEqual(found, set(self.objects))
        self.assertEqual(
            self.objects["/Gearbox/CompuMethods/Torque"]["properties"],
            {"Name": "Torque", "Visibility": "public", "Category": "Linear",
             "Unit": {"ref": "/Platform/Units/NewtonMetre"},
             "CalToInternalCompuNumerator": [0.0, 8.0], "CalToInternalCompuDenominator": [1.0],
             "ExternalId": "/Gearbox/CompuMethods/Torque"})

    def test_a_file_and_the_same_again(self):
        with Folder() as folder:
            files = [SAMPLES / name for name in DICTIONARY]
            result = folder.run("export", "-o", "out.json", *reversed(files))
            self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b"", b""))
            self.assertEqual((folder.path / "out.json").read_bytes(), self.text)

    def test_tables(self):
        with Folder() as folder:
            files = [SAMPLES / name for name in DICTIONARY]
            result = folder.run("export", "--format", "csv", "--output", "out/tables", *files)
            self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b"", b""))
            rows = {}
            for path in (folder.path / "out" / "tables").iterdir():
                data = path.read_bytes()
                self.assertEqual(data.count(b"\n"), data.count(b"\r\n"))
                for row in csv.DictReader(data.decode().splitlines(keepends=True)):
                    rows[row["path"]] = (path.stem, row)
        self.assertEqual(set(rows), set(self.objects))
        for path, (metaclass, row) in rows.items():
            with self.subTest(path):
                exported = self.objects[path]
                self.assertEqual(metaclass, exported["class"])
                for name, value in row.items():
                    if name not in ("path", "container"):
                        held = exported["properties"].get(name)
                        self.assertEqual(*self.alike(value, held), name)
        self.assertEqual(rows["/Gearbox/ImplementationTypes/Frame/id"][1]["container"],
                         "/Gearbox/ImplementationTypes/Frame")

    @staticmethod
    def alike(cell, value):
        """A cell and a value of the document in the form in which they are to be equal."""
        def address(each):
            return each.get("ref", each.get("path")) if isinstance(each, dict) else each
        if isinstance(value, list):
            return json.loads(cell), [address(each) for each in value]
        if isinstance(value, bool):
            return cell, str(value).lower()
        if isinstance(value, (int, float)):
            return float(cell), float(value)
        return cell, address(value) or ""

    def test_difficult_texts(self):
        texts = ['a,b', 'say "x"', 'two\nlines', ' blank ', '=1+1', 'käse']
        literals = "".join(
            f"<COMPU-SCALE><LOWER-LIMIT>{n}</LOWER-LIMIT><UPPER-LIMIT>{n}</UPPER-LIMIT>"
            f"<COMPU-CONST><VT>{text}</VT></COMPU-CONST></COMPU-SCALE>"
            for n, text in enumerate(texts))
        elements = named(
            "COMPU-METHOD", "m", "<CATEGORY>TEXTTABLE</CATEGORY><COMPU-INTERNAL-TO-PHYS>"
            f"<COMPU-SCALES>{literals}</COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>") + named(
                "APPLICATION-PRIMITIVE-DATA-TYPE", "e", "<CATEGORY>VALUE</CATEGORY>"
                "<SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS><SW-DATA-DEF-PROPS-CONDITIONAL>"
                "<COMPU-METHOD-REF>/P/m</COMPU-METHOD-REF></SW-DATA-DEF-PROPS-CONDITIONAL>"
                "</SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>")
        with Folder() as folder:
            folder.write("f.arxml", document(package("P", elements)))
            data = json.loads(folder.run("export", "f.arxml").stdout)
            literals = data["objects"][0]["properties"]["OwnedLiteral"]
            names = [each["properties"]["Name"] for each in literals]
            folder.run("export", "--format", "csv", "-o", "out", "f.arxml")
            with open(folder.path / "out" / "EnumerationLiteral.csv", encoding="utf-8",
                      newline="") as file:
                self.assertEqual([row["Name"] for row in csv.DictReader(file)], names)
        self.assertEqual([name.strip() for name in names], [text.strip() for text in texts])

    def test_what_cannot_be_written(self):
        with Folder() as folder:
            folder.write("file", "")
            sample = SAMPLES / "platform.arxml"
            for arguments, code in [(("--format", "csv", "-o", "file"), 3),
                                    (("-o", "missing/out.json"), 3), (("-o", "/dev/full"), 3),
                                    (("--format", "csv"), 2), (("--format", "xml"), 2)]:
                result = folder.run("export", *arguments, sample)
                self.assertEqual(result.returncode, code, arguments)
                self.assertTrue(result.stderr)

class ArxmlTest(unittest.TestCase):
    """What the format keeps and how it is written is tested with the library."""

    @unittest.skipUnless(pathlib.Path("/dev/full").exists(), "needs a device that is always full")
    def test_what_is_no_plain_file_is_written_as_it_is(self):
        with Folder() as folder:
            folder.write("units.arxml", document(package("P", named("UNIT", "u"))))
            for format_ in ("arxml", "json"):
                command = ("export", "--format", format_, "units.arxml", "-o")
                result = folder.run(*command, "/dev/stdout")
                self.assertEqual((result.returncode, result.stderr), (0, b""))
                folder.run(*command, "file")
                self.assertEqual(result.stdout, (folder.path / "file").read_bytes())
                result = folder.run(*command, "/dev/full")
                self.assertEqual(result.returncode, 3)
                self.assertEqual(result.stderr, b"velum: /dev/full: The file cannot be written "
                                                b"(No space left on device).\n")

    def test_a_file_goes_round_and_is_replaced_only_as_a_whole(self):
        with Folder() as folder:
            for name in DICTIONARY:
                folder.write(name, (SAMPLES / name).read_bytes())
            folder.write("out.arxml", "before")
            self.assertEqual(folder.run("export", "--format", "arxml", *DICTIONARY).returncode, 2)
            result = folder.run("export", "--format", "arxml", "-o", "no/out.arxml", *DICTIONARY)
            self.assertEqual(result.returncode, 3)
            self.assertIn(b"no/out.arxml: The file cannot be written", result.stderr)
            result = folder.run("export", "--format", "arxml", "-o", "out.arxml", *DICTIONARY)
            self.assertEqual((result.returncode, result.stdout), (0, b""))
            self.assertIn(b"velum: no-place: /Gearbox/ImplementationTypes/Clutches: ", result.stderr)
            text = (folder.path / "out.arxml").read_text(encoding="utf-8")
            self.assertIn("AUTOSAR_00051.xsd", text)
            folder.run("export", "--format", "arxml", "--layout", "packages", "--schema",
                       "AUTOSAR_00048", "-o", "parts", "out.arxml")
            parts = sorted((folder.path / "parts").iterdir())
            self.assertIn("Gearbox.CompuMethods.arxml", [part.name for part in parts])
            for part in parts:
                self.assertIn("AUTOSAR_00048.xsd", part.read_text(encoding="utf-8"))
            self.assertEqual(
                folder.run("diff", "--old", *DICTIONARY, "--new", "parts").returncode, 0)
            self.assertEqual(sorted(path.name for path in folder.path.iterdir()),
                             sorted([*DICTIONARY, "out.arxml", "parts"]))


class RenameTest(unittest.TestCase):
    def test_a_refused_renaming_changes_nothing(self):
        with Folder() as folder:
            for name in DICTIONARY:
                folder.write(name, (SAMPLES / name).read_bytes())
            for path, name, code in (("/Gearbox/None", "New", 1),
                                     ("/Platform/Units/Percent", "Kelvin", 1),
                                     ("/Platform/Units/Percent", "per cent", 2),
                                     ("Platform", "New", 2)):
                result = folder.run("rename", *DICTIONARY, path, name)
                self.assertEqual((result.returncode, result.stdout), (code, b""), path)
                self.assertTrue(result.stderr.startswith(b"velum: "))
            for name in DICTIONARY:
                self.assertEqual((folder.path / name).read_bytes(), (SAMPLES / name).read_bytes())

    def test_references_follow_through_every_reference_base(self):
        """Whatever is renamed, no reference is lost, and the way back leads to the same bytes."""
        files = ["integer_types.arxml", *DICTIONARY]
        for name in files:
            original = (SAMPLES / name).read_bytes()
            with Folder() as folder:
                for each in files:
                    folder.write(each, (SAMPLES / each).read_bytes())
                before = self.dangling(folder, files)
                paths = folder.run("find", name).stdout.decode().split()
                packages = {path.rsplit("/", 1)[0] for path in paths}
                for path in sorted(packages | set(paths[::7])):
                    result = folder.run("rename", *files, path, "Renamed")
                    self.assertEqual(result.returncode, 0, result.stderr)
                    self.assertEqual(self.dangling(folder, files), before, path)
                    renamed = path.rsplit("/", 1)[0] + "/Renamed"
                    folder.run("rename", *files, renamed, path.rsplit("/", 1)[1])
                    self.assertEqual((folder.path / name).read_bytes(), original, path)

    @staticmethod
    def dangling(folder, files):
        """How many references lead nowhere."""
        report = json.loads(folder.run("import", "--json", *files).stdout)
        return sum(row["count"] for file in report["files"] for row in file["skipped"]
                   if row["reason"] == "dangling")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
