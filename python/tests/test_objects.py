"""Objects and their values in Python's habits."""

import collections.abc
import contextlib
import copy
import math
import pickle
import unittest
import weakref

import velum


class Values(unittest.TestCase):
    def setUp(self):
        self.model = velum.Model()
        self.integer = velum.Integer(self.model, "counter")

    def test_values_are_those_of_python(self):
        literal = velum.EnumerationLiteral(self.model, "low")
        unit = velum.Unit(self.model, "metre")
        for target, name, values in (
            (self.integer, "name", ["", "counter", "\N{GREEK SMALL LETTER ALPHA}\0b", "x" * 1000]),
            (self.integer, "is_signed", [True, False]),
            (self.integer, "min_value", [0.0, -1.5, 1e300, math.inf, 3]),
            (literal, "value", [0, -7, 2**31 - 1, -(2**31) + 1, True]),
            (unit, "symbol", ["m", "\udc80\udcff"]),
        ):
            for value in values:
                with self.subTest(name=name, value=value):
                    setattr(target, name, value)
                    self.assertEqual(getattr(target, name), value)
        self.integer.min_value = math.nan
        self.assertTrue(math.isnan(self.integer.min_value))

    def test_what_is_not_there_is_none_and_can_be_removed(self):
        self.assertIsNone(self.integer.min_value)
        self.assertIsNone(self.integer.unit)
        self.integer.min_value = 1.0
        self.integer.unit = unit = velum.Unit(self.model, "metre")
        self.assertEqual(self.integer.unit, unit)
        del self.integer.min_value
        self.integer.unit = None
        self.assertIsNone(self.integer.min_value)
        self.assertIsNone(self.integer.unit)

    def test_what_is_always_there_stays(self):
        with self.assertRaisesRegex(AttributeError, r"Integer\.is_signed is always there"):
            del self.integer.is_signed
        with self.assertRaisesRegex(TypeError, r"takes bool, not None"):
            self.integer.is_signed = None
        self.assertIs(self.integer.is_signed, True)

    def test_sizes_are_pairs_and_texts(self):
        bit = velum.DataSizeUnitKind.bit
        self.integer.length = "16|bit"
        self.assertEqual(self.integer.length, velum.DataSize(16, bit))
        self.assertEqual((self.integer.length.value, self.integer.length.unit), (16, bit))
        self.integer.length = velum.DataSize(value=2, unit=velum.DataSizeUnitKind.byte)
        self.assertEqual(str(self.integer.length), "2|byte")
        self.assertEqual(repr(self.integer.length), "DataSize('2|byte')")
        self.assertEqual(len({velum.DataSize("8|bit"), velum.DataSize(8, bit)}), 1)
        self.assertNotEqual(velum.DataSize("8|bit"), "8|bit")
        self.assertIsNone(velum.DataSize(None, bit).value)
        self.assertEqual(velum.Time(1.5, velum.TimeUnitKind.ms), velum.Time("1.5|ms"))
        for value in (velum.DataSize("3|KB"), velum.Time("2|hrs")):
            self.assertEqual(pickle.loads(pickle.dumps(value)), value)
            self.assertEqual(copy.copy(value), value)
        match self.integer.length:
            case velum.DataSize(number, unit):
                self.assertEqual((number, unit), (2, velum.DataSizeUnitKind.byte))
        for wrong, error in (
            (("16|furlongs",), velum.Error),
            ((16,), TypeError),
            (("16|bit", bit), TypeError),
            ((16, "bit"), TypeError),
            ((2**40, bit), OverflowError),
            ((), TypeError),
        ):
            with self.subTest(wrong=wrong), self.assertRaises(error):
                velum.DataSize(*wrong)

    def test_kinds_are_enums(self):
        number = velum.FloatingPoint(self.model, "speed", kind=velum.FloatingPointKind.IEEE_Single)
        self.assertIs(number.kind, velum.FloatingPointKind.IEEE_Single)
        self.assertIs(number.visibility, velum.VisibilityKind.public)
        self.assertEqual([k.name for k in velum.DataSizeUnitKind], ["bit", "byte", "KB", "MB", "GB"])
        with self.assertRaisesRegex(TypeError, "takes velum.FloatingPointKind, not str"):
            number.kind = "IEEE_Double"

    def test_wrong_types_are_refused_and_change_nothing(self):
        unit = velum.Unit(self.model, "metre")
        literal = velum.EnumerationLiteral(self.model, "low", value=3)
        for target, name, value, error, text in (
            (self.integer, "is_signed", 1, TypeError, "Integer.is_signed takes bool, not int"),
            (self.integer, "name", b"x", TypeError, "name takes str, not bytes"),
            (self.integer, "min_value", "1", TypeError, "min_value takes float, not str"),
            (self.integer, "min_value", 1j, TypeError, "takes float, not complex"),
            (self.integer, "min_value", 10**400, OverflowError, ""),
            (self.integer, "length", 16, TypeError, "takes velum.DataSize, not int"),
            (self.integer, "length", "wide", velum.Error, ""),
            (self.integer, "unit", "metre", TypeError, "unit takes velum.Unit, not str"),
            (self.integer, "unit", literal, TypeError, "not velum.EnumerationLiteral"),
            (literal, "value", 1.0, TypeError, "value takes int, not float"),
            (literal, "value", 2**31, OverflowError, "from -2147483647 to 2147483647"),
            (literal, "value", -(2**31), OverflowError, ""),
            (unit, "symbol", "\ud800", UnicodeEncodeError, ""),
        ):
            with self.subTest(name=name, value=value):
                before = getattr(target, name)
                with self.assertRaisesRegex(error, text):
                    setattr(target, name, value)
                self.assertEqual(getattr(target, name), before)
        for action in (
            lambda: setattr(self.integer, "lenght", "8|bit"),
            lambda: self.integer.lenght,
            lambda: delattr(self.integer, "lenght"),
        ):
            with self.assertRaisesRegex(AttributeError, "'Integer' object has no attribute 'lenght'"):
                action()
        with self.assertRaisesRegex(AttributeError, "no attribute 'Integre'"):
            velum.Integre  # noqa: B018
        with self.assertRaises(TypeError):
            setattr(self.integer, 5, 5)
        with self.assertRaisesRegex(TypeError, "is no property of velum.Unit objects"):
            velum.Integer.is_signed.__get__(unit)
        with self.assertRaisesRegex(TypeError, "is no property of int objects"):
            velum.Integer.is_signed.__set__(5, True)

    def test_derived_values_are_read_only(self):
        number = velum.FixedPoint(self.model, "x", fraction_length="3|bit")
        self.assertEqual(number.slope, 8.0)
        with self.assertRaisesRegex(AttributeError, "FixedPoint.slope is derived and can't be set"):
            number.slope = 1.0
        with self.assertRaises(AttributeError):
            del number.slope

    def test_what_the_library_has_not_is_told_apart(self):
        unit = velum.Unit(self.model, "metre")
        with self.assertRaisesRegex(velum.UnimplementedError, "not yet implemented"):
            unit.unit_expression  # noqa: B018
        self.assertFalse(hasattr(unit, "unit_expression"))
        self.assertIn("metre", repr(unit))


