"""What the documentation of a handle reports about a property: everything that the model knows."""

from __future__ import annotations

from typing import Iterator

from .members import Property
from .model import DataType, MetaClass, Type, UNBOUNDED
from .operations import Operation

# How the documentation of an operation begins, by its verb.
_FORMS = {"get": "{}", "getOnly": "{}, this end alone", "set": "Sets {}"}


def of_handle(operation: Operation, handle: MetaClass) -> list[str]:
    """The documentation of an operation on handles of a class: the model's texts as they are, then
    the facts of the property that it reads or writes."""
    prop = operation.prop
    form = _FORMS.get(prop.verb_of(operation.name)) if prop is not None else None
    if form is None:
        return operation.documentation
    shown = _in_class(prop, handle)
    subject = form.format(f"`{shown.owner.name}.{shown.name}`")
    return [*operation.documentation, f"{subject}: {_facts(shown)}."]


def _in_class(prop: Property, cls: MetaClass) -> Property:
    """The property that stands in the place of another one in a class."""
    for candidate in cls.all_properties():
        if prop in candidate.redefines:
            return candidate
    return prop


def _facts(prop: Property) -> str:
    home = prop.owner.package
    upper = "*" if prop.upper == UNBOUNDED else prop.upper
    same = prop.type.package is home
    type_ = prop.type.name if same else prop.type.qualified.replace(".", "::")
    main = [type_, f"multiplicity {prop.lower}..{upper}", *_traits(prop)]
    parts = [", ".join(main)]
    if _has_unit(prop.type):
        parts.append(f"counted in {_one_of(prop.type.unit.literals)}")
    if prop.redefines:
        parts.append(f"redefines {_all(prop.redefines, prop)}")
    if prop.opposite is not None:
        parts.append(f"opposite {_all([prop.opposite], prop)}")
    return "; ".join(parts)


def _traits(prop: Property) -> Iterator[str]:
    if prop.default:
        yield f"default `{prop.default.replace('|', ' ') if _has_unit(prop.type) else prop.default}`"
    if prop.composite and prop.type.is_class:
        yield "owned"
    if prop.derived:
        yield "derived"
    if prop.read_only:
        yield "read-only"
    if prop.ordered:
        yield "ordered"
    if prop.multi_valued and not prop.unique:
        yield "values may repeat"


def _has_unit(type_: Type) -> bool:
    return isinstance(type_, DataType) and type_.unit is not None


def _all(properties: list[Property], seen_from: Property) -> str:
    home = seen_from.owner.package
    return ", ".join(
        f"`{p.owner.name}.{p.name}`" if p.owner.package is home else f"`{p.qualified}`"
        for p in properties
    )


def _one_of(words: list[str]) -> str:
    return f"{', '.join(words[:-1])} or {words[-1]}" if len(words) > 1 else words[0]
