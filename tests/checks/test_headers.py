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

    def test_a_header_that_the_umbrella_does_not_reach_is_named(self) -> None:
        folder = "build/prefix/include/velum_types"
        self.write(f"{folder}/a.h", '#pragma once\n#include "velum_types/deep/b.h"\n')
        self.write(f"{folder}/deep/b.h", "#pragma once\n")
        self.write(f"{folder}/nsimplementation/state.h", "#pragma once\n")
        self.write(f"{folder}/types.h", '#pragma once\n#include "velum_types/a.h"\n')
        self.assertEqual([], CHECK.find(self.project))

        self.write(f"{folder}/deep/c.h", "#pragma once\n")
        self.assertEqual(
            ["velum_types/deep/c.h is not reached from velum_types/types.h"], CHECK.find(self.project)
        )

    def test_a_change_in_an_included_header_is_seen(self) -> None:
        self.write("build/prefix/include/lib/user.h", '#pragma once\n#include "lib/good.h"\nGood g();\n')
        self.write("build/prefix/include/lib/good.h", "#pragma once\nstruct Good {};\n")
        self.assertEqual([], CHECK.find(self.project))

        self.write("build/prefix/include/lib/good.h", "#pragma once\n")
        findings = CHECK.find(self.project)
        self.assertEqual(1, len(findings))
        self.assertTrue(findings[0].startswith("lib/user.h\n"), findings[0])
