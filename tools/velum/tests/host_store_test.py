"""Writes stores, reads them with every command, and queries them.

usage: host_store_test.py PROGRAM SAMPLES STORE-PAGE [UNITTEST ARGUMENT...]
"""

import csv
import io
import json
import os
import pathlib
import re
import resource
import shutil
import sqlite3
import subprocess
import sys
import unittest

from host import PROGRAM, SAMPLES, Folder, document, named, package, run

DICTIONARY = ("platform.arxml", "gearbox.arxml")
HEADER = b"SQLite format 3\0"


def queried(sql, *options, file="d.velum", cwd):
    result = run("sql", *options, file, sql, cwd=cwd)
    return result.returncode, result.stdout.decode(), result.stderr.decode()


class StoreTest(unittest.TestCase):
    """Each test gets a folder with the samples and a store of two of them."""

    def setUp(self):
        self.folder = self.enterContext(Folder()) if hasattr(self, "enterContext") else None
        if self.folder is None:
            self.folder = Folder().__enter__()
            self.addCleanup(self.folder.__exit__)
        self.path = self.folder.path
        for name in DICTIONARY:
            shutil.copy(SAMPLES / name, self.path)
        shutil.copytree(SAMPLES / "next", self.path / "next")
        self.run_("import", "-o", "d.velum", *DICTIONARY)
        self.assertTrue((self.path / "d.velum").read_bytes().startswith(HEADER))

    def run_(self, *arguments):
        return self.folder.run(*arguments)

    def outputs(self, *arguments):
        result = self.run_(*arguments)
        return result.returncode, result.stdout.decode(), result.stderr.decode()

    def fails_in_a_line(self, code, words, *arguments):
        result = self.outputs(*arguments)
        self.assertEqual(result[:2], (code, ""), result)
        self.assertRegex(result[2], rf"\Avelum: [^\n]*{words}[^\n]*\n\Z")


class EveryCommandTest(StoreTest):
    def test_it_prints_of_a_store_what_it_prints_of_the_files(self):
        for command in (["show"], ["show", "--fail-on", "none"], ["find"], ["find", "--parts"],
                        ["find", "--class", "PrimitiveType", "--unit", "Nm"], ["find", "--unused"],
                        ["export"], ["export", "--format", "csv", "-o", "out"],
                        ["export", "--format", "arxml", "-o", "out"]):
            said = []
            for files in (DICTIONARY, ["d.velum"]):
                result = self.run_(*command, *files)
                self.assertEqual(result.returncode, 0, (command, result))
                out = self.path / "out"
                written = []
                if out.is_dir():
                    written = [(each.name, each.read_bytes()) for each in sorted(out.iterdir())]
                    shutil.rmtree(out)
                elif out.exists():
                    written = out.read_bytes()
                    out.unlink()
                said.append((result.stdout, written))
            self.assertEqual(said[0], said[1], command)
            self.assertTrue(said[0][0] or said[0][1], command)

    def test_diff_takes_them_on_either_side(self):
        code, text, _ = self.outputs("diff", "--summary", "--old", *DICTIONARY, "--new", "d.velum")
        self.assertEqual((code, text), (0, "No difference in 105 objects.\n"))
        release = ["--new", "platform.arxml", "next/gearbox.arxml"]
        self.assertEqual(self.outputs("diff", "--old", "d.velum", *release)[:2],
                         self.outputs("diff", "--old", *DICTIONARY, *release)[:2])
        self.run_("import", "-o", "n.velum", *release[1:])
        self.assertEqual(self.outputs("diff", "d.velum", "n.velum")[1],
                         self.outputs("diff", "--old", *DICTIONARY, *release)[1])

    def test_the_issues_of_a_store_name_it_in_place_of_lines(self):
        text = self.outputs("check", "d.velum")[1]
        self.assertIn("d.velum: error: literal-beyond-type: /Gearbox/ApplicationTypes/Gear: "
                      "The literal Reverse has the value -1; the type holds 0 to 255.\n", text)
        issues = json.loads(self.outputs("check", "--json", "d.velum")[1])["issues"]
        self.assertEqual([(each["file"], "line" in each) for each in issues],
                         [("d.velum", False)] * text.count("\n"))
        [result] = json.loads(self.outputs(
            "check", "--format", "sarif", "--rule", "literal-beyond-type", "d.velum")[1]
        )["runs"][0]["results"]
        self.assertEqual(result["locations"][0]["physicalLocation"],
                         {"artifactLocation": {"uri": "d.velum"}})
        # A rule that sees objects only finds the same in both.
        rules = ["check", "--rule", "limits-beyond-type,literal-beyond-type,shared-value", "--json"]
        said = [[(issue["path"], issue["text"])
                 for issue in json.loads(self.outputs(*rules, *files)[1])["issues"]]
                for files in (DICTIONARY, ["d.velum"])]
        self.assertEqual(sorted(said[0]), sorted(said[1]))
        self.assertTrue(said[0])

    def test_a_page_and_a_picture_are_made_of_them(self):
        self.assertEqual(self.outputs("report", "-o", "p.html", "d.velum")[0], 0)
        page = (self.path / "p.html").read_text(encoding="utf-8")
        self.assertIn("1 file: d.velum", page)
        self.assertIn("<td class=place>d.velum", page)
        self.run_("import", "-o", "i.velum", SAMPLES / "ignition.arxml")
        code, text, _ = self.outputs("show", "--svg", "/Ignition/Constants/SparkAdvance", "i.velum")
        self.assertEqual((code, text[:4]), (0, "<svg"))

    def test_merge_reads_and_writes_them(self):
        self.run_("import", "-o", "next.velum", "platform.arxml", "next/gearbox.arxml")
        self.assertEqual(self.outputs("merge", "d.velum", "d.velum", "next.velum", "-o", "m.velum")[0::2],
                         (0, ""))
        self.assertTrue((self.path / "m.velum").read_bytes().startswith(HEADER))
        self.assertEqual(self.outputs("diff", "--summary", "next.velum", "m.velum")[0], 0)

    def test_rename_changes_files_only(self):
        self.fails_in_a_line(1, "d.velum: This is a store; rename in the .arxml files, and import "
                             "them again", "rename", "d.velum", "/Gearbox/CompuMethods/Torque", "T")


