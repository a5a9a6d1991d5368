"""Completes command lines in bash, and compares the manual page with the help.

usage: host_usage_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import re
import shutil
import subprocess
import sys
import unittest

from host import SAMPLES, Folder, document, help_of, package, run

COMMANDS = [name for name in help_of() if not name.startswith("-")]


class CompletionTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.script = run("completion").stdout.decode()

    def complete(self, *words, cwd=SAMPLES):
        """What bash offers for the last word, by the script alone."""
        script = self.script + (
            'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _velum; printf "%s\\n" "${COMPREPLY[@]}"')
        result = subprocess.run(
            ["bash", "--norc", "-c", script, "bash", "velum", *words], cwd=cwd,
            capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return sorted(filter(None, result.stdout.splitlines()))

    def test_commands_and_options(self):
        self.assertEqual([each for each in self.complete("") if not each.startswith("-")],
                         sorted(COMMANDS))
        self.assertEqual(self.complete("di"), ["diff"])
        self.assertEqual(self.complete("nothing"), [])
        for command in COMMANDS:
            options = {name for name in help_of(command) if name.startswith("--")}
            self.assertLessEqual(options, set(self.complete(command, "-")), command)
        self.assertEqual(self.complete("find", "--un"), ["--unit", "--unused"])

    def test_values(self):
        self.assertEqual(self.complete("export", "--format", ""), ["arxml", "csv", "json"])
        self.assertEqual(self.complete("export", "--format", "=", "c"), ["csv"])
        self.assertEqual(self.complete("export", "--format", "="), ["arxml", "csv", "json"])
        self.assertEqual(self.complete("find", "--class", "Enum"),
                         ["Enumeration", "EnumerationLiteral", "EnumerationLiteralReference"])
        self.assertEqual(self.complete("describe", "FloatingP"), ["FloatingPoint"])
        self.assertIn("OwnedLiteral", self.complete("diff", "--ignore", "Own"))
        self.assertEqual(self.complete("find", "--name", ""), [])
        self.assertEqual(self.complete("check", "--severity", ""), ["error", "note", "warning"])
        self.assertEqual(self.complete("check", "--format", "s"), ["sarif"])
        for option, first, second, start in (("--rule", "axis-order", "void-value", "vo"),
                                             ("--fail-on", "dangling", "symbolic", "sy")):
            self.assertEqual(self.complete("check", option, first[:3]), [first])
            self.assertEqual(self.complete("check", option, f"{first},{start}"),
                             [f"{first},{second}"])

    def test_files(self):
        with Folder() as folder:
            for name in ("a b.arxml", "b.arxml.gz", "c.velum", "notes.txt"):
                folder.write(name, "")
            (folder.path / "more").mkdir()
            for words in (["import", ""], ["diff", "a b.arxml", ""], ["diff", "--old", ""]):
                self.assertEqual(self.complete(*words, cwd=folder.path),
                                 ["a b.arxml", "b.arxml.gz", "c.velum", "more"], words)
            for words in (["export", "-o", ""], ["check", "--baseline", ""]):
                self.assertIn("notes.txt", self.complete(*words, cwd=folder.path))
            self.assertEqual(self.complete("find", "--uses", "", cwd=folder.path), [])


class MistakeTest(unittest.TestCase):
    def test_messages_say_what_is_wrong_and_what_to_do(self):
        for arguments, code, said in [
                (["imprt", "x"], 2, 'There is no command (imprt); "velum --help" lists them.'),
                (["find", "--class", "Nothing", "platform.arxml"], 2,
                 'There is no class (Nothing); "velum classes" lists them.'),
                (["check", "--baseline", ".", "platform.arxml"], 1,
                 ".: The baseline cannot be read; is it a file?")]:
            result = run(*arguments)
            self.assertEqual((result.returncode, result.stdout, result.stderr.decode()),
                             (code, b"", f"velum: {said}\n"))
        self.assertEqual(run().stderr.splitlines()[0], b"A subcommand is required")

    def test_the_first_thing_that_is_wrong_is_told(self):
        with Folder() as folder:
            folder.write("fine.arxml", document())
            folder.write("g.arxml", document(package("P", "<UNIT/>\n<UNIT/>")))
            for command in (["check"], ["show"], ["find"], ["export", "-o", "o"], ["diff", "fine.arxml"]):
                said = folder.run(*command, "g.arxml").stderr.decode()
                self.assertEqual(said, "velum: g.arxml:2:1: no-name: This UNIT has no SHORT-NAME. "
                                 '"velum import" lists all that is wrong.\n')
            result = folder.run("check", "--fail-on", "no-class", "g.arxml")
            self.assertEqual((result.returncode, result.stderr), (0, b""))


class ManualTest(unittest.TestCase):
    def test_it_says_what_the_help_says(self):
        page = run("manual").stdout.decode()
        plain = re.sub(r"\\f[BIR]", "", page).replace("\\-", "-").replace("\\&", "")
        self.assertEqual([line[10:] for line in plain.splitlines() if line.startswith(".SS velum ")],
                         COMMANDS)
        self.assertEqual(plain.count("Exit codes: "), 3, "of the program, of diff and of merge")
        for command in COMMANDS:
            section = plain.split(f".SS velum {command}\n")[1].split("\n.S")[0].splitlines()
            for name, said in help_of(command).items():
                headings = [i for i, line in enumerate(section)
                            if re.search(rf"(^|{', ' if name[0] == '-' else '^'}){re.escape(name)}(\b|$)", line)
                            and section[i - 1] == ".TP"]
                self.assertEqual(len(headings), 1, (command, name))
                self.assertIn(section[headings[0] + 1], " ".join(said.split()))

    @unittest.skipUnless(shutil.which("groff"), "groff is not installed")
    def test_man_prints_it_without_a_warning(self):
        page = run("manual").stdout
        result = subprocess.run(["groff", "-man", "-Tutf8", "-ww"], input=page,
                                capture_output=True, timeout=60, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertIn("diff", result.stdout.decode())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
