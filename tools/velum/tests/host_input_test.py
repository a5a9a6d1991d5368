"""Gives the program what files and folders may be: compressed, in UTF-16, huge, blank, damaged.

usage: host_input_test.py PROGRAM SAMPLES [UNITTEST ARGUMENT...]
"""

import gzip
import json
import os
import pathlib
import resource
import subprocess
import sys
import unittest

from host import OPENING, PROGRAM, SAMPLES, Folder, document, named, package, run

IS_SANITIZED = b"__asan_init" in pathlib.Path(PROGRAM).read_bytes()
# A sanitizer keeps what is freed for a while; unbounded names would take gigabytes.
MOST_MEMORY_KB = 400_000 if IS_SANITIZED else 100_000
SAMPLE = (SAMPLES / "gearbox.arxml").read_bytes()


def report_of(*arguments, cwd=SAMPLES, **options):
    """The report but for the names of the files."""
    report = json.loads(run("import", "--json", *arguments, cwd=cwd, **options).stdout)
    for file in report["files"]:
        del file["file"]
    return report


class KindsOfInputTest(unittest.TestCase):
    def test_compression_and_encoding_make_no_difference(self):
        expected = report_of("gearbox.arxml")
        text = SAMPLE.decode()
        declared = text.replace('encoding="UTF-8"', 'encoding="UTF-16"', 1)
        undeclared = text[text.index("?>") + 3:] if text.startswith("<?xml") else text
        self.assertNotEqual(declared, text)
        kinds = {
            "plain.arxml": SAMPLE,
            "packed.arxml.gz": gzip.compress(SAMPLE),
            "two_parts.arxml.gz": gzip.compress(SAMPLE[:1000]) + gzip.compress(SAMPLE[1000:]),
            "declared.arxml": declared.encode("utf-16"),
            "big.arxml": b"\xfe\xff" + declared.encode("utf-16-be"),
            "no_mark.arxml": declared.encode("utf-16-le"),
            "no_mark_big.arxml": declared.encode("utf-16-be"),
            "packed_16.arxml.gz": gzip.compress(declared.encode("utf-16")),
        }
        with Folder() as folder:
            for name, content in kinds.items():
                with self.subTest(name):
                    folder.write(name, content)
                    self.assertEqual(report_of(name, cwd=folder.path), expected)
                    self.assertEqual(report_of("-", input=content), expected)
            # Without a declaration everything stands a line higher.
            folder.write("undeclared.arxml", b"\xff\xfe" + undeclared.encode("utf-16-le"))
            found = report_of("undeclared.arxml", cwd=folder.path)
            self.assertEqual(found["objects"], expected["objects"])
            self.assertEqual([f["line"] + 1 for f in found["files"][0]["findings"]],
                             [f["line"] for f in expected["files"][0]["findings"]])

    def test_columns_of_utf_16_count_characters(self):
        content = f"{OPENING}\n<!-- \u00e9\U0001f600 --><A></B></AUTOSAR>"
        for encoding in ("utf-8", "utf-16", "utf-16-be"):
            with self.subTest(encoding):
                result = run("import", "-", input=content.encode(encoding))
                self.assertIn(b"-:2:19: The file is no well-formed XML", result.stderr)

    def test_folders(self):
        with Folder() as folder:
            (folder.path / "d" / "e").mkdir(parents=True)
            for name in ("d/b.arxml", "d/e/a.ARXML", "d/notes.txt"):
                folder.write(name, document(package("P", named("UNIT", name[-7]))))
            folder.write("d/c.arxml.gz", gzip.compress(
                document(package("P", named("UNIT", "c"))).encode()))
            os.mkfifo(folder.path / "d" / "pipe.arxml")  # nobody writes into it
            (folder.path / "d" / "e" / "up").symlink_to("..")
            files = ["d/b.arxml", "d/c.arxml.gz", "d/e/a.ARXML"]
            for arguments in (["d"], ["d/"], ["d", "d/b.arxml", "./d/b.arxml", "d/e"], files):
                with self.subTest(arguments):
                    result = folder.run("import", "--json", *arguments)
                    self.assertEqual(result.returncode, 0)
                    self.assertEqual([pathlib.PurePath(file["file"]).as_posix()
                                      for file in json.loads(result.stdout)["files"]], files)
            self.assertEqual(
                folder.run("show", "d").stdout.decode().splitlines(),
                ["/P/a: unit a", "/P/b: unit b", "/P/c: unit c"])


