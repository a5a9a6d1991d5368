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

    def test_a_header_that_no_user_needs_is_named(self) -> None:
        folder = "build/prefix/include"
        self.write(f"{folder}/velum_types/types.h", '#pragma once\n#include "velum_types/a.h"\n')
        self.write(f"{folder}/velum_types/a.h", '#pragma once\n#include "velum_types/deep/b.h"\n')
        self.write(f"{folder}/velum_types/deep/b.h", "#pragma once\nstruct B;\n")
        self.write(f"{folder}/velum_types/deep/nsmetaregistry/live.h", "#pragma once\nstruct Live;\n")
        self.write(f"{folder}/qob/qob/registry.h", '#pragma once\n#include "qob/kernel/table.h"\n')
        self.write(f"{folder}/qob/kernel/table.h", "#pragma once\nstruct Table;\n")
        self.assertEqual([], CHECK.find(self.project))

        for name in ("velum_types/deep/nsimplementation/state.h", "qob/kernel/rule.h"):
            self.write(f"{folder}/{name}", "#pragma once\n")
        self.assertEqual(
            [
                "qob/kernel/rule.h is installed, but no header for users needs it",
                "velum_types/deep/nsimplementation/state.h is installed, but no header for users needs it",
            ],
            CHECK.find(self.project),
        )

    def test_a_change_in_an_included_header_is_seen(self) -> None:
        self.write("build/prefix/include/lib/user.h", '#pragma once\n#include "lib/good.h"\nGood g();\n')
        self.write("build/prefix/include/lib/good.h", "#pragma once\nstruct Good {};\n")
        self.assertEqual([], CHECK.find(self.project))

        self.write("build/prefix/include/lib/good.h", "#pragma once\n")
        findings = CHECK.find(self.project)
        self.assertEqual(1, len(findings))
        self.assertTrue(findings[0].startswith("lib/user.h\n"), findings[0])
