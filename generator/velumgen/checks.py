"""The rules that hold between the parts of a loaded metamodel."""

from __future__ import annotations

import re
from typing import Iterator

from . import operations, shapes
from .faults import Fault
from .members import Property
from .model import DataType, MetaClass, Package


def check(package: Package) -> list[Fault]:
    causes = [*_order_of_creation(package), *_sum_causes(package)]
    faults = [Fault(package.file, place, cause) for place, cause in causes]
    found = {p: list(_property_causes(p)) for each in package.classes for p in each.properties}
    # The operations of a property follow from its ends, so they need sound ones.
    sound = not any(found.values())
    for each in package.classes:
        causes = [*_class_causes(each), *(_colliding_operations(each) if sound else ())]
        faults.extend(Fault(package.file, each.name, cause) for cause in causes)
        for prop in each.properties:
            place = f"{each.name}.{prop.name}"
            faults.extend(Fault(package.file, place, cause) for cause in found[prop])
    return faults


def _order_of_creation(package: Package) -> Iterator[tuple[str, str]]:
    # A hand-written package creates its classes by itself.
    if not package.generated:
        return
    created: list[MetaClass] = []
    for each in package.classes:
        for base in each.bases:
            if base.package is package and base not in created:
                yield each.name, f"Base {base.name} stands behind it, so it would be created too late."
        created.append(each)


def _sum_causes(package: Package) -> Iterator[tuple[str, str]]:
    properties = [p for each in package.classes for p in each.properties]
    hidden = [p for p in properties if p.hidden]
    counted = {
        "classes": len(package.classes),
        "data_types": len(package.data_types),
        "properties": len(properties),
        "hidden": len(hidden),
        "shown": len(properties) - len(hidden),
        "repeating": len([p for p in properties if not p.unique]),
    }
    for name, expected in package.sums.items():
        if counted[name] != expected:
            yield "package", f'Sum "{name}" is {expected}, but the file has {counted[name]}.'


def _class_causes(each: MetaClass) -> Iterator[str]:
    # What is imported from a hand-written package names only what others refer to.
    if each.package.generated:
        for number, prop in enumerate(each.properties, start=1):
            if prop.id != number:
                yield f"Property {prop.name} has id ({prop.id}) where {number} follows."
    known: set[str] = set()
    for prop in each.properties:
        if prop.name in known:
            yield f"Two properties have the name {prop.name}."
        known.add(prop.name)
    yield from _order_causes(each) if each.order else ()
    if each.abstract and each.creator_arguments:
        yield "An abstract class has no creators, so it has no creator arguments."
    for argument in each.creator_arguments:
        if argument.multi_valued or argument.derived:
            yield f"Creator argument {argument.name} is multi-valued or derived: it has no setter."


def _order_causes(each: MetaClass) -> Iterator[str]:
    members = [m.name for m in [*each.extra_operations, *each.properties]]
    for name in members:
        if each.order.count(name) != 1:
            yield f'The order names "{name}" ({each.order.count(name)}) times, not once.'
    for name in each.order:
        if name not in members:
            yield f'The order names "{name}", which is no property or operation of the class.'


def _colliding_operations(each: MetaClass) -> Iterator[str]:
    """Two properties whose operations would share a name and parameters."""
    if each.order and list(_order_causes(each)):
        return
    inherited = {
        operation.key: declaring
        for declaring in reversed(each.ancestors)
        for operation in operations.own_operations(declaring)
    }
    own: set[str] = set()
    for operation in operations.own_operations(each):
        if operation.override:
            if operation.key not in inherited:
                yield f"Operation {operation.name} overrides none of a base."
            continue
        if operation.key in own:
            yield f"Operation {operation.name} stands twice in the class."
        elif operation.key in inherited:
            base = inherited[operation.key]
            yield f"Operation {operation.name} is also one of {base.qualified} and redefines nothing."
        own.add(operation.key)


