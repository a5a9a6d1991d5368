"""Which operations each property gives to its class, and the order of a class's own block.

The order is binding: closed code is compiled against the table of virtual operations. What an
operation does is not told here but in the kernel's property headers; an operation only knows the
call of its rule (`QOB::property::<rule>`).
"""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from typing import Iterator, Optional

from .model import DataType, ExtraOperation, MetaClass, Parameter, Property, Type


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
    # The kernel header of the rule in `statement`.
    rule_header: Optional[str] = None
    prop: Optional[Property] = None
    # Whether it takes a deviant before its parameters.
    deviant: bool = True
    static: bool = False
    override: bool = False
    after_pair: bool = False
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
        return self.prop is not None and self.name == self.prop.getter and not self.prop.derived


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
    """What the class adds behind its base's block, in binding order, without its closing pair."""
    found: list[Operation] = []
    if declaring.factory:
        for created in declaring.package.created_classes:
            found.extend(_creating(declaring, created))
    for member in declaring.own_members:
        if isinstance(member, ExtraOperation):
            found.append(_extra(member))
        # The operations of a hand-written class are listed, its properties only referred to.
        elif declaring.package.generated:
            found.extend(_of_property(member))
    return found


def all_operations(of: MetaClass) -> list[Operation]:
    """Every operation that a caller finds on a handle of the class: bases first, each once."""
    found: list[Operation] = []
    for declaring in [*reversed(of.ancestors), of]:
        own = own_operations(declaring)
        found.extend(op for op in own if not op.override and not op.static)
    return found


def _creating(factory: MetaClass, created: MetaClass) -> Iterator[Operation]:
    """The pair of operations by which a factory makes one class: with its required values, bare."""
    for parameters in (created.creator_arguments_typed, []):
        values = "".join(f", {p.name}" for p in parameters)
        yield Operation(
            factory,
            f"create{created.name}",
            created.cpp,
            False,
            parameters,
            statement=f"return {created.cpp}::create(getModelQOB(deviant){values});",
            state_statement="return {};",
            types=[created, *created.creator_types],
        )


def root_getters(of: MetaClass) -> list[Operation]:
    """The reads of stored values that a root object answers by itself."""
    return [op for op in all_operations(of) if op.is_getter and op.statement is not None]


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
        types=extra.types,
    )


def _of_property(prop: Property) -> Iterator[Operation]:
    if prop.multi_valued:
        yield from _multi_valued(prop)
    elif prop.derived:
        yield from _derived(prop)
    else:
        yield from _single_valued(prop)


def _names(prop: Property) -> dict[str, str]:
    return {verb: verb + prop.stem for verb, *_ in _SINGLE} | {"get": prop.getter}


def _single_valued(prop: Property) -> Iterator[Operation]:
    shape = SHAPES.get(shape_name(prop))
    spelt = _names(prop)
    for verb, result, const, takes_value in _SINGLE:
        if verb.endswith("Only") and not prop.has_only_forms:
            continue
        operation = Operation(
            prop.owner,
            spelt[verb],
            result or prop.type.cpp,
            const,
            [Parameter(f"{prop.type.cpp} const&", "value")] if takes_value else [],
            [prop.documentation] if verb == "get" and prop.documentation else [],
            prop=prop,
            types=[prop.type],
        )
        if shape is not None:
            facts = _facts(prop)
            operation.rule_header = shape.header
            operation.statement = shape.statements[verb].format(**facts)
            operation.state_statement = shape.state_statements[verb].format(**facts)
        yield operation


def _facts(prop: Property) -> dict[str, str]:
    """What the statements of a shape are filled in with."""
    members = {verb: f"&{prop.owner.interface}::{name}" for verb, name in _names(prop).items()}
    return members | {
        "field": f"fields().{prop.field}",
        "flag": f"fields().{prop.has_flag}",
        "default": f"{prop.type.cpp}{{{prop.initial_value}}}",
    }


def flagged_properties(declaring: MetaClass) -> list[Property]:
    """The properties with a flag beside their value."""
    shaped = [(p, SHAPES.get(shape_name(p))) for p in declaring.properties]
    return [p for p, shape in shaped if shape is not None and shape.has_flag]


def state_headers(declaring: MetaClass) -> list[str]:
    """Where the rules stand that a state's operations call."""
    return sorted({SHAPES[shape_name(p)].header for p in flagged_properties(declaring)})


def assignment_headers(declaring: MetaClass) -> list[str]:
    """Where the rules of assignment_rules stand, and what calls them."""
    headers = {SHAPES[shape_name(p)].assignment_header for p in declaring.properties}
    return sorted(headers | {"qob/kernel/property/assign.h"})


