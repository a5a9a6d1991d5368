import unittest

from velum_checks.places import wrong_places


class Places(unittest.TestCase):
    def test_what_the_compiler_was_given_is_found_with_its_line(self) -> None:
        for use in ("failAt(__FILE__, 1);", 'QOB_FAIL("no");', "QOB_REQUIRE(a,\n b);"):
            with self.subTest(use):
                self.assertEqual([2], [line for line, _ in wrong_places("a/b.h", f"\n{use}")])

    def test_macros_comments_and_paths_of_the_header_itself_pass(self) -> None:
        text = "\n".join(
            [
                '#include "other/include/c.h"',
                "#define QOB_FAIL(...) \\",
                "    fail(__FILE__)",
                "/// Not __FILE__.",
                'QOB_REQUIRE_IN("lib/include/a/b.h", a, "no");',
            ]
        )
        self.assertEqual([], wrong_places("a/b.h", text))

    def test_the_path_of_another_header_is_found(self) -> None:
        text = 'QOB_HANDLES(X, R, W, "lib/include/a/c.h")'
        self.assertEqual([(1, "another file is named (lib/include/a/c.h)")], wrong_places("a/b.h", text))
