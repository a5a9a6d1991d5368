"""All classes and properties: they are those of the metamodel, and every one can be used."""

import concurrent.futures
import enum
import functools
import sys
import tempfile
import unittest

import metamodel
import name_table
import velum
from velum import _names

CLASSES = metamodel.classes()
CONCRETE = [each for each in CLASSES.values() if not each.is_abstract]
# Derived texts that the library declares and doesn't have.
UNIMPLEMENTED = {"unit_expression", "dimension_expression", "constant_expression"}


def python_class(name):
    return getattr(velum, name)


def descriptors(of):
    """The properties of a class by name, as objects of it have them."""
    found = {}
    for base in reversed(of.__mro__):
        for name, value in vars(base).items():
            if isinstance(value, velum.Property):
                found[name] = value
    return found


def property_of(descriptor):
    owner, _, name = descriptor.metamodel_name.partition(".")
    return next(p for p in CLASSES[owner].properties if p.name == name)


def concrete_below(name):
    made = (python_class(each.name) for each in CONCRETE)
    return [each for each in made if issubclass(each, python_class(name))]


class Maker:
    """Values of each type, the same in each run."""

    def __init__(self, model):
        self._model = model
        self._count = 0

    def value(self, type_name):
        self._count += 1
        simple = {
            "Boolean": lambda: self._count % 2 == 0,
            "Integer": lambda: self._count,
            "Real": lambda: self._count / 4,
            "String": lambda: f"text {self._count}",
            "DataSize": lambda: velum.DataSize(self._count, velum.DataSizeUnitKind.byte),
            "Time": lambda: velum.Time(self._count / 2, velum.TimeUnitKind.min),
        }
        kind = getattr(velum, type_name, None)
        if isinstance(kind, enum.EnumMeta):
            return list(kind)[self._count % len(kind)]
        return simple[type_name]()

    def candidates(self, prop, is_primitive):
        """Values of a type; objects of each class, of which a library may take some only."""
        if is_primitive:
            return [self.value(prop.type)]
        return [each(self._model) for each in concrete_below(prop.type)]


def is_primitive(descriptor, prop):
    """Whether it has values: velum has classes of the names of the kernel's data types."""
    return f": velum.{prop.type}," not in descriptor.__doc__ or prop.type not in CLASSES


class Metamodel(unittest.TestCase):
    def test_classes_are_those_of_the_metamodel(self):
        for each in CLASSES.values():
            with self.subTest(each.name):
                made = python_class(each.name)
                bases = ["Object" if base not in CLASSES else base for base in each.bases]
                self.assertEqual([base.__name__ for base in made.__bases__], bases)
                self.assertIn(each.documentation, made.__doc__)
                self.assertEqual((made.__module__, made.__name__), ("velum", each.name))
        found = {k for k, v in vars(velum).items() if isinstance(v, type) and issubclass(v, velum.Object)}
        self.assertEqual(found - {"Object"}, set(CLASSES))

    def test_properties_are_those_of_the_metamodel(self):
        for each in CLASSES.values():
            own = {n: v for n, v in vars(python_class(each.name)).items() if isinstance(v, velum.Property)}
            expected = {_names.python_name(p.name, p.is_many): p for p in each.properties}
            self.assertEqual(set(own), set(expected), each.name)
            for name, prop in expected.items():
                with self.subTest(prop.qualified):
                    self.assertEqual(own[name].metamodel_name, prop.qualified)
                    self.assertEqual(own[name].is_read_only, prop.is_read_only)
                    self.assertIn(prop.documentation, own[name].__doc__)

    def test_kinds_are_those_of_the_metamodel(self):
        for name, literals in metamodel.kinds().items():
            made = python_class(name)
            self.assertTrue(issubclass(made, enum.Enum))
            self.assertEqual([(k.name, k.value) for k in made], [(text, text) for text in literals])

    def test_names_are_spelled_by_one_rule(self):
        for name, is_many, expected in (
            ("GroundValue", False, "ground_value"),
            ("isMinOpen", False, "is_min_open"),
            ("SwBaseType", False, "sw_base_type"),
            ("pisUserDefined", False, "pis_user_defined"),
            ("HTTPPort", False, "http_port"),
            ("V", True, "vs"),
            ("ContainerQOB", False, "container"),
            ("Axes", True, "axes"),
            ("index", True, "indexes"),
            ("clientDependency", True, "client_dependencies"),
            ("key", True, "keys"),
        ):
            self.assertEqual(_names.python_name(name, is_many), expected)

    def test_the_page_has_all_names(self):
        page = (metamodel.ROOT / "docs" / "python.md").read_text(encoding="utf-8")
        self.assertEqual(name_table.with_table(page), page, "./dev docs brings the table up to date")


