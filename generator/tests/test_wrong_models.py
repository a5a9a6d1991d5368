"""One wrong model for each message: a fault names file, class, property and cause."""

from pathlib import Path

from velumgen import loader
from velumgen.faults import MetamodelError

from .support import HEADER, KERNEL, ModelTest, cls, prop

AT = "zoo.toml: error: "


class WrongFiles(ModelTest):
    def test_a_missing_file_is_named(self):
        with self.assertRaises(MetamodelError) as caught:
            loader.load(self.folder / "none.toml")
        self.assertIn("none.toml: error: The file cannot be read: No such file", str(caught.exception))

    def test_broken_syntax_is_told_with_line_and_column(self):
        (fault,) = self.faults("[[class]\n", header="")
        self.assertRegex(fault, r"^zoo.toml: error: The file is not TOML: .*line 1, column 8")

    def test_bytes_that_are_no_text_are_told_with_their_place(self):
        path = self.write("zoo.toml", "")
        path.write_bytes(b"# \xff")
        with self.assertRaises(MetamodelError) as caught:
            loader.load(path)
        self.assertIn("The file is not UTF-8 text at byte 2.", str(caught.exception))

    def test_files_that_import_each_other_are_refused(self):
        self.write("kernel.toml", KERNEL.replace("generated", 'imports = ["zoo.toml"]\ngenerated'))
        (fault,) = self.faults(cls())
        self.assertEqual(
            fault, AT + "The file imports itself, directly or through another file."
        )

    def test_a_generated_package_tells_where_its_files_go(self):
        header = HEADER.replace('include = "zoo"\n', "")
        self.assertEqual(self.faults(cls(), header), [AT + 'package: Key "include" is missing.'])


    def test_what_is_counted_wrong_is_told_with_both_numbers(self):
        header = HEADER + "[package.sums]\nclasses = 2\nproperties = 3\nhidden = 2\nshown = 2\n"
        header += "repeating = 2\ndata_types = 1\n"
        wrong = cls(
            "Animal", 1, prop(1, hidden=True), prop(2, "Eyes", multiplicity="0..*", flags=["non-unique"])
        )
        counted = {"classes": (2, 1), "properties": (3, 2), "hidden": (2, 1), "shown": (2, 1)}
        counted |= {"repeating": (2, 1), "data_types": (1, 0)}
        self.assertEqual(
            self.faults(wrong, header),
            [
                AT + f'package: Sum "{name}" is {told}, but the file has {found}.'
                for name, (told, found) in counted.items()
            ],
        )

    def test_sums_are_of_the_right_form(self):
        header = HEADER + "[package.sums]\nlegs = 4\nclasses = 'one'\n"
        known = "classes, data_types, properties, hidden, shown, repeating"
        self.assertEqual(
            self.faults(cls(), header),
            [
                AT + f'package: Sum "legs" is none of {known}.',
                AT + "package: Sum \"classes\" ('one') is not a number.",
            ],
        )


