"""The metamodel that the libraries are made from: what callers and other tools rely on.

The sums stand in the files themselves. Here stand the orders and words that binary compatibility
hangs on, and that a quick edit of the files could change without any other rule breaking.
"""

import unittest
from pathlib import Path

from velumgen import loader, operations

TYPES = Path(__file__).resolve().parents[2] / "metamodel" / "types.toml"

# The words of the properties' flags, in the order of their ids.
FLAGS = {
    "FloatingPoint": "20",
    "Complex": "20 20",
    "Dimension": "60 20 70 40 20 22",
    "LiteralReal": "20",
    "FixedPoint": "20 20 20 20 20 23",
    "Integer": "20 20",
    "Real": "28 28 28 28",
    "Unit": "20 20 20 20 20 22 70 70 60 60",
    "Matrix": "50 20 20 60",
    "EnumerationLiteral": "20 21 21 20 20 20",
    "Enumeration": "78 2b 20 20 20",
    "Factory": "",
    "Boolean": "28 28 28 28",
    "MatrixValueSpecification": "78 20",
    "Cell": "60",
    "Structure": "68 20",
    "ValueElement": "20 28",
    "StructureValueSpecification": "68",
    "Slot": "20",
    "EnumerationLiteralReference": "20 20",
    "ConstantSpecification": "22 28",
    "ConstantReference": "20",
    "CompositeSpecification": "68",
    "PrimitiveType": "2b 20 20 20 20 20 20",
    "StructElement": "20 20 28",
    "CompuMethod": "20 20 20 60 60 60",
    "DataConstr": "20 60",
    "SwBaseType": "60",
    "LookupTableType": "20 28 78 23 23 21 20",
    "SharedAxisType": "20 28 21 60 20",
    "SwRecordLayout": "60 60",
    "Axis": "28 20 20 20",
    "VoidPointer": "21 20 20",
    "ApplicationValueSpecification": "40 40",
    "LookupTableSpecification": "68",
}

# The getters of the classes whose virtual order is not that of their ids.
GETTERS = {
    "NamedElement": "qualifiedName qualifiedNameWithSeparator getNamespace getName getVisibility "
    "getClientDependencies getClientDependenciesWithoutAssociation",
    "Namespace": "getOwnedMembers getOwnedMembersWithoutAssociation getElementImports "
    "getElementImportsWithoutAssociation getNamespaceImports getNamespaceImportsWithoutAssociation",
    "Enumeration": "getZorvane_metamodel_types_Enumeration_GroundValue getOwnedLiterals "
    "getOwnedLiteralsWithoutAssociation getDefaultValue getLength isSigned",
    "FixedPoint": "getSlope getLength isSigned getFractionLength getBias getFractionalSlope",
    "EnumerationLiteral": "setDefaultValue getEnumeration getValue getHasValidValue isSecure "
    "getPvalue getPisUserDefined",
    "LookupTableType": "getDimensions getCategory getSwRecordLayout getBaseType getAxeses "
    "getAxesesWithoutAssociation isApplication getValueAxisDataType",
    "Unit": "convert convertToBase getFactorAndOffsetToBase hasSameDimensions "
    "getBaseDimensionExponents getUnitExpression getConvFactor getConvOffset getConvUnit "
    "getDimension getSymbol getBaseUnits getBaseUnitsWithoutAssociation getBaseExponents "
    "getBaseExponentsWithoutAssociation getSuperscripts getSuperscriptsWithoutAssociation "
    "getSubscripts getSubscriptsWithoutAssociation",
    "Dimension": "getUnits getUnitsWithoutAssociation getDimensionExpression getBaseUnit "
    "getBaseDimensions getBaseDimensionsWithoutAssociation getBaseExponents "
    "getBaseExponentsWithoutAssociation getSymbol",
}


