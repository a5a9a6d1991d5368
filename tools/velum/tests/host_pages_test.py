"""Runs every command that the pages show after "$", and compares what it prints with the page; writes
anew what the program wrote for the documentation.

A line of three dots stands for any number of lines.

usage: host_pages_test.py PROGRAM SAMPLES REPOSITORY [UNITTEST ARGUMENT...]
"""

import difflib
import itertools
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from host import PROGRAM, SAMPLES, help_of, run

SOURCE = pathlib.Path(sys.argv[3])
PAGES = [(SOURCE / name).read_text(encoding="utf-8")
         for name in ("docs/velum.md", "README.md", "docs/report.md", "docs/store.md")]


def sessions(text):
    """Each command of a page, with the lines that follow it in the same block. A text in double
    quotes may continue in lines that begin with ">"."""
    for block in re.findall(r"(?:^    .*\n(?:^\n)*)+", text, re.MULTILINE):
        lines = [line[4:] for line in block.rstrip("\n").splitlines()]
        starts = [i for i, line in enumerate(lines) if line.startswith("$ ")]
        for start, end in zip(starts, [*starts[1:], len(lines)]):
            command = lines[start][2:]
            while command.count('"') % 2:
                start += 1
                command += "\n" + lines[start].removeprefix("> ")
            yield command, lines[start + 1:end]


class PageTest(unittest.TestCase):
    def test_each_command_prints_what_the_page_shows(self):
        shown = set()
        with tempfile.TemporaryDirectory() as folder:
            samples = pathlib.Path(folder) / "examples" / "data"
            shutil.copytree(SAMPLES, samples)
            for command, expected in itertools.chain(*map(sessions, PAGES)):
                shown.update(re.findall(r"\bvelum (\w+)", command))
                pattern = "".join("(?:.*\n)*?" if line == "..." else re.escape(line) + "\n"
                                  for line in expected)
                with self.subTest(command):
                    printed = self.run_in(samples, command)
                    self.assertTrue(re.fullmatch(pattern, printed), printed)
        self.assertLessEqual({name for name in help_of() if not name.startswith("-")}, shown)

    def test_each_rule_has_an_example_and_each_reason_a_meaning(self):
        usage = run("check", "--help").stdout.decode()
        rules, reasons = (re.search(rf"{option} .*?\{{(.*?)\}}", usage)[1].split(",")
                          for option in ("--rule", "--fail-on"))
        for rule in rules:
            self.assertRegex(
                PAGES[0], rf"(?m)^\| `{rule}` \| (error|warning) \| [^|]+ \| [^|]+\w[^|]+ \|$")
        for reason in set(reasons) - {"none"}:
            self.assertRegex(PAGES[0], rf"(?m)^\| `{reason}` \| [^|]+ \|")

    def test_what_the_program_wrote_for_the_documentation_is_up_to_date(self):
        for name, *arguments in (("metamodel.md", "describe", "--format", "md"),
                                 ("spark_advance.svg", "show", "--svg", "/Ignition/Constants/SparkAdvance",
                                  "ignition.arxml")):
            with self.subTest(name):
                held = (SOURCE / "docs" / name).read_text(encoding="utf-8")
                written = run(*arguments).stdout.decode()
                difference = difflib.unified_diff(held.splitlines(), written.splitlines(), name, "velum", n=0,
                                                  lineterm="")
                self.assertEqual(held, written, "\"./dev docs\" rewrites the file:\n" + "\n".join(
                    line[:200] for line in itertools.islice(difference, 20)))

    @staticmethod
    def run_in(folder, command):
        script = f'velum() {{ "$PROGRAM" "$@"; }}\n{command}'
        return subprocess.run(
            ["bash", "--norc", "-c", script], cwd=folder,
            env={**os.environ, "PROGRAM": PROGRAM}, capture_output=True, encoding="utf-8",
            timeout=300, check=False).stdout


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
