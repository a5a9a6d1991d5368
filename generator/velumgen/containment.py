"""What an object of a class contains and what it is linked to, as lists of kernel rules."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Iterator

from . import names, shapes
from .members import Property
from .model import MetaClass


@dataclass(frozen=True)
class View:
    """A derived property that shows the objects of others, on the root object of one class."""

    prop: Property
    # The rules of the properties that it shows, bases first, single values last.
    parts: str

    @property
    def name(self) -> str:
        return names.capitalized(self.prop.name)

    @property
    def getter(self) -> str:
        return self.prop.operation_names["get"]

    @property
    def getter_of_one_end(self) -> str:
        return self.prop.operation_names["getOnly"]

    @property
    def element(self) -> str:
        return self.prop.type.cpp

    @property
    def result(self) -> str:
        return f"QOB::Sequence<{self.element}>"

    @property
    def const_suffix(self) -> str:
        return " const" if self.prop.owner.package.const_views else ""


def views(of: MetaClass) -> list[View]:
    return [View(prop, _parts(_shown_by(prop, of))) for prop in _view_properties(of)]


def contained(of: MetaClass) -> str:
    """Everything that an object of the class contains."""
    return _parts([p for p in _valid_properties(of) if _is_containment(p)])


def links(of: MetaClass) -> str:
    """What destruction cuts, nearest class first."""
    linked = [p for p in of.all_properties() if p.owner.generated and not of.redefines(p)]
    rules = [shapes.shape(p).link.format(**shapes.facts(p)) for p in linked if shapes.shape(p).link]
    return ", ".join(rules)


def _view_properties(of: MetaClass) -> Iterator[Property]:
    for declaring in of.bases_first:
        for prop in declaring.properties:
            if prop.multi_valued and prop.derived:
                yield prop


def _valid_properties(of: MetaClass) -> list[Property]:
    return [p for c in of.bases_first for p in c.properties if not of.redefines(p)]


def _is_containment(prop: Property) -> bool:
    return bool(prop.part) or (prop.owner.generated and shapes.shape(prop).part is not None)


def _shown_by(view: Property, of: MetaClass) -> list[Property]:
    return [p for p in _valid_properties(of) if _is_containment(p) and comes_down_to(p, view)]


def comes_down_to(prop: Property, view: Property) -> bool:
    """Whether a property is the view, or a part of it by what it subsets and redefines."""
    wider = [*prop.subsets, *prop.redefines]
    return prop is view or any(comes_down_to(each, view) for each in wider)


def _parts(properties: list[Property]) -> str:
    # Single values stand behind all lists.
    ordered = sorted(properties, key=lambda p: not p.multi_valued)
    rules = (p.part or shapes.shape(p).part.format(**shapes.facts(p)) for p in ordered)
    return f"QOB::property::Parts<{', '.join(rules)}>"
