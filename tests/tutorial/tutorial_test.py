"""Follows docs/tutorial.md in an empty folder, with the installed library.

Writes each file that the page shows, runs each command, types each line behind "> ", and compares
everything that is printed with the page. What cmake prints isn't on the page and isn't compared.

usage: tutorial_test.py REPOSITORY BUILD HOME CMAKE_OPTION...
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

REPOSITORY, BUILD, HOME = map(pathlib.Path, sys.argv[1:4])
OPTIONS = sys.argv[4:]
FOLDER = HOME / "editor"
FILE_NAME = re.compile(r"(?://|#) (\S+)\n")


def blocks(text):
    """The fenced blocks of the page: language and content."""
    return re.findall(r"^```(\w+)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)


def sessions(block):
    """Each command of a block, the lines that are typed into it, and all that is then printed."""
    for session in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
        command, _, transcript = session.partition("\n")
        typed = "".join(line + "\n" for line in re.findall(r"^> (.*)$", transcript, re.MULTILINE))
        printed = re.sub(r"^> .*\n", "> ", transcript, flags=re.MULTILINE)
        yield command, typed, printed


class TutorialTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        shutil.rmtree(HOME, ignore_errors=True)
        FOLDER.mkdir(parents=True)
        subprocess.run(["cmake", "--install", BUILD, "--prefix", HOME / "velum"],
                       stdout=subprocess.DEVNULL, check=True)
        for name in ("platform.arxml", "gearbox.arxml"):
            shutil.copy(REPOSITORY / "examples" / "data" / name, FOLDER)

    def test_each_step_prints_what_the_page_shows(self):
        page = (REPOSITORY / "docs" / "tutorial.md").read_text(encoding="utf-8")
        files = runs = 0
        for language, content in blocks(page):
            if language in ("cpp", "cmake"):
                name = FILE_NAME.match(content)[1]
                self.assertFalse((FOLDER / name).exists(), f"{name} stands on the page twice")
                (FOLDER / name).write_text(content, encoding="utf-8")
                files += 1
            elif language == "console":
                for command, typed, printed in sessions(content):
                    self.run_command(command, typed, printed)
                    runs += printed != ""
        self.assertGreaterEqual((files, runs), (8, 6), "the page lost a step")

    def run_command(self, command, typed, printed):
        configures = " -S " in command
        result = subprocess.run(
            ["bash", "--norc", "-c", f'{command} "$@"', "bash", *(OPTIONS if configures else [])],
            cwd=FOLDER, env={**os.environ, "HOME": str(HOME)}, input=typed, capture_output=True,
            encoding="utf-8", timeout=900, check=False)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        if printed:
            # The prompt that the end of the input leaves behind isn't on the page.
            self.assertEqual((result.stdout, result.stderr), (printed + "> ", ""))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
