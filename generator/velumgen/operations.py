"""Which operations each property gives to its class, and the order of a class's own block.

The order is binding: closed code is compiled against the table of virtual operations. What an
operation does is not told here; shapes.py knows the call of its rule (`QOB::property::<rule>`).
"""

from __future__ import annotations

import re
from dataclasses import dataclass, field, replace
from typing import Iterator, Optional

from . import shapes
from .members import ExtraOperation, Parameter, Property
from .model import DataType, MetaClass, Type


@dataclass(eq=False)
class Operation:
    """One virtual operation, as every template lays it out."""

    owner: MetaClass
    name: str
    result: str
    const: bool
    parameters: list[Parameter] = field(default_factory=list)
    documentation: list[str] = field(default_factory=list)
    # The one statement of its body in the interface class and on a state; None is a body that is
    # written by hand, the empty text an operation that does nothing.
    statement: Optional[str] = None
    state_statement: Optional[str] = None
    # What a root object overrides it with.
    root_statement: Optional[str] = None
    prop: Optional[Property] = None
    # Whether it takes a deviant before its parameters.
    deviant: bool = True
    static: bool = False
    override: bool = False
    after_pair: bool = False
    # Whether it gives a sequence.
    sequence: bool = False
    # The operation of the interface class that a handle's calls, where that is another.
    called: str = ""
    # The types of the model that its result and parameters name.
    types: list[Type] = field(default_factory=list)

    @property
    def key(self) -> tuple[str, ...]:
        """What two operations of a class must not share."""
        return (self.name, *(p.type for p in self.parameters))

    @property
    def const_suffix(self) -> str:
        return " const" if self.const else ""

    @property
    def returns(self) -> str:
        """The word before a forwarded call."""
        return "" if self.result == "void" else "return "

    @property
    def declared_parameters(self) -> str:
        deviant = ["QOB::Deviant deviant"] if self.deviant else []
        return ", ".join([*deviant, *(f"{p.type} {p.name}" for p in self.parameters)])

    def used_parameters(self, statement: str) -> str:
        """The parameters of a body; those that its statement doesn't use have no name."""
        every = [Parameter("QOB::Deviant", "deviant")] if self.deviant else []
        every += self.parameters
        used = [p for p in every if re.search(rf"\b{p.name}\b", statement)]
        return ", ".join(f"{p.type} {p.name}" if p in used else p.type for p in every)

    @property
    def handle_parameters(self) -> str:
        return ", ".join(f"{p.type} {p.name}" for p in self.parameters)

    @property
    def arguments(self) -> str:
        """What a body passes on to one of the same form."""
        deviant = ["deviant"] if self.deviant else []
        return ", ".join([*deviant, *(p.name for p in self.parameters)])

    @property
    def declared_form(self) -> str:
        """The words behind the parameters in a declaration."""
        return self.const_suffix + (" override" if self.override else "")

    @property
    def declaring_word(self) -> str:
        """The word before a declaration in an interface class."""
        return "static " if self.static else "" if self.override else "virtual "

    @property
    def handle_arguments(self) -> str:
        """What a handle passes on: its deviant and what it was given."""
        deviant = ["getDeviant()"] if self.deviant else []
        return ", ".join([*deviant, *(p.name for p in self.parameters)])

    @property
    def is_getter(self) -> bool:
        """A read of one stored value: the root object answers it without a second virtual call."""
        single = self.prop is not None and not self.prop.multi_valued and not self.prop.derived
        return single and self.name == self.prop.getter


# How the operations of a single value are spelt: verb, result or none for the property's type,
# whether const, whether it takes a value.
_SINGLE = (
    ("has", "bool", True, False),
    ("remove", "void", False, False),
    ("set", "void", False, True),
    ("get", None, True, False),
    ("removeOnly", "void", False, False),
    ("setOnly", "void", False, True),
)


