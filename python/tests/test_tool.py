"""Files: what the package reports is what the host reports. Called with the host and the samples."""

import importlib.util
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import velum
from velum import reports

HOST, SAMPLES = sys.argv.pop(1), pathlib.Path(sys.argv.pop(1))
FILES = [str(SAMPLES / "platform.arxml"), str(SAMPLES / "gearbox.arxml")]


def host(*arguments):
    """What the host prints as JSON."""
    # Where the interpreter needs the library of a sanitizer, the host has its own.
    environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
    ended = subprocess.run(
        [HOST, *arguments], env=environment, capture_output=True, text=True, check=False
    )
    return json.loads(ended.stdout)


class Files(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.model, cls.report = velum.read(FILES)
        text = (SAMPLES / "gearbox.arxml").read_text(encoding="utf-8")
        cls.newer = cls.folder / "newer"
        cls.newer.mkdir()
        (cls.newer / "gearbox.arxml").write_text(
            text.replace("<SHORT-NAME>Gears<", "<SHORT-NAME>GearNames<").replace("<V>0.5</V>", "<V>0.75</V>", 1),
            encoding="utf-8",
        )
        (cls.newer / "platform.arxml").write_bytes((SAMPLES / "platform.arxml").read_bytes())

    def test_a_reading_reports_what_the_host_does(self):
        told = host("import", "--json", *FILES)
        self.assertEqual(
            [file.element_count for file in self.report.files],
            [file["elements"]["met"] for file in told["files"]],
        )
        self.assertEqual(
            [[(f.reason, f.text) for f in file.findings] for file in self.report.files],
            [[(f["reason"], f["text"]) for f in file["findings"]] for file in told["files"]],
        )
        self.assertEqual(sum(self.report.classes.values()), len(self.model.objects()))
        self.assertTrue(self.report.rows())
        self.assertEqual(len(self.report.faults), sum(r["is_fault"] for r in self.report.rows()))

    def test_paths_are_anything_that_python_calls_a_path(self):
        for paths in ([SAMPLES / "gearbox.arxml", FILES[0]], iter(FILES)):
            model, _ = velum.read(paths)
            self.assertEqual(len(model.objects()), len(self.model.objects()))
        for folder in (str(self.newer), self.newer):
            model, report = velum.read(folder)
            self.assertEqual(len(report.files), 2)
        for wrong, error in ((5, TypeError), (b"x", TypeError), ([5], TypeError), ([], ValueError)):
            with self.subTest(wrong=wrong), self.assertRaises(error):
                velum.read(wrong)
        with self.assertRaisesRegex(velum.Error, "nowhere.arxml"):
            velum.read(self.folder / "nowhere.arxml")

    def test_a_reading_that_is_stopped_leaves_nothing(self):
        model = velum.Model()

        def stop(size):
            raise KeyboardInterrupt(size)

        with self.assertRaises(KeyboardInterrupt):
            velum.read(FILES, into=model, on_progress=stop)
        self.assertEqual(model.objects(), [])
        sizes = []
        same, _ = velum.read(FILES, into=model, on_progress=sizes.append)
        self.assertEqual(same, model)
        self.assertEqual(sizes, sorted(sizes))
        self.assertTrue(sizes[-1] >= sum(pathlib.Path(file).stat().st_size for file in FILES))
        with self.assertRaises(TypeError):
            velum.read(FILES, on_progress=5)

    def test_what_is_written_reads_the_same(self):
        target = self.folder / "all.arxml"
        report = velum.write(self.model, target)
        self.assertEqual(report.files, (str(target),))
        self.assertEqual(report.bytes, target.stat().st_size)
        again, _ = velum.read(target)
        self.assertEqual([c for c in velum.diff(self.model, again).changed if c.kind == "value"], [])
        split = velum.write(self.model, self.folder / "split", layout="file-per-package")
        self.assertTrue(len(split.files) > 1)
        some = velum.write(self.model.objects(velum.Unit)[:2], self.folder / "two.arxml")
        self.assertEqual(some.objects, 2)
        for wrong, error in (
            (lambda: velum.write(5, target), TypeError),
            (lambda: velum.write([5], target), TypeError),
            (lambda: velum.write(self.model, 5), TypeError),
            (lambda: velum.write(self.model, target, layout="heap"), ValueError),
            (lambda: velum.write(self.model, self.folder / "no" / "where.arxml"), velum.Error),
        ):
            with self.assertRaises(error):
                wrong()

    def test_what_is_saved_loads_the_same(self):
        velum.save(self.model, self.folder / "all.db")
        loaded, report = velum.load(self.folder / "all.db")
        self.assertEqual(report, reports.LoadReport((), ()))
        self.assertTrue(velum.diff(self.model, loaded).is_same)
        (self.folder / "noise.db").write_bytes(b"noise" * 1000)
        for wrong in ("noise.db", "nowhere.db"):
            with self.assertRaisesRegex(velum.Error, wrong):
                velum.load(self.folder / wrong)
        with self.assertRaises(TypeError):
            velum.save("model", self.folder / "all.db")

    def test_differences_are_those_of_the_host(self):
        told = host("diff", "--json", "--old", *FILES, "--new", str(self.newer))
        report = velum.diff(FILES, self.newer)
        self.assertFalse(report.is_same)
        for name in ("added", "removed", "renamed", "changed"):
            self.assertEqual(len(getattr(report, name)), len(told[name]), name)
        self.assertEqual([e.path for e in report.changed], [e["path"] for e in told["changed"]])
        self.assertEqual([e.part for e in report.changed], [e.get("part", "") for e in told["changed"]])
        self.assertEqual([row["kind"] for row in report.rows()][-1], report.changed[-1].kind)
        numbers = [c for c in report.changed if c.kind == "value" and isinstance(c.old[0].value, float)]
        self.assertTrue(numbers)
        self.assertEqual(float(numbers[0].old[0].text), numbers[0].old[0].value)
        only = velum.diff(FILES, self.newer, only=velum.Unit)
        self.assertTrue(len(only.rows()) < len(report.rows()))
        with self.assertRaisesRegex(TypeError, "takes a class of velum"):
            velum.diff(FILES, FILES, only=int)

    def test_branches_are_compared(self):
        unit = self.model.objects(velum.Unit)[0]
        with self.model.branch() as draft:
            unit.in_branch(draft).symbol = "changed"
            report = velum.diff(self.model, draft)
            self.assertEqual([(c.property, c.new[0].value) for c in report.changed], [("Symbol", "changed")])
            self.assertTrue(velum.diff(self.model, draft, ignore=["Symbol"]).is_same)

    def test_issues_are_those_of_the_host(self):
        told = host("check", "--json", *FILES)["issues"]
        report = velum.check(FILES)
        self.assertEqual(
            [(e.rule, e.path, e.text, e.line) for e in report.issues],
            [(e["rule"], e["path"], e["text"], e.get("line", 0)) for e in told],
        )
        with_sources, _ = velum.read(FILES, keep_sources=True)
        self.assertEqual(velum.check(with_sources), report)
        self.assertEqual([e.rule for e in report.of(["error"])], [e.rule for e in report.errors])
        with self.assertRaises(TypeError):
            velum.check(5)

    def test_a_report_becomes_a_table(self):
        for table in self.tables():
            self.assertEqual(len({tuple(row) for row in table.rows()}), 1)

    def test_a_table_of_pandas_needs_pandas(self):
        hidden = sys.modules.get("pandas")
        sys.modules["pandas"] = None  # as if it weren't there
        try:
            with self.assertRaisesRegex(ImportError, "needs the package pandas"):
                self.report.to_pandas()
        finally:
            del sys.modules["pandas"]
            if hidden is not None:
                sys.modules["pandas"] = hidden

    @unittest.skipUnless(importlib.util.find_spec("pandas"), "pandas isn't installed")
    def test_a_report_becomes_a_table_of_pandas(self):
        for table in self.tables():
            frame, rows = table.to_pandas(), table.rows()
            self.assertEqual((len(frame), list(frame.columns)), (len(rows), list(rows[0])))
            # What is missing is None or NaN there.
            self.assertEqual(
                frame.astype(object).where(frame.notna(), None).to_dict("records"), rows
            )

    def tables(self):
        return velum.diff(FILES, self.newer), self.report, velum.check(self.model)


if __name__ == "__main__":
    unittest.main()
