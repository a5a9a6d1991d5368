"""A class as data: what its table of properties says, and which of its operations a number reaches."""

from __future__ import annotations

from typing import Iterator, Optional

from . import names
from .members import Property
from .model import DataType, MetaClass, Package, Type, UNBOUNDED

# The mark of what hosts don't show.
HIDDEN = "qob_hide_in_lumvo"


def reference(prop: Property) -> str:
    """A property as others name it: package, class and number."""
    return f"{{&{prop.owner.package.function}, {prop.owner.index}, {prop.id}}}"


def references(properties: list[Property]) -> str:
    """The elements of a list; an empty one has room for one all the same."""
    return ", ".join(reference(p) for p in properties) or "{}"


def supers(cls: MetaClass) -> str:
    every = [f"{{&{b.package.function}, {b.index}}}" for b in cls.bases]
    return ", ".join([*every, "{}"])


def reflected(cls: MetaClass) -> str:
    """The operations by number."""
    return ", ".join(_many(p) if p.multi_valued else _single(p) for p in cls.properties)


def named_types(cls: MetaClass) -> Iterator[Type]:
    """Every type outside the class that its table points at."""
    yield from cls.bases
    for prop in cls.properties:
        yield prop.type
        others = [*prop.redefines, *prop.subsets, *([prop.opposite] if prop.opposite else [])]
        yield from (each.owner for each in others)


def description(prop: Property) -> list[str]:
    """The record of one property but for its lists, by the names of its fields and in their order."""
    fields: list[tuple[str, Optional[str]]] = [
        ("name", names.cpp_string(prop.name)),
        ("package", f"&{prop.type.package.function}"),
        ("typeIndex", str(prop.type.index)),
        ("documentation", names.cpp_string(prop.documentation) if prop.documentation else None),
        ("flags", f"{prop.flags:#04x}"),
        ("defaultValue", names.cpp_string(prop.default) if prop.default is not None else None),
        ("isPrivate", "1" if prop.private else None),
        ("lower", str(prop.lower)),
        ("upper", f"{prop.upper:#x}" if prop.upper == UNBOUNDED else str(prop.upper)),
        ("id", str(prop.id)),
        *_association(prop),
    ]
    return [f".{name} = {value}" for name, value in fields if value is not None]


def lists(prop: Property, redefined: str, subsetted: str) -> list[str]:
    """The last fields of the record: what the property redefines and subsets."""
    return [
        f".redefinedCount = {len(prop.redefines)}",
        f".redefined = {redefined}",
        f".subsettedCount = {len(prop.subsets)}",
        f".subsetted = {subsetted}",
    ]


def _association(prop: Property) -> Iterator[tuple[str, Optional[str]]]:
    if isinstance(prop.type, DataType):
        return
    yield "associationName", names.cpp_string(prop.association or "")
    far = prop.opposite
    if far is not None:
        yield "hasOpposite", "1"
        yield "oppositePackage", f"&{far.owner.package.function}"
        yield "oppositeClass", str(far.owner.index)
        yield "oppositeId", str(far.id)
    else:
        yield "otherEndName", names.cpp_string(prop.other_end or "")


def _member(prop: Property, verb: str) -> str:
    if verb in prop.without:
        return "nullptr"
    return f"&{prop.owner.interface}::{prop.operation_names[verb]}"


def _many(prop: Property) -> str:
    return f"QOB::reflective::Many<{prop.id}, {_member(prop, 'get')}, {_member(prop, 'getOnly')}>"


def _single(prop: Property) -> str:
    arguments = [str(prop.id), _member(prop, "get")]
    if prop.derived:
        if not prop.read_only:
            arguments += ["nullptr", _member(prop, "set")]
    else:
        has = "QOB::reflective::always" if prop.mandatory else _member(prop, "has")
        arguments += [has, _member(prop, "set"), _member(prop, "remove")]
        if prop.has_only_forms:
            arguments += [_member(prop, "setOnly"), _member(prop, "removeOnly")]
    return f"QOB::reflective::Single<{', '.join(arguments)}>"


def comments(cls: MetaClass) -> str:
    return ", ".join([*(names.cpp_string(text) for text in cls.documentation), "nullptr"])


def tags(package: Package) -> Iterator[tuple[str, int, str]]:
    """Every mark in the registry: the class's interface, the number of a property or 0, the mark."""
    for cls in package.listed_classes:
        for tag in cls.tags:
            yield cls.interface, 0, tag
        for prop in cls.properties:
            if prop.hidden:
                yield cls.interface, prop.id, HIDDEN


def sequence_names(cls: MetaClass) -> list[str]:
    """What is registered for a class: its iterators and sequences, by mutability."""
    both = (cls.immutable, cls.name)
    iterators = [f"{each}{word}" for word in ("ImmutableIterator", "Iterator") for each in both]
    sequences = [f"{word}Of{each}" for word in ("ImmutableSequence", "Sequence") for each in both]
    return [f"{cls.package.dotted}.{name}" for name in [*iterators, *sequences]]


def value_sequence_names(type_: DataType) -> list[str]:
    """The same for a data type, whose values have no immutable form of their own."""
    name = type_.name
    short = (f"{name}Iterator", f"{name}ImmutableIterator", f"SequenceOf{name}", f"ImmutableSequenceOf{name}")
    return [f"{type_.package.dotted}.{each}" for each in short]
