"""The package as a wheel and as it is installed. Called with the folder of the build."""

import pathlib
import subprocess
import sys
import sysconfig
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


class Package(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}

    def works_below(self, place, python):
        """The package is found below a folder, and nothing of it in the build."""
        printed = run(python, "-c", PROGRAM, *FILES, cwd=self.folder, env=self.environment)
        file, *rest = printed.split()
        self.assertTrue(file.startswith(str(place)), file)
        self.assertEqual(rest, ["True", "n", "True"])
        for line in run("ldd", next(place.rglob("_core.*.so")), env=self.environment).splitlines():
            self.assertNotIn(BUILD, line)
            self.assertNotIn("not found", line)

    def test_a_wheel_installs_and_works_by_itself(self):
        script = metamodel.ROOT / "python" / "wheel.py"
        run(sys.executable, "-B", script, BUILD, self.folder / "wheels")
        (wheel,) = (self.folder / "wheels").iterdir()
        names = zipfile.ZipFile(wheel).namelist()
        for name in ("velum/__init__.py", "velum/__init__.pyi", "velum/py.typed", "velum/_core.pyi"):
            self.assertIn(name, names)
        venv = self.folder / "venv"
        run(sys.executable, "-m", "venv", venv, env=self.environment)
        pip = (venv / "bin" / "python", "-m", "pip", "--disable-pip-version-check")
        run(*pip, "install", "--no-index", wheel, env=self.environment)
        self.works_below(venv, venv / "bin" / "python")

    def test_an_installation_has_the_package_where_the_interpreter_looks(self):
        prefix = self.folder / "prefix"
        run("cmake", "--install", BUILD, "--prefix", prefix)
        # "lib/python3.11/dist-packages" of Debian, below any prefix.
        packages = pathlib.Path(*pathlib.Path(sysconfig.get_path("platlib")).parts[-3:])
        self.environment["PYTHONPATH"] = str(prefix / packages)
        self.works_below(prefix, sys.executable)


if __name__ == "__main__":
    unittest.main()
