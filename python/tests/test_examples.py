"""The programs in examples/python print what stands here."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

import metamodel

EXAMPLES = metamodel.ROOT / "examples" / "python"
DATA = metamodel.ROOT / "examples" / "data"
FILES = [str(DATA / "platform.arxml"), str(DATA / "gearbox.arxml")]


def run(name, *arguments):
    ended = subprocess.run(
        [sys.executable, str(EXAMPLES / f"{name}.py"), *map(str, arguments)],
        capture_output=True,
        text=True,
        check=False,
    )
    return ended.returncode, ended.stdout, ended.stderr


class Examples(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def printed(self, name, *arguments):
        verdict, output, error = run(name, *arguments)
        self.assertEqual(verdict, 0, error)
        return output

    def test_units_in_use(self):
        self.assertIn("RevolutionsPerMinute", self.printed("units_in_use", *FILES))

    def test_types_without_limits(self):
        lines = self.printed("types_without_limits", *FILES).splitlines()
        self.assertTrue(lines)
        self.assertTrue(all(line.startswith("/") and ": " in line for line in lines))

    def test_release_differences(self):
        newer = self.folder / "newer.arxml"
        text = (DATA / "gearbox.arxml").read_text(encoding="utf-8")
        newer.write_text(text.replace("<V>0.5</V>", "<V>0.75</V>", 1), encoding="utf-8")
        lines = self.printed("release_differences", FILES[1], newer).splitlines()
        self.assertEqual(lines[0], "kind,path,part,property,old,new")
        self.assertTrue(any(line.startswith("value,") for line in lines))
        self.assertEqual(len(self.printed("release_differences", newer, newer).splitlines()), 1)

    def test_bulk_rename(self):
        target = self.folder / "renamed.arxml"
        output = self.printed("bulk_rename", "Cm_", target, *FILES)
        self.assertRegex(output, r"^\d+ differences, \d+ elements written\.\n$")
        self.assertIn("<SHORT-NAME>Cm_Gears</SHORT-NAME>", target.read_text(encoding="utf-8"))

    def test_plot_map(self):
        picture = self.folder / "map.png"
        path = "/Ignition/Constants/SparkAdvance"
        output = self.printed("plot_map", path, picture, DATA / "ignition.arxml")
        rows = [line.split() for line in output.splitlines()]
        self.assertEqual([len(row) for row in rows], [10] + 12 * [11])
        self.assertEqual((rows[0][0], rows[1][:2], rows[-1][-1]), ("10", ["600", "8"], "16.25"))
        verdict, _, error = run("plot_map", "/Gearbox/Units", picture, *FILES)
        self.assertNotEqual(verdict, 0)
        self.assertIn("There is no constant", error)


class Readme(unittest.TestCase):
    def test_the_example_prints_what_is_said(self):
        page = (metamodel.ROOT / "README.md").read_text(encoding="utf-8")
        program, _, rest = page.partition("```python\n")[2].partition("```\n")
        told = rest.partition("```text\n")[2].partition("```\n")[0]
        ended = subprocess.run(
            [sys.executable, "-c", program], capture_output=True, text=True, check=False
        )
        self.assertEqual(ended.stderr, "")
        printed = [line.rstrip() for line in ended.stdout.splitlines()]
        self.assertEqual(printed, told.splitlines())


if __name__ == "__main__":
    unittest.main()
