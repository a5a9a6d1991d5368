from sandbox import Sandbox
from velum_checks.symbols import CHECK

SOURCE = """
#include <vector>
namespace QOB {
struct __attribute__((visibility("default"))) Base { virtual ~Base(); };
Base::~Base() { std::vector<int>().push_back(1); }
__attribute__((visibility("default"))) int count(int) { return 1; }
int hidden() { return 2; }
__attribute__((visibility("default"), used)) inline int hash_value(Base const&) { return 3; }
__attribute__((visibility("default"), used)) inline int unnamed(Base const&) { return 4; }
}
extern "C" __attribute__((visibility("default"))) int plain_name() { return 3; }
"""


class Symbols(Sandbox):
    def setUp(self) -> None:
        super().setUp()
        self.library("kernel", SOURCE, "-fvisibility=hidden")
        CHECK.repair(self.project)
        self.listing = self.project.root / "tests/symbols/kernel.txt"

    def test_the_list_holds_own_definitions_meant_copies_and_tables_only(self) -> None:
        self.assertEqual(
            [
                "QOB::Base::~Base()",
                "QOB::count(int)",
                "QOB::hash_value(QOB::Base const&)",
                "plain_name",
                "typeinfo for QOB::Base",
                "vtable for QOB::Base",
            ],
            self.listing.read_text().splitlines(),
        )
        self.assertEqual([], CHECK.find(self.project))

    def test_a_lost_and_a_new_name_are_told_apart(self) -> None:
        self.library("kernel", SOURCE.replace("plain_name", "other_name"), "-fvisibility=hidden")
        self.assertEqual(
            ["tests/symbols/kernel.txt: +other_name", "tests/symbols/kernel.txt: -plain_name"],
            sorted(CHECK.find(self.project)),
        )

    def test_a_list_without_its_library_is_named(self) -> None:
        self.write("tests/symbols/gone.txt", "f()\n")
        self.assertEqual(
            ["tests/symbols/gone.txt: there is no such library"], CHECK.find(self.project)
        )