# What stands in the model, and the messages for it.
WRONG = {
    "unknown key": (
        cls("Animal", 1, prop(multiplicity="1..1", defualt="4")),
        [
            'Animal.Legs: Key "defualt" is not known here; known are association, by_hand, default, '
            "documentation, flags, hidden, id, multiplicity, name, opposite, other_end, overrides, "
            "part, plural, private, redefines, subsets, type, without."
        ],
    ),
    "missing keys": (
        "[[class]]\nindex = 1\n" + "[[class]]\nname = 'Animal'\nbase = 'QOB.ClassObject'\n",
        ['class 1: Key "name" is missing.', 'Animal: Key "index" is missing.'],
    ),
    "wrong type of a key": (
        cls("Animal", "'one'"),
        ["Animal: The value of key \"index\" ('one') is not a number."],
    ),
    "a truth value is no number": (
        cls("Animal", 1, prop(id="true")),
        ['Animal.Legs: The value of key "id" (True) is not a number.'],
    ),
    "bad name": (
        cls("Sea-lion"),
        ['Sea-lion: Name ("Sea-lion") is not made of letters and digits, a letter first.'],
    ),
    "two classes of one name": (
        cls("Animal", 1) + cls("Animal", 2),
        ["Animal: The package has two types of this name."],
    ),
    "two classes of one index": (
        cls("Animal", 1) + cls("Plant", 1),
        ["Plant: Index (1) is also that of Animal."],
    ),
    "index below 1": (cls("Animal", 0), ["Animal: Index (0) is not above 0."]),
    "unknown base": (
        cls(base="Being"),
        ['Animal: Base ("Being") is not known.'],
    ),
    "no base": ("[[class]]\nname = 'Animal'\nindex = 1\n", ['Animal: Key "base" is missing.']),
    "base that is no class": (
        cls(base="QOB.Integer"),
        ['Animal: Base ("QOB.Integer") is a data type, not a class.'],
    ),
    "bases in a circle": (
        cls("Hen", 1, base="Egg") + cls("Egg", 2, base="Hen"),
        ["Hen: The class is its own base, directly or through another."],
    ),
    "gap in the ids": (
        cls("Animal", 1, prop(1), prop(3, "Eyes")),
        ["Animal: Property Eyes has id (3) where 2 follows."],
    ),
    "ids out of order": (
        cls("Animal", 1, prop(2), prop(1, "Eyes")),
        [
            "Animal: Property Legs has id (2) where 1 follows.",
            "Animal: Property Eyes has id (1) where 2 follows.",
        ],
    ),
    "base behind its class": (
        cls("Bird", 2, base="Animal") + cls("Animal", 1),
        ["Bird: Base Animal stands behind it, so it would be created too late."],
    ),
    "unknown tag": (
        cls("Animal", 1, tags=["wild"]),
        ['Animal: Tag ("wild") is none of qob_metaclass, qob_factory, qob_hide_in_lumvo.'],
    ),
    "unknown type": (
        cls("Animal", 1, prop(type="Number")),
        ['Animal.Legs: Type ("Number") is not known.'],
    ),
    "type of a package that is not imported": (
        cls("Animal", 1, prop(type="farm.Number")),
        ['Animal.Legs: Type ("farm.Number") is not known.'],
    ),
    "bad multiplicity": (
        cls("Animal", 1, prop(multiplicity="0..4")),
        ['Animal.Legs: Multiplicity ("0..4") is none of 0..1, 1..1, 0..*, 1..*.'],
    ),
    "unknown flag": (
        cls("Animal", 1, prop(flags=["big"])),
        [
            'Animal.Legs: Flag ("big") is none of composite, derived, read-only, ordered, '
            "non-unique."
        ],
    ),
    "flags of many on one": (
        cls("Animal", 1, prop(flags=["ordered", "non-unique"], plural="Leggies")),
        [
            'Animal.Legs: Flag "ordered" needs a multiplicity above 1.',
            'Animal.Legs: Flag "non-unique" needs a multiplicity above 1.',
            "Animal.Legs: A plural needs a multiplicity above 1.",
        ],
    ),
    "default of a derived property": (
        cls("Animal", 1, prop(flags=["derived"], default="4")),
        ["Animal.Legs: A derived property stores nothing, so it has no default."],
    ),
    "default of a reference": (
        cls("Animal", 1, prop(type="Animal", default="me")),
        ['Animal.Legs: Default ("me") on a reference; only values have defaults.'],
    ),
    "defaults that are no values": (
        "[[data_type]]\nname='Kind'\nindex=2\nkind='enumeration'\nliterals=['wild', 'tame']\n"
        "[[data_type]]\nname='Size'\nindex=3\nkind='value'\nunit='Kind'\nnumber='QOB.Integer'\n"
        + cls(
            "Animal",
            1,
            prop(1, "A", "QOB.Boolean", default="yes"),
            prop(2, "B", "QOB.Integer", default="-2147483648"),
            prop(3, "C", "QOB.Real", default="1,5"),
            prop(4, "D", "Kind", default="calm"),
            prop(5, "E", "Size", default="32|calm"),
            prop(6, "F", "Size", default="32|wild"),
            prop(7, "G", "QOB.Real", default="-1.5e3"),
        ),
        [
            'Animal.A: Default ("yes") is no QOB.Boolean: expected is true or false.',
            'Animal.B: Default ("-2147483648") is no QOB.Integer: expected is a whole number of '
            "32 bits.",
            'Animal.C: Default ("1,5") is no QOB.Real: expected is a decimal number.',
            'Animal.D: Default ("calm") is no zoo.Kind: expected is one of wild, tame.',
            'Animal.E: Default ("32|calm") is no zoo.Size: expected is a whole number, a bar and '
            "one of wild, tame.",
        ],
    ),
    "bad data types": (
        "[[data_type]]\nname='Kind'\nindex=2\nkind='thing'\n"
        "[[data_type]]\nname='Size'\nindex=3\nkind='value'\nunit='Kind'\nnumber='QOB.String'\n",
        [
            'Kind: Kind ("thing") is none of boolean, integer, real, string, value, enumeration.',
            'Size: Number ("QOB.String") is no type of numbers.',
            'Size: Unit ("Kind") is no enumeration here.',
        ],
    ),
    "unknown opposite": (
        cls("Animal", 1, prop(type="Animal", opposite="Animal.Tail")),
        ['Animal.Legs: Opposite ("Animal.Tail") is not known.'],
    ),
    "opposites that don't point at each other": (
        cls(
            "Animal",
            1,
            prop(1, "Mother", "Animal", opposite="Animal.Child"),
            prop(2, "Father", "Animal", opposite="Animal.Child"),
            prop(3, "Child", "Animal", "0..*", opposite="Animal.Father"),
        ),
        ["Animal.Mother: Its opposite zoo.Animal.Child points at zoo.Animal.Father, not back at it."],
    ),
    "opposites of the wrong classes": (
        cls("Animal", 1, prop(1, "House", "Stable", opposite="Stable.Guest"))
        + cls("Stable", 2, prop(1, "Guest", "Stable", opposite="Animal.House")),
        [
            "Animal.House: Its opposite zoo.Stable.Guest has type zoo.Stable, not zoo.Animal.",
            "Stable.Guest: Its opposite zoo.Animal.House belongs to another class than its type "
            "zoo.Stable.",
        ],
    ),
    "association names that differ": (
        cls("Animal", 1, prop(1, "House", "Stable", opposite="Stable.Guest", association="A_a"))
        + cls("Stable", 2, prop(1, "Guest", "Animal", opposite="Animal.House")),
        [
            "Animal.House: Its association (A_a) is not that of its opposite zoo.Stable.Guest "
            "(None).",
            "Stable.Guest: Its association (None) is not that of its opposite zoo.Animal.House "
            "(A_a).",
        ],
    ),
    "owned by many": (
        cls("Animal", 1, prop(1, "House", "Stable", "0..*", opposite="Stable.Guest"))
        + cls(
            "Stable",
            2,
            prop(1, "Guest", "Animal", opposite="Animal.House", flags=["composite"]),
        ),
        ["Stable.Guest: It is composite, so its opposite zoo.Animal.House has at most one value."],
    ),
    "two owners": (
        cls("Animal", 1, prop(1, "House", "Stable", opposite="Stable.Guest", flags=["composite"]))
        + cls(
            "Stable",
            2,
            prop(1, "Guest", "Animal", opposite="Animal.House", flags=["composite"]),
        ),
        [
            "Animal.House: It and its opposite zoo.Stable.Guest are both composite.",
            "Stable.Guest: It and its opposite zoo.Animal.House are both composite.",
        ],
    ),
    "association of a value": (
        cls("Animal", 1, prop(association="A_legs", other_end="owner")),
        [
            "Animal.Legs: Its type is a data type, so it has no association.",
            "Animal.Legs: Its type is a data type, so it has no other_end.",
        ],
    ),
    "two names of one end": (
        cls("Animal", 1, prop(1, "Twin", "Animal", opposite="Animal.Twin", other_end="me")),
        ["Animal.Twin: It has an opposite, so the other end has that property's name."],
    ),
    "ends that no rule keeps in step": (
        cls(
            "Animal",
            1,
            prop(1, "Mate", "Animal", opposite="Animal.Mate"),
            prop(2, "Friend", "Animal", "0..*", opposite="Animal.Friend"),
        ),
        [
            "Animal.Mate: It is a one-to-one association, for which there are no rules.",
            "Animal.Friend: It is a many-to-many association, for which there are no rules.",
        ],
    ),
    "redefinition behind a second base": (
        cls("Animal", 1)
        + cls("Swimmer", 2, prop(1, "Fins"))
        + cls("Duck", 3, prop(redefines=["Swimmer.Fins"]), base=["Animal", "Swimmer"]),
        ["Duck.Legs: It redefines zoo.Swimmer.Fins, which is reached by a second base only."],
    ),
    "unknown redefinition": (
        cls("Animal", 1, prop(redefines=["Being.Legs"])),
        ['Animal.Legs: The property ("Being.Legs") that it redefines is not known.'],
    ),
    "redefinition of a stranger": (
        cls("Animal", 1, prop(redefines=["Plant.Roots"])) + cls("Plant", 2, prop(1, "Roots")),
        ["Animal.Legs: It redefines zoo.Plant.Roots, which is no property of a base."],
    ),
    "redefinition by another type": (
        cls("Animal", 1, prop())
        + cls("Bird", 2, prop(type="QOB.Real", redefines=["Animal.Legs"]), base="Animal"),
        [
            "Bird.Legs: Its type is not that of the redefined zoo.Animal.Legs, nor derived from it."
        ],
    ),
    "subset of a stranger": (
        cls("Animal", 1, prop(subsets=["Plant.Roots"])) + cls("Plant", 2, prop(1, "Roots")),
        ["Animal.Legs: It subsets zoo.Plant.Roots, which is no property of the class or a base."],
    ),
    "the same name again in a subclass": (
        cls("Animal", 1, prop()) + cls("Bird", 2, prop(), base="Animal"),
        [
            f"Bird: Operation {verb}Legs is also one of zoo.Animal and redefines nothing."
            for verb in ("has", "remove", "set", "get")
        ],
    ),
    "two properties of one name": (
        cls("Animal", 1, prop(1), prop(2)),
        ["Animal: Two properties have the name Legs."]
        + [
            f"Animal: Operation {verb}Legs stands twice in the class."
            for verb in ("has", "remove", "set", "get")
        ],
    ),
    "an order that leaves out and adds": (
        cls("Animal", 1, prop(), order=["Tail"]),
        [
            'Animal: The order names "Legs" (0) times, not once.',
            'Animal: The order names "Tail", which is no property or operation of the class.',
        ],
    ),
    "creator arguments that can't be set": (
        cls("Animal", 1, prop(1, "Legs", multiplicity="0..*"), creator=["Legs", "Tail"]),
        ['Animal: Creator argument ("Tail") is no property of the class or a base.'],
    ),
    "creator argument with many values": (
        cls("Animal", 1, prop(1, "Legs", multiplicity="0..*"), creator=["Legs"]),
        ["Animal: Creator argument Legs is multi-valued or derived: it has no setter."],
    ),
    "creator of an abstract class": (
        cls("Animal", 1, prop(), creator=["Legs"], abstract=True),
        ["Animal: An abstract class has no creators, so it has no creator arguments."],
    ),
    "verbs": (
        cls("Animal", 1, prop(by_hand=["find"])),
        [
            'Animal.Legs: Verb ("find") of key "by_hand" is none of has, remove, set, get, removeOnly, '
            "setOnly, getOnly."
        ],
    ),
    "keys of hand-written classes": (
        cls("Animal", 1, prop(without=["set"], part="Rule", overrides=True)),
        [
            "Animal.Legs: Operations are left out of hand-written classes only.",
            "Animal.Legs: How it contains objects follows from its kind; a rule is for hand-written "
            "classes.",
            "Animal.Legs: It takes the place of a base's operations, and redefines no property of a "
            "base.",
        ],
    ),
    "parameter without a type": (
        cls("Animal", 1, "[[class.operation]]\nname = 'eat'\nparameters = ['food']\n"),
        ['Animal.eat: Parameter ("food") is not a type and a name.'],
    ),
}


