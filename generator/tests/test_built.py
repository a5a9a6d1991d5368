"""What is modelled but not laid out yet is taken away, and the rest stands by itself."""

from velumgen import built, operations
from velumgen.faults import MetamodelError

from .support import HEADER, ModelTest, cls, prop

TREE = (
    cls("Animal", 1, prop(1, "Name", "QOB.String", "1..1"), prop(2, "Legs"), abstract=True)
    + cls("Swimmer", 2, prop(1, "Depth"), base="Animal", abstract=True)
    + cls("Flyer", 3, prop(1, "Height"), base="Animal", abstract=True)
    + cls("Duck", 4, prop(1, "Colour"), prop(2, "Age"), base=["Swimmer", "Flyer"])
    + cls("Mallard", 5, prop(redefines=["Animal.Legs"]), base="Duck", creator=["Depth", "Age"])
)


class Built(ModelTest):
    def restricted(self, what, classes=TREE):
        package = self.load(classes, HEADER + f"[package.built]\n{what}\n")
        list(package.classes[-1].ancestors)  # What was asked for before must not stay.
        built.restrict(package)
        return package

    def test_a_class_keeps_its_nearest_built_base_and_its_built_members(self):
        package = self.restricted("Animal = ['Name']\nMallard = ['Legs']")
        animal, mallard = package.classes
        self.assertEqual([c.name for c in (animal, mallard)], ["Animal", "Mallard"])
        self.assertEqual(mallard.bases, [animal])
        self.assertEqual(mallard.ancestors[0], animal)
        self.assertEqual(
            [op.name for op in operations.all_operations(mallard)],
            [f"{verb}{stem}" for stem in ("Name", "Legs") for verb in ("has", "remove", "set", "get")],
        )
        self.assertEqual(mallard.creator_arguments, [])

    def test_a_second_base_stays_only_where_it_adds_something(self):
        package = self.restricted("Animal = []\nFlyer = []\nDuck = []")
        self.assertEqual([b.name for b in package.types["Duck"].bases], ["Flyer"])
        package = self.restricted("Animal = []\nSwimmer = []\nFlyer = []\nDuck = []")
        self.assertEqual([b.name for b in package.types["Duck"].bases], ["Swimmer", "Flyer"])

    def test_without_a_choice_everything_stays(self):
        package = self.load(TREE)
        built.restrict(package)
        self.assertEqual(len(package.classes), 5)
        self.assertEqual([len(c.properties) for c in package.classes], [2, 1, 1, 2, 1])

    def test_what_loses_its_type_or_its_other_end_is_told(self):
        classes = cls("Animal", 1, prop(1, "House", "Stable", opposite="Stable.Guest")) + cls(
            "Stable", 2, prop(1, "Guest", "Animal", opposite="Animal.House")
        )
        for what, missing in (
            ("Animal = ['House']", ["its type zoo.Stable", "its opposite zoo.Stable.Guest"]),
            ("Animal = ['House']\nStable = []", ["its opposite zoo.Stable.Guest"]),
        ):
            with self.subTest(what), self.assertRaises(MetamodelError) as caught:
                self.restricted(what, classes)
            self.assertEqual(
                str(caught.exception).replace(f"{self.folder}/", "").splitlines(),
                [f"zoo.toml: error: Animal.House: It is built, but {m} is not." for m in missing],
            )
