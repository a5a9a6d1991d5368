"""The annotations of the Python classes: what `velum/__init__.pyi` says of a metamodel.

The classes themselves are made at run time from the live metamodel; both follow python/velum/_names.py.
"""

from __future__ import annotations

from dataclasses import dataclass
from importlib import util
from pathlib import Path
from typing import Callable

import jinja2

from .members import Property
from .model import DataType, MetaClass, Package
from .outputs import TEMPLATES

_PRIMITIVES = {"boolean": "bool", "integer": "int", "real": "float", "string": "str"}

# Of a value with a text form, which may be set by its text.
_FROM_TEXT = " | str"


def load_naming(path: Path) -> Callable[[str, bool], str]:
    """The function of the package that spells a property's name."""
    place = util.spec_from_file_location("velum_names", path)
    assert place is not None and place.loader is not None
    module = util.module_from_spec(place)
    place.loader.exec_module(module)
    naming: Callable[[str, bool], str] = module.python_name
    return naming


@dataclass(frozen=True)
class Attribute:
    """A property as an annotation."""

    name: str
    get: str
    set: str
    overrides: bool = False

    @property
    def annotation(self) -> str:
        return f"Property[{self.get}, {self.set}]"


@dataclass(frozen=True)
class StubClass:
    name: str
    bases: list[str]
    attributes: list[Attribute]
    # What a call takes by keyword; none for a class without objects of its own.
    keywords: list[Attribute]
    is_abstract: bool
    has_name: bool
    declares_name: bool


def _value_type(of: DataType) -> str:
    if of.is_primitive:
        return _PRIMITIVES[of.kind]
    return of.name


def _always_there(prop: Property) -> bool:
    """Whether a new object has a value, and every object from then on."""
    assert isinstance(prop.type, DataType)
    has_value = not prop.type.is_primitive or prop.type.kind == "boolean" or bool(prop.default)
    return prop.mandatory and has_value and not prop.derived


def _attribute(prop: Property, name: str) -> Attribute:
    if isinstance(prop.type, MetaClass):
        item = prop.type.name if not prop.type.package.describes_registry else "Object"
        get = given = f"{item} | None"
    else:
        item = _value_type(prop.type)
        get = item if _always_there(prop) else f"{item} | None"
        taken = item + (_FROM_TEXT if prop.type.kind == "value" else "")
        given = taken if prop.mandatory else f"{taken} | None"
    if prop.multi_valued:
        get, given = f"List[{item}]", f"Iterable[{item}]"
    return Attribute(name, get, "NoReturn" if prop.derived and prop.read_only else given)


class Stubs:
    """All classes and data types of some packages."""

    def __init__(self, packages: list[Package], naming: Callable[[str, bool], str]) -> None:
        self._naming = naming
        self.kinds = [t for p in packages for t in p.data_types if t.kind == "enumeration"]
        self.classes = [self._class(c) for p in packages for c in p.classes]

    def _name(self, prop: Property) -> str:
        return self._naming(prop.name, prop.multi_valued)

    def _class(self, of: MetaClass) -> StubClass:
        inherited: dict[str, Attribute] = {}
        for base in reversed(of.ancestors):
            if not base.package.describes_registry:
                inherited.update({a.name: a for a in self._attributes(base)})
        own = [
            Attribute(a.name, a.get, a.set, inherited.get(a.name, a) != a)
            for a in self._attributes(of)
        ]
        everything = inherited | {a.name: a for a in own}
        keywords = [a for a in everything.values() if a.set != "NoReturn" and a.name != "name"]
        return StubClass(
            name=of.name,
            bases=[b.name if not b.package.describes_registry else "Object" for b in of.bases],
            attributes=own,
            keywords=sorted(keywords, key=lambda a: a.name),
            is_abstract=of.abstract or of.factory,
            has_name="name" in everything,
            declares_name=any(a.name == "name" for a in own),
        )

    def _attributes(self, of: MetaClass) -> list[Attribute]:
        return [_attribute(p, self._name(p)) for p in of.properties]


def render(package: Package, names: Path) -> str:
    """The stub file of a package and of those that it imports, but for the kernel's."""
    packages = [p for p in [*package.imports, package] if not p.describes_registry]
    environment = jinja2.Environment(
        loader=jinja2.FileSystemLoader(TEMPLATES),
        undefined=jinja2.StrictUndefined,
        trim_blocks=True,
        lstrip_blocks=True,
        keep_trailing_newline=True,
    )
    stubs = Stubs(packages, load_naming(names))
    models = [p.model_path for p in packages]
    return environment.get_template("stubs.pyi.j2").render(stubs=stubs, models=models)
