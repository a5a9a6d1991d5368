"""What a class declares: its properties, and the operations that no property gives."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import TYPE_CHECKING, Optional, Union

from . import names

if TYPE_CHECKING:
    from .model import DataType, MetaClass, Type


@dataclass(eq=False)
class Parameter:
    type: str
    name: str


@dataclass(eq=False)
class ExtraOperation:
    """A virtual operation beside those that the properties give."""

    owner: MetaClass
    name: str
    result: str
    const: bool
    parameters: list[Parameter] = field(default_factory=list)
    documentation: str = ""
    # Whether it takes a deviant before its parameters.
    deviant: bool = True
    static: bool = False
    # Whether it takes the place of a base's operation, or comes behind the pair that ends a block.
    override: bool = False
    after_pair: bool = False
    # Whether a state answers with an empty value instead of running the body.
    empty_on_state: bool = False
    types: list[Type] = field(default_factory=list)


@dataclass(eq=False)
class Property:
    owner: MetaClass
    id: int
    name: str
    type: Union[DataType, MetaClass]
    lower: int
    upper: int
    default: Optional[str] = None
    composite: bool = False
    derived: bool = False
    read_only: bool = False
    ordered: bool = False
    unique: bool = True
    opposite: Optional[Property] = None
    association: Optional[str] = None
    other_end: Optional[str] = None
    redefines: list[Property] = field(default_factory=list)
    subsets: list[Property] = field(default_factory=list)
    hidden: bool = False
    private: bool = False
    plural: Optional[str] = None
    documentation: Optional[str] = None
    # Of a hand-written class: the rule by which the property contains objects, and the verbs of
    # operations that it doesn't have.
    part: Optional[str] = None
    without: list[str] = field(default_factory=list)
    # The verbs of operations whose bodies are written by hand.
    by_hand: list[str] = field(default_factory=list)
    # Whether its operations take the place of those of a base under the same names.
    overrides: bool = False

    @property
    def qualified(self) -> str:
        return f"{self.owner.qualified}.{self.name}"

    @property
    def multi_valued(self) -> bool:
        return self.upper > 1

    @property
    def mandatory(self) -> bool:
        return self.lower > 0

    @property
    def flags(self) -> int:
        """The word of the property's description record."""
        return (
            0x01 * self.read_only
            | 0x02 * self.derived
            | 0x08 * self.composite
            | 0x10 * self.ordered
            | 0x20 * self.unique
            | 0x40 * self.multi_valued
        )

    @property
    def redefined_under_same_name(self) -> bool:
        name = names.capitalized(self.name)
        return not self.overrides and any(
            names.capitalized(r.name) == name for r in self.redefines
        )

    @property
    def stem(self) -> str:
        """What stands behind the verb in the names of its operations."""
        name = names.capitalized(self.name)
        if self.redefined_under_same_name:
            return f"{self.owner.package.underscored}_{self.owner.name}_{name}"
        return name

    @property
    def getter(self) -> str:
        if self.multi_valued:
            return "get" + (self.plural or names.plural(self.stem))
        predicate = not self.type.is_class and self.type.kind == "boolean"
        if predicate and names.is_predicate(self.name) and not self.redefined_under_same_name:
            return names.uncapitalized(self.name)
        return "get" + self.stem

    @property
    def setter(self) -> str:
        return "set" + self.stem

    @property
    def operation_names(self) -> dict[str, str]:
        """The operations by verb."""
        if self.multi_valued:
            return {"get": self.getter, "getOnly": f"{self.getter}WithoutAssociation"}
        verbs = ("has", "remove", "set", "removeOnly", "setOnly")
        return {verb: verb + self.stem for verb in verbs} | {"get": self.getter}

    def verb_of(self, operation: str) -> str:
        return next(verb for verb, name in self.operation_names.items() if name == operation)

    @property
    def container(self) -> str:
        """The class that holds several values in a state."""
        return f"QOB::{'MultiIndexImpl' if self.unique else 'ListQImpl'}<{self.type.cpp}>"

    @property
    def field(self) -> str:
        return names.uncapitalized(self.name) + "_"

    @property
    def has_flag(self) -> str:
        """The field that says whether an optional value is there."""
        return f"has{names.capitalized(self.name)}_"

    @property
    def has_default(self) -> bool:
        return self.default is not None

    @property
    def argument(self) -> str:
        """Its name as a parameter."""
        return names.uncapitalized(self.name)

    @property
    def has_only_forms(self) -> bool:
        """Primitives of the kernel have no forms that act on one end alone."""
        return not self.type.is_primitive

    @property
    def initial_value(self) -> str:
        """The value that a new state starts with, as C++ between braces."""
        if self.default is None or self.multi_valued or self.type.is_class:
            return ""
        if self.type.kind == "enumeration":
            return f"{self.type.cpp}::{self.default}"
        if self.type.kind == "string":
            return names.cpp_string(self.default)
        if self.type.kind == "value":
            number, unit = self.default.split("|")
            return f"{number}, {self.type.unit.cpp}::{unit}"
        if self.type.kind == "real" and self.default.lstrip("-").isdigit():
            return self.default + ".0"
        return self.default
