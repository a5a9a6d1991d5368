"""What the documentation of a handle reports about properties."""

from velumgen import documentation, operations

from .support import ModelTest, cls, prop


class Documentation(ModelTest):
    def setUp(self):
        super().setUp()
        units = "[[data_type]]\nname = 'Unit'\nindex = 8\nkind = 'enumeration'\nliterals = ['g', 'kg', 't']\n"
        weight = "[[data_type]]\nname = 'Weight'\nindex = 9\nkind = 'value'\nnumber = 'QOB.Integer'\nunit = 'Unit'\n"
        package = self.load(
            units
            + weight
            + cls(
                "Animal",
                1,
                prop(1, "Weight", "Weight", "1..1", default="3|kg", documentation="How  hevy it is."),
                prop(2, "Limbs", "QOB.Integer", "0..*", flags=["ordered", "non-unique"], plural="Limbs"),
                prop(3, "Cage", "Cage", "0..1", opposite="Cage.Animal"),
                prop(4, "Cry", "QOB.String", flags=["derived", "read-only"]),
            )
            + cls("Bird", 2, prop(1, "Weight", "Weight", "1..1", redefines=["Animal.Weight"]), base="Animal")
            + cls("Cage", 3, prop(1, "Animal", "Animal", "1..*", flags=["composite"], opposite="Animal.Cage"))
        )
        self.classes = {each.name: each for each in package.classes}

    def of(self, name):
        """The documentation of the class's handles, by operation."""
        handle = self.classes[name]
        every = operations.all_operations(handle)
        return {op.name: documentation.of_handle(op, handle) for op in every}

    def test_a_getter_and_a_setter_report_all_that_the_model_knows(self):
        animal = self.of("Animal")
        facts = "`Animal.Weight`: Weight, multiplicity 1..1, default `3 kg`; counted in g, kg or t."
        self.assertEqual(animal["getWeight"], ["How  hevy it is.", facts])
        self.assertEqual(animal["setWeight"], [f"Sets {facts}"])
        self.assertEqual(
            animal["getCry"], ["`Animal.Cry`: QOB::String, multiplicity 0..1, derived, read-only."]
        )
        self.assertEqual(animal["hasWeight"] + animal["removeWeight"] + animal["setOnlyWeight"], [])

    def test_lists_and_both_ends_of_an_association_are_reported(self):
        animal, cage = self.of("Animal"), self.of("Cage")
        limbs = "QOB::Integer, multiplicity 0..*, ordered, values may repeat."
        self.assertEqual(animal["getLimbs"], [f"`Animal.Limbs`: {limbs}"])
        self.assertEqual(
            animal["getLimbsWithoutAssociation"], [f"`Animal.Limbs`, this end alone: {limbs}"]
        )
        self.assertEqual(
            animal["setCage"], ["Sets `Animal.Cage`: Cage, multiplicity 0..1; opposite `Cage.Animal`."]
        )
        self.assertEqual(
            cage["getAnimals"], ["`Cage.Animal`: Animal, multiplicity 1..*, owned; opposite `Animal.Cage`."]
        )

    def test_an_inherited_operation_reports_the_property_that_redefines_its_own(self):
        bird = self.of("Bird")
        facts = "`Bird.Weight`: Weight, multiplicity 1..1; counted in g, kg or t; redefines `Animal.Weight`."
        self.assertEqual(bird["getWeight"], ["How  hevy it is.", facts])
        self.assertEqual(bird["getPark_zoo_Bird_Weight"], [facts])
