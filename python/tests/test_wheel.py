"""The wheel in a virtual environment of its own. Called with the folder of the build."""

import pathlib
import subprocess
import sys
import tempfile
import unittest
import zipfile

import metamodel

BUILD = sys.argv.pop(1)
FILES = [str(metamodel.ROOT / "examples" / "data" / f"{name}.arxml") for name in ("platform", "gearbox")]
PROGRAM = """
import sys, velum
model, report = velum.read(sys.argv[1:])
unit = velum.Unit(model, "new", symbol="n")
print(velum.__file__, len(model.objects()) > 100, unit.symbol, len(velum.check(model).rows()) > 0)
"""


def run(*command, **options):
    ended = subprocess.run(
        [str(word) for word in command], capture_output=True, text=True, check=False, **options
    )
    assert ended.returncode == 0, ended.stdout + ended.stderr
    return ended.stdout


class Wheel(unittest.TestCase):
    def test_it_installs_and_works_by_itself(self):
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        script = metamodel.ROOT / "python" / "wheel.py"
        run(sys.executable, "-B", script, BUILD, folder / "wheels")
        (wheel,) = (folder / "wheels").iterdir()
        names = zipfile.ZipFile(wheel).namelist()
        for name in ("velum/__init__.py", "velum/__init__.pyi", "velum/py.typed", "velum/_core.pyi"):
            self.assertIn(name, names)
        environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}
        run(sys.executable, "-m", "venv", folder / "venv", env=environment)
        python = folder / "venv" / "bin" / "python"
        pip = (python, "-m", "pip", "--disable-pip-version-check")
        run(*pip, "install", "--no-index", wheel, env=environment)
        printed = run(python, "-c", PROGRAM, *FILES, cwd=folder, env=environment)
        place, *rest = printed.split()
        self.assertTrue(place.startswith(str(folder / "venv")))
        self.assertEqual(rest, ["True", "n", "True"])
        # Nothing is found in the build: the libraries are those of the wheel.
        core = next((folder / "venv").rglob("_core.*.so"))
        for line in run("ldd", core, env=environment).splitlines():
            self.assertNotIn(BUILD, line)
            self.assertNotIn("not found", line)


if __name__ == "__main__":
    unittest.main()