class WrongModels(ModelTest):
    def test_each_fault_is_told_with_its_place_and_cause(self):
        for name, (classes, messages) in WRONG.items():
            with self.subTest(name):
                self.assertEqual(self.faults(classes), [AT + message for message in messages])

    def test_the_kernel_is_checked_like_every_other_package(self):
        model = Path(__file__).resolve().parent.parent.parent / "metamodel" / "qob.toml"
        path = self.write("qob.toml", model.read_text(encoding="utf-8").replace(
            'opposite = "Class.ownedAttribute"', 'opposite = "Class.super"'
        ))
        with self.assertRaises(MetamodelError) as caught:
            loader.load(path)
        messages = str(caught.exception).replace(f"{self.folder}/", "")
        self.assertIn(
            "qob.toml: error: Property.owningClass: Its opposite QOB.Class.super points at no property",
            messages,
        )

    def test_all_faults_of_all_files_are_told_together(self):
        self.write("kernel.toml", KERNEL + '[[class]]\nname = "Odd"\nbase = "Even"\n')
        self.assertEqual(
            self.faults(cls("Animal", 1, prop(type="Number"), prop(2, "Eyes", multiplicity="2"))),
            [
                'kernel.toml: error: Odd: Base ("Even") is not known.',
                AT + 'Animal.Legs: Type ("Number") is not known.',
                AT + 'Animal.Eyes: Multiplicity ("2") is none of 0..1, 1..1, 0..*, 1..*.',
            ],
        )

    def test_a_right_model_has_no_fault(self):
        package = self.load(
            cls("Animal", 1, prop(default="4"), prop(2, "Name", "QOB.String", "1..1"))
            + cls("Bird", 2, prop(redefines=["Animal.Legs"], default="2"), base="Animal")
        )
        self.assertEqual([c.name for c in package.classes], ["Animal", "Bird"])
