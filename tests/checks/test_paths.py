from sandbox import Sandbox
from velum_checks.paths import CHECK

SOURCE = "const char* where() { return __FILE__; }\n"


class Paths(Sandbox):
    def test_a_library_that_tells_its_source_folder_is_found(self) -> None:
        self.library("kernel", SOURCE, f"-ffile-prefix-map={self.project.root}/=")
        self.assertEqual([], CHECK.find(self.project))

        self.library("kernel", SOURCE)
        findings = CHECK.find(self.project)
        self.assertEqual(1, len(findings))
        self.assertIn(f"libkernel.so holds a path of this machine: {self.project.root}", findings[0])
