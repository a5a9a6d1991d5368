from sandbox import Sandbox
from velum_checks.formatting import CHECK


class Formatting(Sandbox):
    def setUp(self) -> None:
        super().setUp()
        self.write(".clang-format", "BasedOnStyle: LLVM\n")

    def test_a_fault_is_found_with_its_place_and_repaired(self) -> None:
        path = self.write("src/a.cpp", "int  f();\n")
        findings = CHECK.find(self.project)
        self.assertEqual(1, len(findings))
        self.assertIn("src/a.cpp:1", findings[0])

        CHECK.repair(self.project)
        self.assertEqual("int f();\n", path.read_text())
        self.assertEqual([], CHECK.find(self.project))

    def test_files_outside_of_version_control_are_left_alone(self) -> None:
        self.write("build/generated/a.cpp", "int  f();\n")
        self.assertEqual([], CHECK.find(self.project))