class FilesTest(StoreTest):
    def test_it_is_known_by_its_content_and_by_its_name(self):
        shutil.copy(self.path / "d.velum", self.path / "d.data")
        self.assertEqual(self.outputs("find", "d.data"), self.outputs("find", "d.velum"))
        self.folder.write("x.velum", "no database")
        self.fails_in_a_line(1, "x.velum: the file is no store", "find", "x.velum")
        self.fails_in_a_line(1, "none.velum: there is no such file", "find", "none.velum")
        self.fails_in_a_line(1, "none.velum: there is no such file", "sql", "none.velum", "SELECT 1")
        self.assertFalse((self.path / "none.velum").exists())
        self.folder.write("x.velum", (self.path / "d.velum").read_bytes()[:20000])
        self.fails_in_a_line(1, "x.velum: the file is damaged", "find", "x.velum")
        for command in (["diff", "x.velum", "d.velum"],
                        ["merge", "d.velum", "x.velum", "d.velum", "-o", "m.arxml"]):
            result = self.outputs(*command)
            self.assertEqual((result[0], result[2].count("\n")), (3, 1), command)

    def test_stores_and_documents_are_read_together(self):
        def unit(name):
            return document(package(name, named("UNIT", "u", "<FACTOR-SI-TO-UNIT>2</FACTOR-SI-TO-UNIT>")))

        folder = self.path / "all"
        folder.mkdir()
        for name in "AB":
            self.folder.write(f"{name}.arxml", unit(name))
            self.run_("import", "-o", f"all/{name}.velum", f"{name}.arxml")
        self.folder.write("all/C.arxml", unit("C"))
        self.assertEqual(self.outputs("find", "all"), (0, "/A/u\n/B/u\n/C/u\n", ""))
        report = json.loads(self.outputs("import", "--json", "all")[1])
        self.assertEqual(report["objects"], [{"class": "Unit", "count": 3}])
        self.assertEqual([(each["file"], each.get("objects")) for each in report["files"]],
                         [("all/A.velum", 1), ("all/B.velum", 1), ("all/C.arxml", None)])
        # What is written into the folder isn't read from it the next time.
        for _ in range(2):
            self.assertEqual(self.outputs("import", "-o", "all/all.velum", "all")[0], 0)
        self.assertEqual(self.outputs("find", "all/all.velum")[1], "/A/u\n/B/u\n/C/u\n")
        self.fails_in_a_line(1, r"all/all.velum: It has the path \(/A/u\) that is also in "
                             "all/A.velum|all/A.velum: .* all/all.velum; give only one of them",
                             "find", "all")
        self.fails_in_a_line(1, r"A.velum: It has the path \(/A/u\) that is also in the AUTOSAR "
                             "files", "find", "all/A.velum", "A.arxml")

    def test_nothing_is_written_of_what_is_refused(self):
        self.folder.write("g.arxml", document(package("P", "<UNIT/>")))
        result = self.outputs("import", "--strict", "-o", "g.velum", "g.arxml", "d.velum")
        self.assertEqual(result[0], 1)
        self.assertIn("Nothing is kept", result[1])
        self.assertFalse((self.path / "g.velum").exists())

    def test_a_file_that_cannot_be_written_is_one_line(self):
        self.folder.write("notes.txt", "These are notes.\n" * 100)
        for output, words in (("notes.txt", "the file is no store"), ("next", "it is a folder"),
                              ("none/x.velum", "the file can't be opened"),
                              ("/proc/version", "(is no store|can't be)")):
            code, _, said = self.outputs("import", "-o", output, "platform.arxml")
            self.assertEqual(code, 3)
            self.assertRegex(said, rf"\Avelum: Cannot write the store {output}: [^\n]*{words}[^\n]*\n\Z")
        self.assertEqual((self.path / "notes.txt").read_text(), "These are notes.\n" * 100)

    def test_a_full_disk_leaves_the_old_store(self):
        before = (self.path / "d.velum").read_bytes()
        result = subprocess.run(
            [PROGRAM, "import", "-o", "d.velum", "next/gearbox.arxml", "platform.arxml"],
            cwd=self.path, capture_output=True, timeout=60, check=False,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (50_000, 50_000)))
        if result.returncode >= 0:  # otherwise the signal of the limit ended it
            self.assertEqual((result.returncode, result.stderr.count(b"\n")), (3, 1))
        self.assertEqual(self.outputs("diff", "--summary", "--old", *DICTIONARY, "--new", "d.velum")[0], 0)
        self.assertEqual(len(before), (self.path / "d.velum").stat().st_size)