class Objects(unittest.TestCase):
    def setUp(self):
        self.model = velum.Model()

    def test_creation_takes_a_name_and_properties(self):
        unit = velum.Unit(self.model, symbol="m", name="metre")
        integer = velum.Integer(self.model, "x", unit=unit, length="8|bit", is_signed=False)
        self.assertEqual((integer.name, integer.unit, integer.is_signed), ("x", unit, False))
        self.assertEqual(velum.Comment(self.model, body="why").body, "why")
        for arguments, keywords, text in (
            ((), {}, "takes a model"),
            (("x",), {}, "takes a velum.Model or a velum.Branch, not str"),
            ((self.model, "x", "y"), {}, "takes a model"),
            ((self.model,), {"size": 1}, "has no property size"),
            ((self.model,), {"in_branch": 1}, "has no property in_branch"),
            ((self.model,), {"is_signed": 1}, "takes bool"),
        ):
            with self.subTest(text=text), self.assertRaisesRegex(TypeError, text):
                velum.Integer(*arguments, **keywords)
        for abstract in (velum.Real, velum.Object, velum.NamedElement, velum.Factory):
            with self.assertRaisesRegex(TypeError, "is abstract"):
                abstract(self.model)
        with self.assertRaisesRegex(TypeError, "have no name"):
            velum.Comment(self.model, "why")
        self.assertEqual(len(self.model.objects()), 3)  # nothing that was refused is left

    def test_an_object_is_one_object(self):
        first = velum.Integer(self.model, "x")
        again = self.model.find(first.id)
        self.assertEqual(first, again)
        self.assertEqual(hash(first), hash(again))
        self.assertIsNot(first, again)
        self.assertIs(type(again), velum.Integer)
        self.assertNotEqual(first, velum.Integer(self.model, "x"))
        self.assertNotEqual(first, 5)
        with self.assertRaises(TypeError):
            first < again  # noqa: B015
        reference = weakref.ref(first)
        self.assertIs(reference(), first)
        del first
        self.assertIsNone(reference())

    def test_classes_follow_the_tree_of_metaclasses(self):
        integer = velum.Integer(self.model, "x")
        for base in (velum.Real, velum.PrimitiveType, velum.ValueType, velum.Type):
            self.assertIsInstance(integer, base)
        for base in (velum.Namespace, velum.PackageableElement, velum.NamedElement, velum.Object):
            self.assertIsInstance(integer, base)
        self.assertNotIsInstance(integer, velum.FixedPoint)
        match integer:
            case velum.FixedPoint():
                self.fail("no fixed point")
            case velum.Integer("y"):
                self.fail("another name")
            case velum.Integer("x", is_signed=is_signed):
                self.assertTrue(is_signed)
            case _:
                self.fail("no match")

    def test_attributes_are_found_as_python_finds_them(self):
        class Noting(velum.Integer):
            lent = velum.Unit.symbol  # no property of an integer

            def __getattr__(self, name):
                return f"no {name}"

            def __setattr__(self, name, value):
                super().__setattr__(name, value * 2)

        noting = Noting(self.model, "x")
        noting.min_value = 1.5
        noting.note = "a"
        self.assertEqual((noting.min_value, noting.note, noting.absent), (3.0, "aa", "no absent"))
        with self.assertRaisesRegex(TypeError, "Unit.symbol is no property of"):
            velum.Object.__getattribute__(noting, "lent")
        integer = velum.Integer(self.model, "y")
        self.assertEqual(object.__getattribute__(integer, "name"), "y")
        self.assertIs(getattr(velum.Integer, "length"), vars(velum.Integer)["length"])  # noqa: B009
        self.assertIn("length", dir(integer))

    def test_a_class_may_be_derived_from(self):
        class Counter(velum.Integer):
            def width(self):
                return self.length.value

        counter = Counter(self.model, "c", length="8|bit")
        counter.note = counter  # a circle through a dictionary of its own
        self.assertEqual(counter.width(), 8)
        self.assertIn("c", repr(counter))
        self.assertIs(type(self.model.find(counter.id)), velum.Integer)

    def test_what_every_object_has(self):
        enumeration = velum.Enumeration(self.model, "e")
        literal = velum.EnumerationLiteral(self.model, "low")
        enumeration.owned_literals.append(literal)
        self.assertEqual(literal.container, enumeration)
        self.assertEqual(enumeration.contents, [literal])
        self.assertEqual(literal.enumeration, enumeration)
        self.assertEqual(literal.model, self.model)
        self.assertIsNone(enumeration.container)
        self.assertIsNone(enumeration.external_id)
        enumeration.external_id = "/P/e"
        self.assertEqual(enumeration.external_id, "/P/e")
        self.assertEqual(self.model.find_path("/P/e"), enumeration)
        self.assertIsNone(self.model.find_path("/P"))
        self.assertEqual(enumeration.uri, f"{self.model.uri}#{enumeration.id}")
        del enumeration.external_id
        self.assertIsNone(enumeration.external_id)
        with self.assertRaisesRegex(TypeError, "external_id takes a str"):
            enumeration.external_id = 5
        self.assertIn('"low"', enumeration.describe())
        self.assertEqual(repr(literal), f'<velum.EnumerationLiteral #{literal.id} "low">')

    def test_copies_are_refused_with_the_reason(self):
        integer = velum.Integer(self.model, "x")
        enumeration = velum.Enumeration(self.model, "e")
        for value in (integer, self.model, enumeration.owned_literals):
            for action in (copy.copy, copy.deepcopy, pickle.dumps):
                with self.assertRaisesRegex(TypeError, "can't be copied or pickled"):
                    action(value)

    def test_destroyed_objects_raise(self):
        integer = velum.Integer(self.model, "x")
        unit = velum.Unit(self.model, "metre")
        integer.unit = unit
        unit.destroy()
        self.assertFalse(unit.exists)
        self.assertIsNone(integer.unit)
        with self.assertRaises(velum.Error):
            unit.symbol  # noqa: B018
        with self.assertRaises(velum.Error):
            unit.symbol = "m"
        with self.assertRaisesRegex(velum.Error, "no longer exists"):
            integer.unit = unit
        self.assertIn("gone", repr(unit))
        unit.destroy()

    def test_properties_explain_themselves(self):
        length = velum.Integer.length
        self.assertEqual(length.metamodel_name, "Integer.Length")
        self.assertIn("Integer.Length: velum.DataSize, 1..1.", length.__doc__)
        self.assertIs(length.__objclass__, velum.Integer)
        self.assertIn("Integer.length", repr(length))
        self.assertIn("Zorvane.metamodel.types.Integer", velum.Integer.__doc__)
        for fixed in (velum.Property, velum.List):
            with self.assertRaises(TypeError):
                fixed()


