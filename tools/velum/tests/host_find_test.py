"""Finds objects in the samples, and compares what is found with what the export says.

usage: host_find_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import json
import sys
import unittest

from host import Folder, run

DICTIONARY = ("platform.arxml", "gearbox.arxml")


def find(*conditions):
    result = run("find", *conditions, *DICTIONARY)
    assert result.returncode == (0 if result.stdout else 1), result
    return result.stdout.decode().splitlines()


def objects():
    """All objects of the samples by path, with what they contain."""
    found = {}

    def add(value):
        if isinstance(value, dict) and "properties" in value:
            found[value["path"]] = value
        if isinstance(value, (dict, list)):
            for each in value.values() if isinstance(value, dict) else value:
                add(each)

    add(json.loads(run("export", *DICTIONARY).stdout)["objects"])
    return found


def references(value):
    """What an object refers to, itself or by what it contains."""
    if isinstance(value, dict):
        own = {value["ref"]} if "ref" in value else set()
        return own.union(*(references(each) for each in value.values()))
    return set().union(*(references(each) for each in value)) if isinstance(value, list) else set()


class FindTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.objects = objects()
        cls.paths = sorted(path for path in cls.objects if "#" not in path)

    def having(self, condition):
        return [path for path in self.paths if condition(self.objects[path]["properties"], path)]

    def test_everything(self):
        self.assertEqual(find(), self.paths)
        self.assertEqual(sorted(find("--parts")), sorted(self.objects))

    def test_names(self):
        for pattern, fits in [
                ("Torque*", lambda name, path: name.startswith("Torque")),
                ("?rid", lambda name, path: len(name) == 4 and name.endswith("rid")),
                ("[!A-Z]*", lambda name, path: not name[0].isupper()),
                ("/Gearbox/*/Torque", lambda name, path: path == "/Gearbox/CompuMethods/Torque"),
                ("/Gearbox/*", lambda name, path: path.count("/") == 2),
                ("/**/Frame/**", lambda name, path: "/Frame/" in path),
                ("Nothing", lambda name, path: False)]:
            with self.subTest(pattern):
                self.assertEqual(find("--name", pattern), self.having(
                    lambda held, path, fits=fits: fits(held["Name"], path)))

    def test_classes(self):
        for wanted, classes in [("Integer", {"Integer"}),
                                ("Real", {"Integer", "FixedPoint", "FloatingPoint", "Boolean",
                                          "Enumeration"}),
                                ("types.Unit", {"Unit"})]:
            with self.subTest(wanted):
                self.assertEqual(find("--class", wanted), [
                    path for path in self.paths if self.objects[path]["class"] in classes])
        self.assertIn("/Gearbox/ApplicationTypes/Gear#OwnedLiteral/Reverse",
                      find("--class", "EnumerationLiteral", "--parts"))

    def test_units_and_methods(self):
        def has(held, name, path):
            return held.get(name) == {"ref": path}
        metre = "/Platform/Units/NewtonMetre"
        torque = "/Gearbox/CompuMethods/Torque"
        by_unit = self.having(lambda held, path: has(held, "Unit", metre) or
                              has(held, "CompuMethod", torque))
        self.assertGreater(len(by_unit), 1)
        for unit in (metre, "NewtonMetre", "Nm"):
            self.assertEqual(find("--unit", unit), by_unit, unit)
        by_method = self.having(lambda held, path: has(held, "CompuMethod", torque))
        for method in (torque, "Torque", "/Gearbox/*/Torq*"):
            self.assertEqual(find("--method", method), by_method, method)

    def test_properties(self):
        for condition, fits in [
                ("Length", lambda held: "Length" in held),
                ("Length=8|*", lambda held: held.get("Length", "").startswith("8|")),
                ("IsSigned=true", lambda held: held.get("IsSigned") is True),
                ("maxValue=255", lambda held: held.get("maxValue") == 255),
                ("maxValue=2.55e2", lambda held: held.get("maxValue") == 255),
                ("SwBaseType=u16", lambda held: held.get("SwBaseType") ==
                 {"ref": "/Platform/BaseTypes/u16"}),
                ("Dimensions=2", lambda held: held.get("Dimensions", [])[:1] == [2])]:
            with self.subTest(condition):
                found = find("--property", condition)
                self.assertTrue(found)
                self.assertEqual(found, self.having(lambda held, path, fits=fits: fits(held)))
        both = find("--property", "IsSigned=false", "--property", "Length=16|bit")
        self.assertEqual(both, self.having(
            lambda held, path: held.get("IsSigned") is False and held.get("Length") == "16|bit"))

    def test_uses(self):
        by = {path: references(self.objects[path]["properties"]) for path in self.paths}
        for path in self.paths:
            inside = {each for each in self.objects if each == path or each.startswith(path + "#")}
            used = {each.split("#")[0] for each in by[path] - inside} - {""}
            with self.subTest(path):
                self.assertLessEqual(used, set(find("--used-by", path)))
        uint8 = "/Platform/Types/uint8"
        self.assertIn("/Gearbox/ImplementationTypes/Frame/id", find("--uses", uint8))
        for user in find("--uses", uint8):
            self.assertIn(uint8, by[user])
        free = [path for path in self.paths if "/" not in path.replace("/", "", 3)]
        unused = [path for path in free
                  if not any(path in {each.split("#")[0] for each in by[other]}
                             for other in self.paths if other != path)]
        found = find("--unused")
        self.assertTrue(set(found) <= set(unused), set(found) - set(unused))
        self.assertIn("/Platform/BaseTypes/" + "u16", set(self.paths) - set(found))

    def test_json_and_faults(self):
        (first, *_) = json.loads(run("find", "--json", "--name", "Grid", *DICTIONARY).stdout)["found"]
        self.assertEqual(first, {"path": "/Gearbox/Constants/Grid", "name": "Grid",
                                 "class": "ConstantSpecification"})
        unknown = run("find", "--uses", "/Nobody", *DICTIONARY)
        self.assertEqual((unknown.returncode, unknown.stdout), (1, b""))
        self.assertIn(b"/Nobody", unknown.stderr)
        for wrong in (("--class", "Integr"), ("--property", "length=8")):
            self.assertEqual(run("find", *wrong, *DICTIONARY).returncode, 2, wrong)
        self.assertEqual(run("find", "--name", "x").returncode, 2)

    def test_patterns_take_no_time(self):
        with Folder() as folder:
            folder.write("f.arxml", (
                '<AUTOSAR xmlns="http://autosar.org/schema/r4.0"><AR-PACKAGES><AR-PACKAGE>'
                f"<SHORT-NAME>P</SHORT-NAME><ELEMENTS><UNIT><SHORT-NAME>{'a' * 100}</SHORT-NAME>"
                "</UNIT></ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>"))
            self.assertEqual(folder.run("find", "--name", "*a" * 50 + "b", "f.arxml").stdout, b"")
            self.assertNotEqual(folder.run("find", "--name", "*a" * 50, "f.arxml").stdout, b"")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