class RefusalTest(unittest.TestCase):
    def refused(self, content, said, name="f.arxml"):
        with Folder() as folder:
            folder.write(name, content)
            result = folder.run("import", name)
            self.assertEqual((result.returncode, result.stdout), (1, b""))
            self.assertEqual(result.stderr.decode(), f"velum: {name}{said}\n")

    def test_blank_files(self):
        said = ":1:1: The file is blank: there is nothing but white space in it."
        for content in (b" ", b"\n\n", b"\xef\xbb\xbf\r\n", b"\xff\xfe \0\n\0"):
            with self.subTest(content):
                with Folder() as folder:
                    folder.write("f.arxml", content)
                    result = folder.run("import", "f.arxml")
                    self.assertEqual(result.returncode, 1)
                    self.assertRegex(
                        result.stderr.decode(), r"\Avelum: f.arxml:\d+:\d+: The file is blank: ")
        self.refused(b" ", said)

    def test_damaged_compression(self):
        packed = gzip.compress(SAMPLE)
        self.refused(packed[:-100], ": The compressed data end too early; the file is cut off.")
        self.refused(packed[:100], ": The compressed data end too early; the file is cut off.")
        damaged = bytearray(packed)
        damaged[-6] ^= 0xff  # of the checksum
        self.refused(
            bytes(damaged), ": The compressed data are damaged (incorrect data check).")

    def test_damaged_utf_16(self):
        start = OPENING + "\n<!-- "
        self.refused(
            start.encode("utf-16") + b"\x00\xd8 \0" + b"x\0" * 9,
            ":2:6: The text is no valid UTF-16 from here on.")
        self.refused(
            start.encode("utf-16") + b"x", ":2:6: The file ends within a character of UTF-16.")

    def test_folders_without_files(self):
        with Folder() as folder:
            (folder.path / "d").mkdir()
            folder.write("d/a.txt", "x")
            result = folder.run("import", "d")
            self.assertEqual((result.returncode, result.stdout), (1, b""))
            self.assertEqual(result.stderr, b"velum: d: There is no .arxml, .arxml.gz or .velum file in "
                                            b"this folder.\n")


class BoundsTest(unittest.TestCase):
    def test_long_names(self):
        names = {"a" * 128: None, "\u00e9" * 128: None, "b" * 129: 129, "\u00e9" * 129: 129}
        elements = "".join(named("UNIT", name) for name in names)
        with Folder() as folder:
            folder.write("f.arxml", document(package("P", elements)))
            result = folder.run("import", "--json", "f.arxml")
            self.assertEqual(result.returncode, 0)
            data = json.loads(result.stdout)
        self.assertEqual(data["objects"], [{"class": "Unit", "count": 4}])
        self.assertEqual(
            [(f["path"], f["reason"], f["fault"], f["text"]) for f in data["files"][0]["findings"]],
            [(f"/P/{name}", "long-name", False,
              f"The name has {size} characters; the format allows 128.")
             for name, size in names.items() if size])

    def test_long_paths(self):
        def nested(count, inner):
            for _ in range(count):
                inner = named("AR-PACKAGE", "n" * 100, f"<AR-PACKAGES>{inner}</AR-PACKAGES>")
            return inner
        # 40 names of 101 bytes, and "/P/" with a name of 53 bytes: 4096 bytes.
        for size, fits in ((53, True), (54, False)):
            with self.subTest(size=size), Folder() as folder:
                unit = package("P", named("UNIT", "u" * size))
                folder.write("f.arxml", document(nested(40, unit)))
                result = folder.run("import", "--json", "f.arxml")
                data = json.loads(result.stdout)
                self.assertEqual(result.returncode, 0 if fits else 1)
                self.assertEqual(len(data["objects"]), 1 if fits else 0)
                self.assertEqual([f["reason"] for f in data["files"][0]["findings"]],
                                 [] if fits else ["long-path"])
                self.assertEqual(
                    [row["reason"] for row in data["files"][0]["skipped"]],
                    [] if fits else ["long-path"] * 2)

    def test_long_paths_take_little_memory(self):
        units = "".join(named("UNIT", f"u{i}") for i in range(2_000))
        text = package("P", units)
        for i in range(60):
            text = named("AR-PACKAGE", f"{i}" + "n" * 100_000, f"<AR-PACKAGES>{text}</AR-PACKAGES>")
        with Folder() as folder:
            folder.write("f.arxml", document(text))
            # The most of any process so far is known only; the others of this test are small.
            for arguments in (["import"], ["import", "--json"], ["check"], ["show"]):
                self.assertEqual(folder.run(*arguments, "f.arxml").returncode, 1)
            self.assertLess(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss, MOST_MEMORY_KB)

    def test_memory_that_runs_out(self):
        if IS_SANITIZED:
            self.skipTest("a sanitizer reserves address space for itself")
        units = "".join(named("UNIT", f"u{i}") for i in range(200_000))
        content = document(package("P", units)).encode()
        for megabytes in (60, 80, 100, 120):
            size = megabytes * 1_000_000
            with self.subTest(megabytes=megabytes):
                result = subprocess.run(
                    [PROGRAM, "import", "-"], input=content, capture_output=True, check=False,
                    preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (size, size)))
                self.assertEqual((result.returncode, result.stdout), (3, b""))
                self.assertEqual(result.stderr, b"velum: The memory is used up. Read fewer files at a "
                                                b"time, or allow more memory.\n")

    @unittest.skipUnless(pathlib.Path("/dev/full").exists(), "needs a device that is always full")
    def test_help_that_cannot_be_written(self):
        for arguments in (["--help"], ["--version"], ["import", "--help"]):
            with self.subTest(arguments), open("/dev/full", "wb") as full:
                result = subprocess.run(
                    [PROGRAM, *arguments], stdout=full, stderr=subprocess.PIPE, check=False)
                self.assertEqual(result.returncode, 3)
                self.assertIn(b"cannot be written", result.stderr)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
