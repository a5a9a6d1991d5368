"""What the pages name exists: the targets of links, files, and the figures of speed.

usage: pages_test.py REPOSITORY
"""

import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(sys.argv[1])
PAGES = [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md"), *ROOT.glob("*/README.md"),
         *ROOT.glob("examples/data/README.md")]
# Where a page may leave out the beginning of a path.
FOLDERS = ["", "qob/export/include", "qob/export/include/qob/kernel/property", "tools/velum",
           "generator", "docs", "arxml/src", "arxml/include/velum_arxml"]
# A folder in the sources, from the root of the repository.
CODE_FOLDER = re.compile(r"`((?:qob|foundation|velum_types|arxml|tessel|tools|generator|tests)/[\w./-]*/)`")
CODE_FILE = re.compile(r"`([\w./-]*/[\w.-]+\.(?:h|cpp|py|toml|md|cmake|txt|sh))`")


def text(page):
    return page.read_text(encoding="utf-8")


class PagesTest(unittest.TestCase):
    def test_each_link_leads_to_a_file(self):
        for page in PAGES:
            for target in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", text(page)):
                self.assertTrue((page.parent / target).exists(), f"{page}: {target}")

    def test_each_named_file_exists(self):
        missing = [f"{page.relative_to(ROOT)}: {name}" for page in PAGES
                   for name in CODE_FILE.findall(text(page))
                   if "..." not in name and not any((ROOT / each / name).exists() for each in FOLDERS)]
        self.assertEqual(missing, [])

    def test_each_named_folder_exists(self):
        missing = [f"{page.relative_to(ROOT)}: {name}" for page in PAGES
                   for name in CODE_FOLDER.findall(text(page))
                   if "..." not in name and not any((ROOT / each / name).is_dir() for each in FOLDERS)]
        self.assertEqual(missing, [])

    def test_each_figure_of_speed_was_measured(self):
        speed = re.search(r"^\*\*Speed\*\*.*?\n\n", text(ROOT / "README.md"), re.MULTILINE | re.DOTALL)
        figures = re.findall(r"([\d.]+) ns", speed[0])
        measured = set(re.findall(r"(?<= )[\d.]+(?= )", text(ROOT / "docs" / "performance.md")))
        self.assertGreaterEqual(len(figures), 3)
        self.assertLessEqual(set(figures), measured)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
