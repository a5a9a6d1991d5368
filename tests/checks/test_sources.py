from sandbox import BuiltProject, Sandbox
from velum_checks.sources import CHECK


class Sources(Sandbox):
    def setUp(self) -> None:
        super().setUp()
        self.project = BuiltProject(self.project.root)
        root = self.project.root
        self.compile("build/unit.cxx")
        self.write("build/unit.cxx", f'#include "{root}/src/first.cpp"\n#include "{root}/src/second.cpp"\n')
        self.write("src/first.h", "#include <string>\ninline std::string first;\n")
        self.write("src/first.cpp", '#include "src/first.h"\n')
        self.write("src/second.cpp", '#include "src/first.h"\nstd::string* second = &first;\n')

    def test_what_a_source_before_it_brings_is_missed(self) -> None:
        self.assertEqual([], CHECK.find(self.project))
        self.write("src/second.cpp", "auto* second = &first;\n")
        found = CHECK.find(self.project)
        self.assertEqual(1, len(found))
        self.assertIn("src/second.cpp:1:", found[0].replace(f"{self.project.root}/", ""))

    def test_a_header_of_others_that_is_new_is_precompiled_too(self) -> None:
        self.assertEqual([], CHECK.find(self.project))
        self.write("src/second.cpp", '#include <vector>\n#include "src/first.h"\n'
                   "std::vector second{&first};\n")
        self.assertEqual([], CHECK.find(self.project))
