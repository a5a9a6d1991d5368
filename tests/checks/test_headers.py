from sandbox import Sandbox
from velum_checks.headers import CHECK


class Headers(Sandbox):
    def test_a_header_that_needs_another_one_first_is_named(self) -> None:
        self.write("build/prefix/include/lib/good.h", "#pragma once\nstruct Good {};\n")
        self.write("build/prefix/include/lib/user.h", '#pragma once\n#include "lib/good.h"\nGood g();\n')
        self.assertEqual([], CHECK.find(self.project))

        self.write("build/prefix/include/lib/bad.h", "#pragma once\nGood h();\n")
        findings = CHECK.find(self.project)
        self.assertEqual(1, len(findings))
        self.assertTrue(findings[0].startswith("lib/bad.h\n"), findings[0])

    def test_a_change_in_an_included_header_is_seen(self) -> None:
        self.write("build/prefix/include/lib/user.h", '#pragma once\n#include "lib/good.h"\nGood g();\n')
        self.write("build/prefix/include/lib/good.h", "#pragma once\nstruct Good {};\n")
        self.assertEqual([], CHECK.find(self.project))

        self.write("build/prefix/include/lib/good.h", "#pragma once\n")
        findings = CHECK.find(self.project)
        self.assertEqual(1, len(findings))
        self.assertTrue(findings[0].startswith("lib/user.h\n"), findings[0])
