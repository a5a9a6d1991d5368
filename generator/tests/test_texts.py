"""What a text of the model becomes in C++: names, literals and comments."""

import shutil
import subprocess
import unittest

from velumgen import names, operations

from .support import ModelTest, cls, prop

# Everything that a literal or a comment could trip over.
HARD = 'He said "no\\" - Größe 5 µm??/ \'x\' \\n\ttab\n\nnew paragraph: it’s 100%s \\'


class Names(ModelTest):
    def test_operations_are_named_by_verb_and_property(self):
        package = self.load(
            cls(
                "Animal",
                1,
                prop(1, "isTame", "QOB.Boolean", "1..1"),
                prop(2, "hasHome", "QOB.Boolean", "1..1"),
                prop(3, "weight", "QOB.Real", "0..1", flags=["derived", "read-only"]),
                prop(4, "Cry", "QOB.String", flags=["derived"]),
                prop(5, "Axes", "QOB.Integer", "0..*"),
                prop(6, "child", "Animal", "0..*", plural="Children"),
                prop(7, "Mother", "Animal"),
            )
        )
        self.assertEqual(
            [op.name for op in operations.own_operations(package.classes[0])],
            "hasIsTame removeIsTame setIsTame isTame "
            "hasHasHome removeHasHome setHasHome getHasHome "
            "getWeight setCry getCry "
            "getAxeses getAxesesWithoutAssociation getChildren getChildrenWithoutAssociation "
            "hasMother removeMother setMother getMother removeOnlyMother setOnlyMother".split(),
        )

    def test_a_redefinition_under_the_same_name_carries_its_class(self):
        package = self.load(
            cls("Animal", 1, prop(1, "isTame", "QOB.Boolean"), prop(2, "limbs"))
            + cls(
                "Bird",
                2,
                prop(1, "IsTame", "QOB.Boolean", redefines=["Animal.isTame"]),
                prop(2, "wings", redefines=["Animal.limbs"]),
                base="Animal",
            )
        )
        every = operations.own_operations(package.classes[1])
        self.assertEqual(
            [op.name for op in every if not op.override],
            "hasPark_zoo_Bird_IsTame removePark_zoo_Bird_IsTame setPark_zoo_Bird_IsTame "
            "getPark_zoo_Bird_IsTame hasWings removeWings setWings getWings".split(),
        )
        self.assertEqual(
            {op.name: op.statement for op in every if op.override},
            {
                "hasIsTame": "return hasPark_zoo_Bird_IsTame(deviant);",
                "removeIsTame": "removePark_zoo_Bird_IsTame(deviant);",
                "setIsTame": "setPark_zoo_Bird_IsTame(deviant, value);",
                "isTame": "return getPark_zoo_Bird_IsTame(deviant);",
                "hasLimbs": "return hasWings(deviant);",
                "removeLimbs": "removeWings(deviant);",
                "setLimbs": "setWings(deviant, value);",
                "getLimbs": "return getWings(deviant);",
            },
        )

    def test_the_order_of_a_block_may_be_given(self):
        package = self.load(
            cls(
                "Animal",
                1,
                prop(1, "Cry", flags=["derived", "read-only"]),
                prop(2, "Age", flags=["derived", "read-only"]),
                "[[class.operation]]\nname = 'eat'\nparameters = ['QOB::String const& food']\n",
                order=["Age", "eat", "Cry"],
            )
        )
        self.assertEqual(
            [op.name for op in operations.own_operations(package.classes[0])],
            ["getAge", "eat", "getCry"],
        )

    def test_flags_are_the_word_of_the_description_record(self):
        package = self.load(
            cls(
                "Animal",
                1,
                prop(1, "A", flags=["composite", "derived", "read-only"]),
                prop(2, "B", "QOB.Integer", "0..*", flags=["ordered", "non-unique"]),
                prop(3, "C", "QOB.Integer", "1..*"),
            )
        )
        self.assertEqual([p.flags for p in package.classes[0].properties], [0x2B, 0x50, 0x60])


class Texts(unittest.TestCase):
    def test_a_literal_holds_the_bytes_of_the_text(self):
        compiler = shutil.which("c++") or shutil.which("g++") or shutil.which("clang++")
        self.assertIsNotNone(compiler, "A C++ compiler is needed.")
        expected = ",".join(str(byte) for byte in HARD.encode("utf-8"))
        source = (
            f"constexpr char text[] = {names.cpp_string(HARD)};\n"
            f"constexpr unsigned char bytes[] = {{{expected}, 0}};\n"
            "static_assert(sizeof(text) == sizeof(bytes));\n"
            "constexpr bool same() {\n"
            "    for (unsigned i = 0; i < sizeof(text); ++i) {\n"
            "        if (static_cast<unsigned char>(text[i]) != bytes[i]) return false;\n"
            "    }\n"
            "    return true;\n"
            "}\n"
            "static_assert(same());\n"
        )
        result = subprocess.run(
            [compiler, "-std=c++17", "-trigraphs", "-x", "c++", "-fsyntax-only", "-"],
            input=source,
            encoding="utf-8",
            capture_output=True,
        )
        self.assertEqual(result.stderr, "")

    def test_a_comment_never_continues_into_the_code(self):
        lines = names.comment_lines(HARD + "\\", 40)
        self.assertTrue(all(not line.endswith("\\") for line in lines), lines)
        self.assertIn('He said "no\\" - Größe 5 µm??/', lines[0])