class SqlTest(StoreTest):
    def test_rows_are_printed_in_three_forms(self):
        sql = ("SELECT 'a' AS name, 1 AS n UNION ALL SELECT 'with, \"quotes\"', 2.5 UNION ALL "
               "SELECT NULL, NULL UNION ALL SELECT 'two' || char(10) || 'lines', -10")
        self.assertEqual(queried(sql, cwd=self.path), (0, (
            'name              n\n'
            'a                 1\n'
            'with, "quotes"  2.5\n'
            '\n'
            'two\\x0Alines    -10\n'), ""))
        rows = json.loads(queried(sql, "--json", cwd=self.path)[1])
        self.assertEqual(rows, [{"name": "a", "n": 1}, {"name": 'with, "quotes"', "n": 2.5},
                                {"name": None, "n": None}, {"name": "two\nlines", "n": -10}])
        table = queried(sql, "--csv", cwd=self.path)[1]
        self.assertEqual(list(csv.reader(io.StringIO(table, newline=""))),
                         [["name", "n"], ["a", "1"], ['with, "quotes"', "2.5"], ["", ""],
                          ["two\nlines", "-10"]])

    def test_nothing_and_much_are_printed(self):
        sql = "SELECT id, id FROM object WHERE id < 0"
        self.assertEqual(queried(sql, cwd=self.path), (0, "id  id\n", ""))
        self.assertEqual(queried(sql, "--csv", cwd=self.path), (0, "id,id\r\n", ""))
        self.assertEqual(queried(sql, "--json", cwd=self.path), (0, "[]\n", ""))
        many = ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50000) "
                "SELECT i, i AS i FROM n")
        rows = json.loads(queried(many, "--json", cwd=self.path)[1])
        self.assertEqual((len(rows), rows[-1]), (50000, {"i": 50000, "i:2": 50000}))
        self.assertEqual(queried(many, "--csv", cwd=self.path)[1].count("\r\n"), 50001)

    def test_what_would_change_something_is_refused(self):
        before = {each.name: each.read_bytes() for each in self.path.iterdir() if each.is_file()}
        for sql in ("DELETE FROM object", "INSERT INTO model VALUES(1, 'x')", "DROP TABLE Integer",
                    "UPDATE Integer SET Length = 'x'", "CREATE TABLE t(a)", "CREATE TEMP TABLE t(a)",
                    "ATTACH 'other.velum' AS other", "DETACH main", "VACUUM", "REINDEX", "ANALYZE",
                    "VACUUM INTO 'copy.velum'", "PRAGMA user_version = 7", "PRAGMA optimize",
                    "PRAGMA journal_mode = WAL", "PRAGMA writable_schema = 1", "BEGIN", "SAVEPOINT s",
                    "PRAGMA user_version(7)", "ALTER TABLE Integer RENAME TO other",
                    "EXPLAIN DELETE FROM object", "SELECT 1; DELETE FROM object",
                    "WITH old AS (SELECT 1) DELETE FROM object", "SELECT load_extension('x')",
                    "PRAGMA wal_checkpoint", "UPDATE sqlite_master SET sql = 1",
                    "SELECT * FROM object; PRAGMA user_version = 3"):
            self.fails_in_a_line(1, "Cannot query the store d.velum: ", "sql", "d.velum", sql)
        after = {each.name: each.read_bytes() for each in self.path.iterdir() if each.is_file()}
        self.assertEqual(before, after)
        for sql in ("PRAGMA user_version", "PRAGMA table_info('Integer')", "PRAGMA integrity_check",
                    "SELECT name FROM pragma_table_info('Integer')", "SELECT 1; -- the end",
                    "EXPLAIN QUERY PLAN SELECT * FROM Integer", "VALUES (1)"):
            self.assertEqual(queried(sql, cwd=self.path)[0::2], (0, ""), sql)

    def test_mistakes_are_one_line(self):
        for sql, words in (("SELEC", "syntax error"), ("SELECT nosuch", "no such column: nosuch"),
                           ("", "there is no statement"), (" -- nothing", "there is no statement"),
                           ("SELECT 1; SELECT 2", "more than one statement")):
            self.fails_in_a_line(1, words, "sql", "d.velum", sql)
        self.fails_in_a_line(1, "it is a folder", "sql", "next", "SELECT 1")
        self.fails_in_a_line(1, "is no store", "sql", "platform.arxml", "SELECT 1")
        self.fails_in_a_line(1, "the file is empty", "sql", "/dev/null", "SELECT 1")
        self.assertEqual(self.outputs("sql", "--json", "--csv", "d.velum", "SELECT 1")[0], 2)

    @unittest.skipIf(os.geteuid() == 0, "root may write everything")
    def test_a_file_that_may_only_be_read_is_enough(self):
        os.chmod(self.path / "d.velum", 0o400)
        self.assertEqual(queried("SELECT 1 AS one", cwd=self.path), (0, "one\n  1\n", ""))
        self.assertEqual(self.outputs("find", "--name", "Torque", "d.velum")[0], 0)


