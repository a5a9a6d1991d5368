from sandbox import Sandbox
from velum_checks.generator import differences
from velum_checks.metamodel import CHECK as METAMODEL

GENERATOR = """
import pathlib, sys
if sys.argv[1] == "check":
    text = pathlib.Path(sys.argv[2]).read_text()
    sys.exit(sys.argv[2] + ": faulty" if "fault" in text else 0)
out = pathlib.Path(sys.argv[sys.argv.index("--out") + 1])
out.mkdir(exist_ok=True)
(out / "a.h").write_text({text})
"""


class Generator(Sandbox):
    def setUp(self) -> None:
        super().setUp()
        self.write("metamodel/types.toml", "")

    def generator(self, text: str) -> None:
        self.write("generator/generate.py", GENERATOR.replace("{text}", text))

    def test_equal_output_passes(self) -> None:
        self.generator('"same"')
        self.assertEqual([], differences(self.project))

    def test_output_in_the_order_of_a_set_is_found(self) -> None:
        self.generator('" ".join({str(i) for i in range(100)})')
        self.assertEqual(["a.h: two runs differ"], differences(self.project))

    def test_output_that_names_its_folder_is_found(self) -> None:
        self.generator("str(out)")
        self.assertEqual(["a.h: two runs differ"], differences(self.project))

    def test_a_faulty_metamodel_is_reported_in_the_words_of_the_generator(self) -> None:
        self.generator('""')
        self.assertEqual([], METAMODEL.find(self.project))
        path = self.write("metamodel/types.toml", "fault")
        self.assertEqual([f"{path}: faulty"], METAMODEL.find(self.project))