class Metamodel(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.types = loader.load(TYPES)
        cls.foundation = next(p for p in cls.types.imports if p.name == "foundation")

    def test_every_property_has_its_flags_and_every_class_its_properties(self):
        words = {c.name: " ".join(f"{p.flags:02x}" for p in c.properties) for c in self.types.classes}
        self.assertEqual(words, FLAGS)

    def test_the_package_table_has_no_hole(self):
        every = [*self.types.classes, *self.types.data_types]
        self.assertEqual(sorted(each.index for each in every), list(range(1, 42)))

    def test_the_registry_creates_in_the_order_of_the_file(self):
        self.assertEqual(
            [d.name for d in self.types.data_types],
            "CompuMethodCategory TimeUnitKind DataSizeUnitKind FloatingPointKind Time "
            "DataSize".split(),
        )
        # Mostly that of the table, but for bases that come first.
        moved = ["PrimitiveType", "Real", "CompositeSpecification", "ValueElement"]
        rest = [c for c in self.types.classes if c.name not in moved]
        self.assertEqual(rest, sorted(rest, key=lambda c: c.index))
        positions = {c.name: number for number, c in enumerate(self.types.classes)}
        self.assertEqual([positions[name] for name in moved], [0, 1, 14, 16])

    def test_the_virtual_order_is_kept_where_it_is_not_that_of_the_ids(self):
        for name, getters in GETTERS.items():
            with self.subTest(name):
                owner = self.types.types.get(name) or self.foundation.types[name]
                every = operations.own_operations(owner)
                readers = {p.getter for p in owner.properties}
                readers |= {f"{p.getter}WithoutAssociation" for p in owner.properties}
                readers |= {extra.name for extra in owner.extra_operations}
                self.assertEqual([o.name for o in every if o.name in readers], getters.split())

    def test_other_packages_refer_to_the_base_by_these_numbers(self):
        for index, name in enumerate(
            "Element NamedElement Namespace PackageableElement TypedElement ValueType "
            "ValueSpecification".split()
        ):
            expected = (6, 8, 11, 15, 18, 20, 23)[index]
            self.assertEqual(self.foundation.types[name].index, expected, name)
        for owner, number, name in (
            ("Element", 1, "ownedElement"),
            ("Element", 2, "owner"),
            ("NamedElement", 4, "namespace"),
            ("Namespace", 3, "ownedMember"),
            ("TypedElement", 1, "type"),
        ):
            self.assertEqual(self.foundation.types[owner].find_property(name).id, number, name)

    def test_marks_are_those_of_a_class_but_for_two(self):
        odd = {c.name: c.tags for c in self.types.classes if c.tags != ["qob_metaclass"]}
        self.assertEqual(
            odd, {"Factory": ["qob_metaclass", "qob_factory"], "Axis": ["qob_hide_in_lumvo"]}
        )

    def test_creators_take_the_required_values_in_order(self):
        arguments = {
            c.name: " ".join(p.name for p in c.creator_arguments)
            for c in self.types.classes
            if c.creator_arguments
        }
        self.assertEqual(
            arguments,
            {
                "FloatingPoint": "Kind",
                "Complex": "BaseType",
                "LiteralReal": "Value",
                "Matrix": "BaseType",
                "EnumerationLiteral": "Value pvalue enumeration",
                "Cell": "owningComposite Value",
                "Slot": "owningComposite Value",
                "ConstantSpecification": "ConstantValue",
                "ConstantReference": "Value",
                "StructElement": "Structure",
                "CompuMethod": "DisplayFormat",
                "LookupTableType": "SwRecordLayout BaseType",
                "SharedAxisType": "SwRecordLayout Axis",
                "Axis": "Dimensions",
                "VoidPointer": "SwBaseType",
            },
        )

    def test_odd_texts_stay_as_they_are(self):
        types = self.types.types
        self.assertIn("typivcally", types["FloatingPoint"].documentation[0])
        self.assertIn("it’s not clear", types["Complex"].documentation[0])
        self.assertEqual(len(types["ConstantSpecification"].documentation), 2)
        self.assertIn("compulted", types["EnumerationLiteral"].find_property("pvalue").documentation)
        self.assertEqual(types["Matrix"].find_property("SymbolicDimensions").default, '""')
        self.assertIsNone(types["FloatingPoint"].find_property("Kind").default)
        end = types["ValueElement"].find_property("Value")
        self.assertEqual((end.association, end.other_end), ("A_value_owningSlot", "owningSlot"))
