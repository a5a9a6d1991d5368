"""The programs in examples/python print what stands here."""

import importlib.util
import pathlib
import subprocess
import sys
import tempfile
import unittest

import metamodel

EXAMPLES = metamodel.ROOT / "examples" / "python"
DATA = metamodel.ROOT / "examples" / "data"
FILES = [str(DATA / "platform.arxml"), str(DATA / "gearbox.arxml")]


def python(*arguments, typed=None):
    ended = subprocess.run(
        [sys.executable, *map(str, arguments)], input=typed, capture_output=True, text=True, check=False
    )
    return ended.returncode, ended.stdout, ended.stderr


def run(name, *arguments):
    return python(EXAMPLES / f"{name}.py", *arguments)


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

    @unittest.skipUnless(importlib.util.find_spec("matplotlib"), "matplotlib isn't installed")
    def test_plot_map_draws(self):
        picture = self.folder / "map.png"
        self.printed("plot_map", "/Ignition/Constants/SparkAdvance", picture, DATA / "ignition.arxml")
        self.assertEqual(picture.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")


class Pages(unittest.TestCase):
    def test_the_example_of_the_first_page_prints_what_is_said(self):
        page = (metamodel.ROOT / "README.md").read_text(encoding="utf-8")
        program, _, rest = page.partition("```python\n")[2].partition("```\n")
        told = rest.partition("```text\n")[2].partition("```\n")[0]
        verdict, output, error = python("-c", program)
        self.assertEqual((verdict, error), (0, ""))
        self.assertEqual([line.rstrip() for line in output.splitlines()], told.splitlines())

    def test_the_example_of_the_page_about_python_runs(self):
        page = (metamodel.ROOT / "docs" / "python.md").read_text(encoding="utf-8")
        program = page.partition("```python\n")[2].partition("```\n")[0]
        verdict, output, error = python("-c", program)
        self.assertEqual((verdict, error), (0, ""))
        first, *changes = output.splitlines()
        self.assertIn(f"# {first}\n", program)
        self.assertEqual(changes, ["#Integer/Speed Length 16|bit -> 32|bit"])

    def test_the_prompt_has_the_files_read(self):
        typed = "print(len(report.files), model.objects(velum.Unit)[0].symbol is None)\n"
        verdict, output, _ = python("-i", "-m", "velum.prompt", *FILES, typed=typed)
        self.assertEqual(verdict, 0)
        self.assertIn("velum is imported; `model` is <velum.Model ", output)
        self.assertRegex(output, r"2 (True|False)\n")


if __name__ == "__main__":
    unittest.main()