def own_operations(declaring: MetaClass) -> list[Operation]:
    """What the class adds behind its base's block, in binding order, without its closing pair, and
    what it overrides of its bases."""
    found: list[Operation] = []
    if declaring.factory:
        found.extend(_creating_all(declaring))
    for member in declaring.own_members:
        if isinstance(member, ExtraOperation):
            found.append(_extra(member))
        # The operations of a hand-written class are listed, its properties only referred to.
        elif declaring.generated:
            found.extend(_of_property(member))
    for prop in declaring.properties:
        found.extend(_redefining(prop))
    return found


def all_operations(of: MetaClass) -> list[Operation]:
    """Every operation that the handles of the class have of their own: bases first, each once.
    Those of hand-written classes come with the kernel's part of a handle."""
    found: list[Operation] = []
    for declaring in of.bases_first:
        own = own_operations(declaring) if declaring.generated else []
        found.extend(op for op in own if not op.override and not op.static)
    return found


def handle_operations(of: MetaClass) -> list[tuple[bool, Operation]]:
    """The operations of both handles, each with whether it is that of the one for reading."""
    found: list[tuple[bool, Operation]] = []
    for op in all_operations(of):
        if op.sequence and op.prop is not None and op.owner.package.reading_views:
            element = op.prop.type
            shown = element.cpp_immutable if isinstance(element, MetaClass) else element.cpp
            alone = op.prop.operation_names["getOnly"]
            reading = replace(op, result=f"QOB::ImmutableSequence<{shown}>", called=alone)
            found.extend([(True, reading), (False, op)])
        else:
            found.append((op.const, op))
    return found


def joined_operations(of: MetaClass) -> list[Operation]:
    """The operations of what two bases share, which the class hands on to its first base."""
    return [
        replace(
            op,
            owner=of,
            override=True,
            statement=f"{op.returns}{of.base.cpp_interface}::{op.name}({op.arguments});",
        )
        for declaring in of.shared_bases
        for op in own_operations(declaring)
        if not op.static and not op.override
    ]


def _creating_all(factory: MetaClass) -> Iterator[Operation]:
    for created in factory.package.created_classes:
        arguments, types = created.creator_arguments_typed, [created, *created.creator_types]
        make = f"return {created.cpp}::create(getModelQOB(deviant){{values}});"
        yield from _creating(factory, created, arguments, types, make)
    for value in factory.package.created_values:
        arguments = [Parameter(value.number.cpp, "value"), Parameter(value.unit.cpp, "unit")]
        make = f"return {value.cpp}({{bare_values}});"
        yield from _creating(factory, value, arguments, [value, value.unit], make)


def _creating(
    factory: MetaClass, created: Type, arguments: list[Parameter], types: list[Type], make: str
) -> Iterator[Operation]:
    """The pair of operations by which a factory makes one type: with its required values, bare."""
    for parameters in (arguments, []):
        bare_values = ", ".join(p.name for p in parameters)
        yield Operation(
            factory,
            f"create{created.name}",
            created.cpp,
            False,
            parameters,
            statement=make.format(
                values=f", {bare_values}" if parameters else "", bare_values=bare_values
            ),
            state_statement="return {};",
            types=types,
        )


def root_getters(of: MetaClass) -> list[Operation]:
    """The reads of stored values that a root object answers by itself."""
    return [op for op in all_operations(of) if op.is_getter and op.statement is not None]


def root_setters(of: MetaClass) -> list[Operation]:
    """The writes of stored values that a root object does by itself."""
    return [op for op in all_operations(of) if op.root_statement and not of.redefines(op.prop)]


def _extra(extra: ExtraOperation) -> Operation:
    return Operation(
        extra.owner,
        extra.name,
        extra.result,
        extra.const,
        extra.parameters,
        [extra.documentation] if extra.documentation else [],
        deviant=extra.deviant,
        state_statement="return {};" if extra.empty_on_state else None,
        static=extra.static,
        override=extra.override,
        after_pair=extra.after_pair,
        sequence="Sequence<" in extra.result,
        types=extra.types,
    )


def _of_property(prop: Property) -> Iterator[Operation]:
    if prop.multi_valued:
        yield from _multi_valued(prop)
    elif prop.derived:
        yield from _derived(prop)
    else:
        yield from _single_valued(prop)


