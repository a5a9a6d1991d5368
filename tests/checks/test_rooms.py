from sandbox import Sandbox

from velum_checks import rooms

_LIST = """
house lib/src lib/include/lib
    low
    left right
    .

house host
    report
    .
"""


class Rooms(Sandbox):
    def setUp(self) -> None:
        super().setUp()
        self.write("tools/checks/rooms.txt", _LIST)
        for name in (
            "lib/src/low/a.h",
            "lib/src/left/b.h",
            "lib/src/right/c.h",
            "lib/include/lib/low/d.h",
            "lib/include/lib/lib.h",
            "host/report/e.h",
            "host/main.cpp",
        ):
            self.write(name, "#pragma once\n")

    def find(self) -> list[str]:
        return rooms.CHECK.find(self.project)

    def test_includes_from_lower_rooms_and_lower_houses_pass(self) -> None:
        self.write("lib/src/low/own.cpp", '#include "low/a.h"\n#include <lib/low/d.h>\n#include <map>\n')
        self.write("lib/src/left/b.cpp", '#include "low/a.h"\n#include "b.h"\n')
        self.write("lib/src/top.cpp", '#include "left/b.h"\n#include "right/c.h"\n')
        self.write("host/report/e.cpp", "#include <lib/lib.h>\n")
        self.write("lib/src/low/tests/t.cpp", '#include "left/b.h"\n')
        self.assertEqual([], self.find())

    def test_every_way_that_leads_upward_is_found_with_file_and_line(self) -> None:
        cases = (
            ("lib/src/low/x.cpp", '"left/b.h"', "the room low includes upward, from left"),
            ("lib/src/low/x.cpp", '"../left/b.h"', "the room low includes upward, from left"),
            ("lib/src/low/x.cpp", "<lib/lib.h>", "the room low includes upward, from ."),
            ("lib/include/lib/low/x.h", '"left/b.h"', "the room low includes upward, from left"),
            ("lib/src/left/x.cpp", '"right/c.h"', "the rooms left and right are on one floor"),
            ("host/report/x.cpp", '"low/a.h"', "lib/src/low/a.h is private to lib/src"),
            ("lib/src/x.cpp", '"report/e.h"', "host/report/e.h belongs to host, which stands above lib/src"),
        )
        for name, include, cause in cases:
            with self.subTest(name=name, include=include):
                path = self.write(name, f"#pragma once\n\n# include {include}\n")
                self.assertEqual([f"{name}:3: {cause}"], self.find())
                path.unlink()

    def test_rooms_and_list_have_each_other(self) -> None:
        self.write("host/new/a.h", "")
        (self.project.root / "lib/src/right/c.h").unlink()
        self.assertEqual(
            [
                "host/new/a.h:1: the room new of host is not in tools/checks/rooms.txt",
                "tools/checks/rooms.txt:1: there is no room right in lib/src",
            ],
            self.find(),
        )

    def test_a_list_that_cannot_be_read_is_a_finding(self) -> None:
        for text, line in (("left\n", 1), ("house\n", 1), ("house a\n    b\n    b\n", 3)):
            with self.subTest(text):
                self.write("tools/checks/rooms.txt", text)
                self.assertIn(f"tools/checks/rooms.txt:{line}: ", self.find()[0])