class PageTest(StoreTest):
    """The drawing on the page is that of a file as it is now."""

    @staticmethod
    def drawn(database, tables):
        lines = ["erDiagram"]
        for table in tables:
            lines.append(f"    {table} {{")
            sources = {row[3] for row in database.execute(f"PRAGMA foreign_key_list('{table}')")}
            for _, name, kind, _, _, key in database.execute(f"PRAGMA table_info('{table}')"):
                marks = ", ".join(["PK"] * (key > 0) + ["FK"] * (name in sources))
                lines.append(f"        {kind} {name} {marks}".rstrip())
            lines.append("    }")
        for table in tables:
            nullable = {row[1]: not (row[3] or row[5])
                        for row in database.execute(f"PRAGMA table_info('{table}')")}
            for row in sorted(database.execute(f"PRAGMA foreign_key_list('{table}')"),
                              key=lambda row: row[3]):
                if row[2] in tables:
                    lines.append(f"    {table} }}o--{'o|' if nullable[row[3]] else '||'} {row[2]} : {row[3]}")
        return lines

    def test_the_tables_are_drawn_as_they_are(self):
        page = pathlib.Path(sys.argv[3]).read_text(encoding="utf-8")
        drawings = [text.splitlines() for text in re.findall(r"```mermaid\n(.*?)```", page, re.DOTALL)]
        database = sqlite3.connect(f"file:{self.path / 'd.velum'}?mode=ro", uri=True)
        self.addCleanup(database.close)
        shown = set()
        for drawing in drawings:
            tables = [line.split()[0] for line in drawing if line.endswith("{")]
            self.assertEqual(drawing, self.drawn(database, tables))
            shown.update(tables)
        classes = {row[0] for row in database.execute("SELECT table_name FROM meta_class")}
        lists = {row[0] for row in database.execute("SELECT table_name FROM meta_property")}
        present = {row[0] for row in database.execute("SELECT name FROM sqlite_master WHERE type = 'table'")}
        self.assertLessEqual(present - classes - lists, shown, "every table that all files have")
        self.assertTrue(shown & classes and shown & lists)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