def _ruled(prop: Property, verb: str, operation: Operation) -> Operation:
    """The operation with the statements of its property's kind."""
    shape = shapes.SHAPES.get(shapes.shape_name(prop))
    if shape is not None and verb in shape.statements:
        facts = shapes.facts(prop)
        if verb in shape.state_statements:
            operation.state_statement = shape.state_statements[verb].format(**facts)
        if verb in prop.by_hand:
            return operation
        operation.statement = shape.statements[verb].format(**facts)
        if verb in shape.root_statements:
            operation.root_statement = shape.root_statements[verb].format(**facts)
    return operation


def _single_valued(prop: Property) -> Iterator[Operation]:
    for verb, result, const, takes_value in _SINGLE:
        if verb.endswith("Only") and not prop.has_only_forms:
            continue
        operation = Operation(
            prop.owner,
            prop.operation_names[verb],
            result or prop.type.cpp,
            const,
            [Parameter(f"{prop.type.cpp} const&", "value")] if takes_value else [],
            [prop.documentation] if verb == "get" and prop.documentation else [],
            prop=prop,
            override=prop.overrides,
            types=[prop.type],
        )
        yield _ruled(prop, verb, operation)


def _multi_valued(prop: Property) -> Iterator[Operation]:
    for verb in ("get", "getOnly"):
        operation = Operation(
            prop.owner,
            prop.operation_names[verb],
            f"QOB::Sequence<{prop.type.cpp}>",
            verb == "getOnly" and prop.owner.package.const_views,
            documentation=[prop.documentation] if prop.documentation and verb == "get" else [],
            prop=prop,
            sequence=True,
            types=[prop.type],
        )
        yield _ruled(prop, verb, operation)


def _derived(prop: Property) -> Iterator[Operation]:
    if not prop.read_only:
        value = Parameter(f"{prop.type.cpp} const&", "value")
        yield Operation(prop.owner, prop.setter, "void", False, [value], prop=prop, types=[prop.type])
    yield Operation(
        prop.owner,
        prop.getter,
        prop.type.cpp,
        True,
        documentation=[prop.documentation] if prop.documentation else [],
        prop=prop,
        types=[prop.type],
    )


def _redefining(prop: Property) -> Iterator[Operation]:
    """The operations of a redefined property, handed on to those of the redefining one. A derived
    view needs none: it lists the redefining property among what it shows."""
    for redefined in prop.redefines:
        if not redefined.owner.generated or shapes.shape_name(redefined) == "derived view":
            continue
        for op in _of_property(redefined):
            verb = redefined.verb_of(op.name)
            yield replace(
                op,
                owner=prop.owner,
                override=True,
                documentation=[],
                statement=_handing_on(prop, redefined, verb, op),
                state_statement=None,
            )


def _handing_on(prop: Property, redefined: Property, verb: str, op: Operation) -> str:
    target = prop.operation_names[verb]
    if verb not in ("set", "setOnly") or prop.type is redefined.type:
        return f"{op.returns}{target}({op.arguments});"
    if redefined.opposite is not None:
        return (
            f"QOB::property::setNarrowed<{prop.type.cpp}, &{prop.owner.interface}::{target}>"
            f"(this, deviant, value, sIntrospectiveMethods, {prop.id});"
        )
    return f"{target}(deviant, {prop.type.cpp}(value));"


def state_operations(declaring: MetaClass) -> list[Operation]:
    """What the class overrides on a state. What it redefines is handed on there as well, in case
    the base's part of the state answers it."""
    found = []
    for op in own_operations(declaring):
        if op.state_statement is not None:
            found.append(op)
        elif op.override and op.prop is not None and shapes.is_stored(op.prop):
            found.append(replace(op, state_statement=op.statement))
    return found


def flagged_properties(declaring: MetaClass) -> list[Property]:
    """The properties with a flag beside their value."""
    return [p for p in declaring.properties if shapes.shape(p).has_flag]


def assignment_rules(declaring: MetaClass) -> str:
    """The rules that bring an object to another state's values, for the class's own block."""
    shaped = [(p, shapes.shape(p)) for p in declaring.properties]
    return ", ".join(s.assignment.format(**shapes.facts(p)) for p, s in shaped if s.assignment)
