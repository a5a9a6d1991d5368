"""What each generated file must include and declare."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Iterable

from . import operations, shapes, tables
from .members import Property
from .model import MetaClass, Type


@dataclass(frozen=True)
class Names:
    """Headers to include, and classes to declare by namespace because headers would be circular."""

    headers: list[str] = field(default_factory=list)
    declarations: list[tuple[str, list[str]]] = field(default_factory=list)


SEQUENCE_HEADER = "qob/qob/sequence.h"


def of_handle(cls: MetaClass) -> Names:
    """The declarations of a handle: values in full, other generated handles by name only."""
    every = operations.all_operations(cls)
    types = _types(every)
    types += [t for t in cls.creator_types if t not in types]
    return _names(types, cls, operations.own_operations(cls) + every)


def of_interface(cls: MetaClass) -> Names:
    own = operations.own_operations(cls)
    return _names(_types(own), cls, own)


def of_inline(cls: MetaClass) -> list[str]:
    """What the bodies of a handle's members need beside its own declarations."""
    handles = [t for t in _types(operations.all_operations(cls)) if _is_generated_handle(t)]
    # The bases' handles too: what converts to them should be seen to.
    handles += cls.bases
    # Whether one sequence can be shown as another is asked of the interface classes.
    shown = {op.prop.type.intf_header for op in _reading_views(cls) if op.prop.type.is_class}
    return sorted({cls.intf_header, *shown, *(t.handle_header for t in handles if t is not cls)})


def of_bodies(cls: MetaClass) -> list[str]:
    """What the bodies of an interface class need: the handles that its operations name."""
    own = operations.own_operations(cls) + operations.joined_operations(cls)
    handles = [t for t in _types(own) if _is_generated_handle(t)]
    return sorted({cls.handle_header, *(t.handle_header for t in handles)})


def of_state(cls: MetaClass) -> list[str]:
    """What the fields of a class's own block and its operations on a state name."""
    on_state = operations.state_operations(cls)
    return sorted({_header(t) for t in [*_types(on_state), *(p.type for p in cls.properties)]})


def of_states(cls: MetaClass) -> list[str]:
    """The headers with the fields and mixins that a state class is made of."""
    return sorted({c.fields_header for c in cls.state_classes})


def of_root(cls: MetaClass) -> list[str]:
    """What the root object's getters return, and what it contains and is linked to."""
    types = [p.type for p in cls.all_properties()]
    return sorted({t.handle_header for t in types if isinstance(t, MetaClass)})


def of_tables(cls: MetaClass) -> list[str]:
    """What the table of a class's properties names: their handles and the packages of others."""
    packages = {cls.package, *(each.package for each in tables.named_types(cls))}
    handles = {p.type.handle_header for p in cls.properties if isinstance(p.type, MetaClass)}
    return sorted({cls.handle_header, *handles, *(p.introspection_header for p in packages)})


def stored_properties(cls: MetaClass) -> list[Property]:
    return [p for p in cls.properties if shapes.is_stored(p)]


def _names(
    types: Iterable[Type], cls: MetaClass, laid_out: Iterable[operations.Operation]
) -> Names:
    headers = {_header(t) for t in types if not _is_generated_handle(t)}
    if any(operation.sequence for operation in laid_out):
        headers.add(SEQUENCE_HEADER)
    declared: dict[str, set[str]] = {}
    for each in types:
        if _is_generated_handle(each) and each is not cls:
            declared.setdefault(each.package.namespace, set()).add(each.name)
    return Names(
        sorted(headers), [(namespace, sorted(names)) for namespace, names in sorted(declared.items())]
    )


def _reading_views(cls: MetaClass) -> list[operations.Operation]:
    return [op for reading, op in operations.handle_operations(cls) if reading and op.called]


def _types(of: Iterable[operations.Operation]) -> list[Type]:
    found: list[Type] = []
    for operation in of:
        found.extend(t for t in operation.types if t not in found)
    return found


def _is_generated_handle(type_: Type) -> bool:
    return isinstance(type_, MetaClass) and type_.generated


def _header(type_: Type) -> str:
    return type_.handle_header if isinstance(type_, MetaClass) else type_.value_header