class Lists(unittest.TestCase):
    def setUp(self):
        self.model = velum.Model()
        self.enumeration = velum.Enumeration(self.model, "e")
        self.literals = [velum.EnumerationLiteral(self.model, name) for name in "abcde"]
        self.enumeration.owned_literals = self.literals

    def names(self):
        return "".join(literal.name for literal in self.enumeration.owned_literals)

    def test_a_list_is_a_mutable_sequence(self):
        literals = self.enumeration.owned_literals
        self.assertIsInstance(literals, collections.abc.MutableSequence)
        self.assertEqual((len(literals), literals[0], literals[-1]), (5, *self.literals[::4]))
        self.assertEqual(literals[1:4:2], self.literals[1:4:2])
        self.assertEqual(list(reversed(literals)), self.literals[::-1])
        self.assertEqual(literals, self.literals)
        self.assertEqual(literals + [None], [*self.literals, None])
        self.assertEqual(literals.index(self.literals[2]), 2)
        self.assertEqual(literals.count(self.literals[2]), 1)
        self.assertIn(self.literals[3], literals)
        self.assertNotIn("a", literals)
        match literals:
            case [first, *_, last]:
                self.assertEqual((first, last), (self.literals[0], self.literals[-1]))
            case _:
                self.fail("no sequence")
        for key, error in ((5, IndexError), (-6, IndexError), ("a", TypeError), (1.0, TypeError)):
            with self.subTest(key=key), self.assertRaises(error):
                literals[key]  # noqa: B018
        with self.assertRaises(TypeError):
            hash(literals)

    def test_changes_reach_the_object_and_the_other_end(self):
        literals = self.enumeration.owned_literals
        taken = literals.pop(1)
        self.assertIsNone(taken.enumeration)
        literals.insert(0, taken)
        self.assertEqual(self.names(), "bacde")
        literals.reverse()
        self.assertEqual(self.names(), "edcab")
        del literals[1:3]
        self.assertEqual(self.names(), "eab")
        literals[1:2] = [self.literals[2], self.literals[3]]
        self.assertEqual(self.names(), "ecdb")
        literals[::2] = [self.literals[0], self.literals[4]]
        self.assertEqual(self.names(), "aceb")
        literals[0], literals[0] = self.literals[3], self.literals[0]
        literals.remove(self.literals[2])
        self.enumeration.owned_literals += [self.literals[2]]
        self.assertEqual(self.names(), "aebc")
        self.assertEqual(self.literals[2].enumeration, self.enumeration)
        literals.clear()
        self.assertEqual(self.names(), "")
        literals.extend(iter(self.literals))
        del self.enumeration.owned_literals
        self.assertFalse(literals)

    def test_what_is_refused_changes_nothing(self):
        literals = self.enumeration.owned_literals
        unit = velum.Unit(self.model, "metre")
        new = velum.EnumerationLiteral(self.model, "new")
        for action, error in (
            (lambda: literals.append(unit), TypeError),
            (lambda: literals.append(None), TypeError),
            (lambda: literals.append(self.literals[0]), ValueError),
            (lambda: literals.extend([new, unit]), TypeError),
            (lambda: literals.extend([new, new]), ValueError),
            (lambda: literals.extend(5), TypeError),
            (lambda: literals.extend(""), TypeError),
            (lambda: literals.insert("a", new), TypeError),
            (lambda: literals.__setitem__(0, self.literals[1]), ValueError),
            (lambda: literals.__setitem__(9, new), IndexError),
            (lambda: literals.__setitem__(slice(0, 4, 2), [new]), ValueError),
            (lambda: literals.__setitem__(slice(0, 1), [self.literals[3]]), ValueError),
            (lambda: literals.remove(new), ValueError),
            (lambda: literals.index("a"), ValueError),
            (lambda: literals.pop(7), IndexError),
            (lambda: literals.append(), TypeError),
            (lambda: setattr(self.enumeration, "owned_literals", None), TypeError),
            (lambda: setattr(self.enumeration, "owned_literals", [new, 5]), TypeError),
        ):
            with self.assertRaises(error):
                action()
            self.assertEqual(self.names(), "abcde")
        self.assertIsNone(new.enumeration)
        with self.assertRaisesRegex(AttributeError, "derived"):
            self.enumeration.owned_members = []
        with self.assertRaisesRegex(TypeError, "derived and can't be changed"):
            self.enumeration.owned_members.append(new)

    def test_lists_of_values(self):
        matrix = velum.Matrix(self.model, "m", dimensions=[3, 4, 3])
        self.assertEqual(matrix.dimensions, [3, 4, 3])
        matrix.dimensions[1] = 3
        matrix.dimensions.append(5)
        self.assertEqual(matrix.dimensions.count(3), 3)
        self.assertEqual(repr(matrix.dimensions), "[3, 3, 3, 5]")
        with self.assertRaises(OverflowError):
            matrix.dimensions.append(2**31)
        method = velum.CompuMethod(self.model, "c")
        method.cal_to_internal_compu_numerators = (n / 2 for n in range(3))
        self.assertEqual(list(method.cal_to_internal_compu_numerators), [0.0, 0.5, 1.0])

    def test_what_is_put_in_may_change_the_list(self):
        new = velum.EnumerationLiteral(self.model, "n")

        def emptying():
            self.enumeration.owned_literals.clear()
            yield new

        class Emptying:
            """A place in a list, and a number, that empties the list when it is asked for."""

            def __init__(self, values, number):
                self.values, self.number = values, number

            def __index__(self):
                self.values.clear()
                return self.number

            def __float__(self):
                return float(self.__index__())

        for action, error, left in (
            (lambda x: x.extend(emptying()), None, "n"),
            (lambda x: x.__iadd__(emptying()), None, "n"),
            (lambda x: x.__setitem__(slice(0, 5), emptying()), None, "n"),
            (lambda x: x.__setitem__(slice(1, 5, 2), emptying()), ValueError, ""),
            (lambda x: x.__setitem__(Emptying(x, 2), new), IndexError, ""),
            (lambda x: x.__delitem__(slice(Emptying(x, 1), 3)), None, ""),
            (lambda x: x[Emptying(x, 1) :], None, ""),
            (lambda x: x.insert(Emptying(x, 3), new), None, "n"),
            (lambda x: x.pop(Emptying(x, 3)), IndexError, ""),
            (lambda x: x.index(self.literals[4], Emptying(x, 3)), ValueError, ""),
        ):
            self.enumeration.owned_literals = self.literals
            with contextlib.nullcontext() if error is None else self.assertRaises(error):
                action(self.enumeration.owned_literals)
            self.assertEqual(self.names(), left)
        numbers = velum.CompuMethod(self.model, "c").cal_to_internal_compu_numerators
        for action, error, left in (
            (lambda: numbers.insert(2, Emptying(numbers, 7)), None, [7.0]),
            (lambda: numbers.append(Emptying(numbers, 7)), None, [7.0]),
            (lambda: numbers.__setitem__(2, Emptying(numbers, 7)), IndexError, []),
            (lambda: numbers.count(Emptying(numbers, 7)), None, []),
        ):
            numbers[:] = [1, 2, 3]
            with contextlib.nullcontext() if error is None else self.assertRaises(error):
                action()
            self.assertEqual(numbers, left)
        # The value's own model may end before the list has it.
        dimension = velum.Dimension(self.model, "d")
        with contextlib.suppress(velum.Error):
            dimension.base_dimensions.extend(velum.Dimension(velum.Model(), "x") for _ in range(3))
        self.assertFalse(any(each.exists for each in dimension.base_dimensions))

    def test_a_list_ends_with_its_object(self):
        literals = self.enumeration.owned_literals
        self.enumeration.destroy()
        for action in (lambda: len(literals), lambda: literals[0], lambda: literals.append(None)):
            with self.assertRaises((velum.Error, TypeError)):
                action()


if __name__ == "__main__":
    unittest.main()