def _property_causes(each: Property) -> Iterator[str]:
    if not each.multi_valued:
        if each.ordered:
            yield 'Flag "ordered" needs a multiplicity above 1.'
        if not each.unique:
            yield 'Flag "non-unique" needs a multiplicity above 1.'
        if each.plural is not None:
            yield "A plural needs a multiplicity above 1."
    if each.derived and each.default is not None:
        yield "A derived property stores nothing, so it has no default."
    yield from _default_causes(each)
    wrong_ends = list(_association_causes(each))
    yield from wrong_ends
    if each.owner.generated and not wrong_ends:
        yield from _shape_causes(each)
    if each.without and each.owner.generated:
        yield "Operations are left out of hand-written classes only."
    if each.part and each.owner.generated:
        yield "How it contains objects follows from its kind; a rule is for hand-written classes."
    if each.overrides and not each.redefines:
        yield "It takes the place of a base's operations, and redefines no property of a base."
    for other in each.redefines:
        if other.owner not in each.owner.ancestors:
            yield f"It redefines {other.qualified}, which is no property of a base."
        elif not _conforms(each, other):
            yield f"Its type is not that of the redefined {other.qualified}, nor derived from it."
    for other in each.subsets:
        if not each.owner.is_a(other.owner):
            yield f"It subsets {other.qualified}, which is no property of the class or a base."


def _shape_causes(each: Property) -> Iterator[str]:
    shape = shapes.shape_name(each)
    if shape not in shapes.SHAPES:
        yield f"It is a {shape}, for which there are no rules."
    elif shape == "owned objects" and shapes.far_end(each) is None:
        yield "It owns its values, and the root of its classes has no ContainerQOB for their end."
    for other in each.redefines:
        if not other.multi_valued and other.owner in _only_behind_a_second_base(each.owner):
            # An override there would add a virtual operation and shift all that follow.
            yield f"It redefines {other.qualified}, which is reached by a second base only."


def _only_behind_a_second_base(of: MetaClass) -> list[MetaClass]:
    return [c for c in of.ancestors if c not in of.first_path]


def _conforms(each: Property, other: Property) -> bool:
    if each.type is other.type:
        return True
    both = isinstance(each.type, MetaClass) and isinstance(other.type, MetaClass)
    return both and each.type.is_a(other.type)


def _association_causes(each: Property) -> Iterator[str]:
    if isinstance(each.type, DataType):
        for key in ("opposite", "association", "other_end"):
            if getattr(each, key) is not None:
                yield f"Its type is a data type, so it has no {key}."
        return
    other = each.opposite
    if other is None:
        return
    if each.other_end is not None:
        yield "It has an opposite, so the other end has that property's name."
    if other.opposite is not each:
        back = other.opposite.qualified if other.opposite else "no property"
        yield f"Its opposite {other.qualified} points at {back}, not back at it."
        return
    if other.type is not each.owner:
        yield f"Its opposite {other.qualified} has type {other.type.qualified}, not {each.owner.qualified}."
    if each.type is not other.owner:
        yield f"Its opposite {other.qualified} belongs to another class than its type {each.type.qualified}."
    if other.association != each.association:
        yield (
            f"Its association ({each.association}) is not that of its opposite "
            f"{other.qualified} ({other.association})."
        )
    if each.composite and other.multi_valued:
        yield f"It is composite, so its opposite {other.qualified} has at most one value."
    if each.composite and other.composite:
        yield f"It and its opposite {other.qualified} are both composite."


def _default_causes(each: Property) -> Iterator[str]:
    text = each.default
    if text is None:
        return
    if isinstance(each.type, MetaClass):
        yield f'Default ("{text}") on a reference; only values have defaults.'
        return
    expected = _expected_default(each.type, text)
    if expected is not None:
        yield f'Default ("{text}") is no {each.type.qualified}: {expected}.'


def _expected_default(type_: DataType, text: str) -> str | None:
    """What a default of this type looks like, or nothing if `text` is one."""
    if type_.kind == "boolean":
        return None if text in ("true", "false") else "expected is true or false"
    if type_.kind == "integer":
        # The most negative number is the pattern of the invalid value.
        fits = re.fullmatch(r"-?[0-9]{1,10}", text) and -(2**31) < int(text) < 2**31
        return None if fits else "expected is a whole number of 32 bits"
    if type_.kind == "real":
        fits = re.fullmatch(r"-?[0-9]+(\.[0-9]+)?([eE][-+]?[0-9]+)?", text)
        return None if fits else "expected is a decimal number"
    if type_.kind == "enumeration":
        known = ", ".join(type_.literals)
        return None if text in type_.literals else f"expected is one of {known}"
    if type_.kind == "value":
        number, bar, unit = text.partition("|")
        literals = type_.unit.literals if type_.unit else []
        fits = bar and re.fullmatch(r"-?[0-9]+", number) and unit in literals
        known = ", ".join(literals)
        return None if fits else f"expected is a whole number, a bar and one of {known}"
    return None
