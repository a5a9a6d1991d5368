"""What small invented classes become, byte by byte.

The files of tests/zoo/expected/ end in .golden, so that no tool takes them for sources. A meant
change of the templates is taken over by VELUM_UPDATE_GOLDEN=1 in the environment.
"""

import os
import unittest
from pathlib import Path

from velumgen import loader, outputs, writer

ZOO = Path(__file__).resolve().parent / "zoo"
EXPECTED = ZOO / "expected"


class Golden(unittest.TestCase):
    def setUp(self):
        self.maxDiff = None
        package = loader.load(ZOO / "zoo.toml")
        renderer = outputs.Renderer()
        self.texts = {o.path: renderer.render(o) for o in outputs.outputs(package)}

    def test_every_file_is_as_expected(self):
        if os.environ.get("VELUM_UPDATE_GOLDEN"):
            for path, text in self.texts.items():
                writer.write_if_changed(EXPECTED / f"{path}.golden", text)
        for path, text in self.texts.items():
            with self.subTest(path):
                self.assertEqual(text, (EXPECTED / f"{path}.golden").read_text(encoding="utf-8"))

    def test_no_other_file_is_expected(self):
        found = [p.relative_to(EXPECTED).as_posix() for p in EXPECTED.rglob("*") if p.is_file()]
        self.assertEqual(sorted(found), sorted(f"{path}.golden" for path in self.texts))

    def test_documentation_arrives_unchanged(self):
        self.assertIn(
            '/// Ein "Tier" mit \\ und Größe: es frißt.\n', self.texts["include/zoo/parkzooanimal.h"]
        )
        self.assertIn(
            '{"no \\"name\\""}', self.texts["src/zoo/nsimplementation/parkzooanimalstate.h"]
        )
