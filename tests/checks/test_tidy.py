from sandbox import BuiltProject, Sandbox
from velum_checks.tidy import CHECK


class Tidy(Sandbox):
    def setUp(self) -> None:
        super().setUp()
        self.project = BuiltProject(self.project.root)
        self.write(
            ".clang-tidy", "Checks: '-*,modernize-use-nullptr'\nWarningsAsErrors: '*'\n"
        )
        root = self.project.root
        self.compile("src/alone.cpp", "build/unit.cxx", "build/generated.cpp")
        self.write("build/generated.cpp", "int* p = 0;\n")
        self.write("build/unit.cxx", f'#include "{root}/src/unit.cpp"\n')
        self.write("src/alone.cpp", "int* r = nullptr;\n")
        self.write("src/unit.cpp", '#include "src/unit.h"\nint* p = nullptr;\n')
        self.write("src/unit.h", "inline int* q = nullptr;\n")

    def test_generated_code_is_not_asked_for(self) -> None:
        self.assertEqual([], CHECK.find(self.project))

    def test_a_fault_in_a_source_alone_or_in_a_unit_and_one_in_a_header_are_found(self) -> None:
        for name, text in (
            ("src/alone.cpp", "int* r = 0;\n"),
            ("src/unit.cpp", '#include "src/unit.h"\nint* p = 0;\n'),
            ("src/unit.h", "inline int* q = 0;\n"),
        ):
            with self.subTest(name):
                before = (self.project.root / name).read_text()
                self.write(name, text)
                findings = CHECK.find(self.project)
                self.write(name, before)
                self.assertEqual(1, len(findings))
                self.assertIn(f"{name}:", findings[0])
                self.assertIn("modernize-use-nullptr", findings[0])