class EveryProperty(unittest.TestCase):
    """One body over all classes and properties."""

    def setUp(self):
        self.model = velum.Model()
        self.maker = Maker(self.model)

    def for_each(self, check):
        for of in CONCRETE:
            for name, descriptor in descriptors(python_class(of.name)).items():
                with self.subTest(f"{of.name}.{name}"):
                    prop = property_of(descriptor)
                    made = python_class(of.name)(self.model)
                    check(made, name, prop, is_primitive(descriptor, prop))

    def test_a_new_object_has_the_defaults(self):
        def check(made, name, prop, is_value):
            if name in UNIMPLEMENTED:
                self.assertFalse(hasattr(made, name))
                return
            value = getattr(made, name)
            if prop.is_many:
                self.assertEqual((type(value), len(value)), (velum.List, 0))
            elif is_value and prop.default and type(made).__name__ == prop.owner:
                shown = value.name if isinstance(value, enum.Enum) else value
                text = f"{shown:g}" if isinstance(shown, float) else str(shown)
                self.assertEqual(text.lower(), prop.default.lower())
            elif not is_value and not prop.is_mandatory:
                self.assertIsNone(value)

        self.for_each(check)

    def test_what_is_set_is_read(self):
        def check(made, name, prop, is_value):
            if name in UNIMPLEMENTED or prop.is_read_only:
                return
            candidates = zip(*(self.maker.candidates(prop, is_value) for _ in range(3)), strict=True)
            if not any(self.takes(made, name, prop, values) for values in candidates):
                unsettable.add(name)
            elif prop.is_many:
                delattr(made, name)
                self.assertEqual(len(getattr(made, name)), 0)
            elif not (is_value and prop.is_mandatory):
                delattr(made, name)
                setattr(made, name, None)

        unsettable = set()
        self.for_each(check)
        # The way to what contains an object; some classes are contained in nothing.
        self.assertLessEqual(unsettable, {"owner", "namespace"})

    def takes(self, made, name, prop, values):
        """Whether the library takes such values; then they are there."""
        value = list(values) if prop.is_many else values[0]
        try:
            setattr(made, name, value)
        except velum.Error:
            return False
        if name in ("owner", "namespace"):
            return getattr(made, name) == value
        self.assertEqual(getattr(made, name), value)
        if prop.is_many:
            getattr(made, name).reverse()
            self.assertEqual(getattr(made, name), value[::-1])
        return True

    def test_wrong_types_are_refused(self):
        wrong = [object(), b"", self.model, "", 1.5, velum.Integer]

        def check(made, name, prop, _):
            shown = f"{prop.owner}.{name} "
            for value in wrong:
                if prop.type == {str: "String", float: "Real"}.get(type(value)) and not prop.is_many:
                    continue
                with self.assertRaises((TypeError, AttributeError, velum.Error)) as raised:
                    setattr(made, name, value)
                # The sentence begins with the property. A text may be that of a size, but isn't.
                if raised.exception.__class__ is velum.Error:
                    self.assertIsInstance(value, str)
                else:
                    self.assertTrue(str(raised.exception).startswith(shown), raised.exception)
                if prop.is_many and not isinstance(value, str | float):
                    with self.assertRaises(TypeError):
                        getattr(made, name).append(value)
            if name not in UNIMPLEMENTED:
                getattr(made, name)

        self.for_each(check)

    def test_what_is_gone_is_refused(self):
        ended, removed = velum.Model(), self.model.branch()
        gone = []
        for each in CONCRETE:
            made, kept = (python_class(each.name)(self.model) for _ in range(2))
            gone += [made, kept.in_branch(removed), python_class(each.name)(ended)]
            made.destroy()
        removed.remove()
        ended.destroy()
        for handle in gone:
            self.refused(handle, descriptors(type(handle)), (velum.Error, TypeError, AttributeError), r"\w+ \w+")

    def test_another_thread_is_refused(self):
        with concurrent.futures.ThreadPoolExecutor(1) as other:
            for each in CONCRETE:
                made = python_class(each.name)(self.model)
                names = descriptors(type(made))
                other.submit(self.refused, made, names, velum.Error, "another thread").result()

    def refused(self, handle, names, error, text):
        """Whatever is done with some properties; values of another type may be told first."""
        for name in names:
            prop = property_of(descriptors(type(handle))[name])
            read = functools.partial(getattr, handle, name)
            actions = [(lambda: len(read()) if prop.is_many else read(), velum.Error)]
            if not prop.is_read_only:
                actions.append((lambda: setattr(handle, name, []), error))
                actions.append((lambda: delattr(handle, name), error))
            for number, (action, expected) in enumerate(actions):
                with self.subTest(f"{handle!r}.{name}", number=number):
                    with self.assertRaisesRegex(expected, text):
                        action()

    def test_every_value_survives_a_file(self):
        def fill(made, name, prop, is_value):
            if not (name in UNIMPLEMENTED or prop.is_read_only or prop.is_many or not is_value):
                setattr(made, name, self.maker.candidates(prop, is_value)[0])

        self.for_each(fill)
        with tempfile.TemporaryDirectory() as folder:
            velum.save(self.model, f"{folder}/all.db")
            loaded, report = velum.load(f"{folder}/all.db")
        self.assertEqual((report.skipped, report.unresolved), ((), ()))
        self.assertTrue(len(loaded.objects()) > 300)
        for one, other in zip(self.model.objects(), loaded.objects(), strict=True):
            self.assertEqual(one.describe(), other.describe())


if __name__ == "__main__":
    sys.exit(unittest.main())