def assignment_rules(declaring: MetaClass) -> str:
    """The rules that bring an object to another state's values, for the class's own block."""
    shaped = [(p, SHAPES[shape_name(p)]) for p in declaring.properties]
    return ", ".join(shape.assignment.format(**_facts(p)) for p, shape in shaped)


@dataclass(frozen=True)
class Shape:
    """How a property of one kind acts: a rule in a kernel header for each of its operations."""

    header: str
    statements: dict[str, str]
    state_statements: dict[str, str]
    # The rule that brings the property to the value of another state, and its header.
    assignment: str
    assignment_header: str = "qob/kernel/property/assign.h"
    # Whether a state has a field beside the value that says whether it is there.
    has_flag: bool = False


_PLAIN_STATE = {
    "has": "return true;",
    "remove": "",
    "set": "{field} = value;",
    "get": "return {field};",
    "removeOnly": "",
    "setOnly": "{field} = value;",
}

_OPTIONAL_STATE = {
    "has": "return {flag};",
    "remove": "QOB::property::clearFlagged({field}, {flag}, {default});",
    "set": "QOB::property::storeFlagged({field}, {flag}, value);",
    "get": "return {field};",
    "removeOnly": "QOB::property::clearFlagged({field}, {flag}, {default});",
    "setOnly": "QOB::property::storeFlagged({field}, {flag}, value);",
}

SHAPES = {
    "mandatory primitive": Shape(
        "qob/kernel/property/mandatoryvalue.h",
        {
            "has": "return true;",
            "remove": "",
            "set": "QOB::property::setMandatory<{get}, {set}>(this, deviant, value);",
            "get": "return QOB::property::get<{get}>(this, deviant);",
        },
        _PLAIN_STATE,
        "QOB::property::AssignMandatory<{get}, {set}>",
    ),
    "mandatory value": Shape(
        "qob/kernel/property/mandatoryvalue.h",
        {
            "has": "return true;",
            "remove": "",
            "set": "QOB::property::setMandatoryUnchecked<{get}, {set}>(this, deviant, value);",
            "get": "return QOB::property::get<{get}>(this, deviant);",
            "removeOnly": "",
            "setOnly": "QOB::property::setMandatoryUnchecked<{get}, {setOnly}>(this, deviant, value);",
        },
        _PLAIN_STATE,
        "QOB::property::AssignMandatory<{get}, {set}>",
    ),
    "optional primitive": Shape(
        "qob/kernel/property/flaggedvalue.h",
        {
            "has": "return QOB::property::get<{has}>(this, deviant);",
            "remove": "QOB::property::removeFlagged<{remove}>(this, deviant);",
            "set": "QOB::property::setFlagged<{has}, {get}, {set}, {remove}>(this, deviant, value);",
            "get": "return QOB::property::get<{get}>(this, deviant);",
        },
        _OPTIONAL_STATE,
        "QOB::property::AssignOptional<{has}, {get}, {set}, {remove}>",
        "qob/kernel/property/assignrules.h",
        has_flag=True,
    ),
    "optional value": Shape(
        "qob/kernel/property/flaggedvalue.h",
        {
            "has": "return QOB::property::get<{has}>(this, deviant);",
            "remove": "QOB::property::removeFlagged<{remove}>(this, deviant);",
            "set": "QOB::property::setFlaggedUnchecked<{has}, {get}, {set}>(this, deviant, value);",
            "get": "return QOB::property::get<{get}>(this, deviant);",
            "removeOnly": "QOB::property::removeFlagged<{removeOnly}>(this, deviant);",
            "setOnly": "QOB::property::setFlaggedUnchecked<{has}, {get}, {setOnly}>"
            "(this, deviant, value);",
        },
        _OPTIONAL_STATE,
        "QOB::property::AssignOptional<{has}, {get}, {set}, {remove}>",
        "qob/kernel/property/assignrules.h",
        has_flag=True,
    ),
}


def shape_name(prop: Property) -> str:
    if prop.derived:
        return "derived value"
    if prop.multi_valued:
        return "multi-valued property"
    if prop.type.is_primitive:
        return "mandatory primitive" if prop.mandatory else "optional primitive"
    if isinstance(prop.type, DataType):
        return "mandatory value" if prop.mandatory else "optional value"
    if prop.opposite is not None:
        return "reference with opposite"
    return "owned value" if prop.composite else "reference"


def _multi_valued(prop: Property) -> Iterator[Operation]:
    sequence = f"QOB::Sequence<{prop.type.cpp}>"
    for suffix in ("", "WithoutAssociation"):
        yield Operation(
            prop.owner,
            prop.getter + suffix,
            sequence,
            False,
            documentation=[prop.documentation] if prop.documentation and not suffix else [],
            prop=prop,
            types=[prop.type],
        )


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
