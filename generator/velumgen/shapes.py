"""What kinds of property there are, and the call of a kernel rule behind each of their operations.

A rule stands in a header of `qob/kernel/property/`; here is only which one a kind uses and with what
it is called. Statements are filled in with the facts of a property (`facts`).
"""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Optional

from .members import Property
from .model import DataType, MetaClass


@dataclass(frozen=True)
class Shape:
    """How properties of one kind act. Operations are named by their verbs."""

    # The statement of an operation in the interface class, and on a state where that is another.
    statements: dict[str, str] = field(default_factory=dict)
    state_statements: dict[str, str] = field(default_factory=dict)
    # What a root object does instead, where it is quicker with the field at hand.
    root_statements: dict[str, str] = field(default_factory=dict)
    # The rule that brings the property to the value of another state.
    assignment: Optional[str] = None
    # The field of a state; none if the property is not stored.
    field_type: Optional[str] = None
    # Whether a state has a field beside the value that says whether it is there.
    has_flag: bool = False
    # How the property contains objects, or which link destruction cuts.
    part: Optional[str] = None
    link: Optional[str] = None


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
    "remove": "QOB::property::clearOptional({field}, {flag}, {default});",
    "set": "QOB::property::storeOptional({field}, {flag}, value);",
    "get": "return {field};",
    "removeOnly": "QOB::property::clearOptional({field}, {flag}, {default});",
    "setOnly": "QOB::property::storeOptional({field}, {flag}, value);",
}

_REFERENCE_STATE = {
    "has": "return bool({field});",
    "remove": "{field} = {{}};",
    "set": "{field} = QOB::CountedPointer(value.get());",
    "get": "return {{QOB::ofClass, {field}.get(), deviant}};",
    "removeOnly": "{field} = {{}};",
    "setOnly": "{field} = QOB::CountedPointer(value.get());",
}

_LIST_STATE = {
    "get": "return QOB::property::readList<{type}>({field}, deviant);",
    "getOnly": "return QOB::property::writeList<{type}>({field}, deviant);",
}

_GET = "return QOB::property::get<{get}>(this, deviant);"
_HAS_REFERENCE = "return QOB::property::hasReference<{has}, {get}>(this, deviant);"
_REMOVE_ONLY = (
    "QOB::property::removeOnlyReference<{get}, {set}>(this, deviant, sIntrospectiveMethods, {id});"
)
_SET_ONLY = (
    "QOB::property::setOnlyReference<{get}, {set}>"
    "(this, deviant, value, sIntrospectiveMethods, {id});"
)
_ELEMENTS = "return QOB::property::elements<{type}>(this, deviant, sIntrospectiveMethods, {id});"
_ELEMENTS_WITH_OWNER = (
    "return QOB::property::elementsWithOwner<{type}>(this, deviant, sIntrospectiveMethods, {id}, "
    "{far_interface}::sIntrospectiveMethods, {far_id});"
)

_ASSIGN_MANDATORY = "QOB::property::AssignMandatory<{get}, {set}>"
_ASSIGN_OPTIONAL = "QOB::property::AssignOptional<{has}, {get}, {set}, {remove}>"
_ASSIGN_REFERENCE = "QOB::property::AssignReference<{has}, {get}, {set}, {remove}>"
# A property that is part of a wider one is assigned alone: the wider one has its own assignment.
_ASSIGN_ALONE = "QOB::property::AssignReference<{has}, {get}, {setOnly}, {removeOnly}>"
_ASSIGN_OBJECTS = "QOB::property::AssignObjects<{get}, {getOnly}>"

_POINTER = "QOB::CountedPointer<{type_interface}>"
_LIST = "QOB::SequenceMember<{container}>"

_REFERS_TO_ONE = "QOB::property::RefersToOne<{interface}::sIntrospectiveMethods, {id}, {get_named}>"


def _mandatory(rule: str, with_only: bool) -> Shape:
    by_operations = f"QOB::property::{rule}<{{get}}, %s>(this, deviant, value);"
    in_field = f"QOB::property::{rule}<QOB::property::InField<{{stored}}>>(this, deviant, value);"
    statements = {
        "has": "return true;",
        "remove": "",
        "set": by_operations % "{set}",
        "get": _GET,
    }
    root_statements = {"set": in_field}
    if with_only:
        statements["removeOnly"] = ""
        statements["setOnly"] = by_operations % "{setOnly}"
        root_statements["setOnly"] = in_field
    return Shape(
        statements,
        _PLAIN_STATE,
        root_statements=root_statements,
        assignment=_ASSIGN_MANDATORY,
        field_type="{type}",
    )


def _optional(with_only: bool) -> Shape:
    remove = "QOB::property::removeOptional<{has}, {remove}>(this, deviant);"
    statements = {"has": "return QOB::property::get<{has}>(this, deviant);", "get": _GET, "remove": remove}
    if with_only:
        rule = "QOB::property::setOptionalAsGiven<{has}, {get}, "
        statements["set"] = rule + "{set}>(this, deviant, value);"
        statements["setOnly"] = rule + "{setOnly}>(this, deviant, value);"
        statements["removeOnly"] = remove.replace("{remove}", "{removeOnly}")
    else:
        statements["set"] = (
            "QOB::property::setOptional<{has}, {get}, {set}, {remove}>(this, deviant, value);"
        )
    return Shape(
        statements,
        _OPTIONAL_STATE,
        assignment=_ASSIGN_OPTIONAL,
        field_type="{type}",
        has_flag=True,
    )


def _reference(
    link: Optional[str],
    part: Optional[str],
    assignment: str = _ASSIGN_REFERENCE,
    **statements: str,
) -> Shape:
    common = {"has": _HAS_REFERENCE, "get": _GET, "removeOnly": _REMOVE_ONLY, "setOnly": _SET_ONLY}
    return Shape(
        common | statements,
        _REFERENCE_STATE,
        assignment=assignment,
        field_type=_POINTER,
        part=part,
        link=link,
    )


def _owner(end: str) -> Shape:
    return Shape(
        {
            "has": "return {getter}(deviant).isValid();",
            "remove": f"QOB::property::removeOwner<{end}, {{type}}>(this, deviant);",
            "set": f"QOB::property::setOwner<{end}, {{setOnly}}>"
            "(this, deviant, value, sIntrospectiveMethods, {id});",
            "get": "return QOB::property::getOwner<{type}>(this, deviant);",
            "removeOnly": "removeOnlyContainerQOB(deviant);",
            "setOnly": f"QOB::property::setOnlyOwner<{end}, {{remove}}>"
            "(this, deviant, value, sIntrospectiveMethods, {id});",
        },
    )


def _list(get: str, assignment: str, part: Optional[str] = None, link: Optional[str] = None) -> Shape:
    return Shape(
        {"get": get, "getOnly": _ELEMENTS},
        _LIST_STATE,
        assignment=assignment,
        field_type=_LIST,
        part=part,
        link=link,
    )


_FAR_MANY = "QOB::property::ManyAtOtherEnd<{far_get}, {far_getOnly}>"
_OWNS_MANY = "QOB::property::OwnsMany<{get_named}, {getOnly_named}>"

SHAPES = {
    "mandatory primitive": _mandatory("setMandatory", False),
    "mandatory value": _mandatory("setMandatoryAsGiven", True),
    "optional primitive": _optional(False),
    "optional value": _optional(True),
    "reference": _reference(
        _REFERS_TO_ONE,
        None,
        set="QOB::property::setReference<{get}, {set}, {remove}>"
        "(this, deviant, value, sIntrospectiveMethods, {id});",
        remove="{removeOnly_name}(deviant);",
    ),
    "subsetting reference": _reference(
        _REFERS_TO_ONE,
        None,
        _ASSIGN_ALONE,
        set="QOB::property::setSubsetting<{get}, {set}, {remove}, {wider_get}, {wider_far_setOnly}>"
        "(this, deviant, value, sIntrospectiveMethods, {id});",
        remove="{removeOnly_name}(deviant);",
    ),
    "linked reference": _reference(
        "QOB::property::LinkedToOne<{interface}::sIntrospectiveMethods, {id}, {get_named}, "
        "{set_named}, " + _FAR_MANY + ">",
        None,
        set="QOB::property::setLinked<{get}, {set}, {remove}, " + _FAR_MANY + ">"
        "(this, deviant, value, sIntrospectiveMethods, {id});",
        setOnly="QOB::property::setOnlyLinked<{get}, {set}, " + _FAR_MANY + ">"
        "(this, deviant, value, sIntrospectiveMethods, {id});",
        remove="QOB::property::removeLinked<{get}, {set}, " + _FAR_MANY + ">"
        "(this, deviant, sIntrospectiveMethods, {id});",
    ),
    "owned value": _reference(
        None,
        "QOB::property::OwnsOne<{interface}::sIntrospectiveMethods, {id}, {get_named}>",
        set="QOB::property::setOwnedValue<{get}, {set}, {remove}>"
        "(this, deviant, value, sIntrospectiveMethods, {id});",
        setOnly="QOB::property::setOnlyOwnedValue<{get}, {set}>"
        "(this, deviant, value, sIntrospectiveMethods, {id});",
        remove="QOB::property::removeOwnedValue<{get}, {set}>"
        "(this, deviant, sIntrospectiveMethods, {id});",
    ),
    "owner": _owner(_FAR_MANY),
    "owner by a derived end": _owner("QOB::property::DerivedOtherEnd"),
    "values": _list(_ELEMENTS, "QOB::property::AssignValues<{get}, {getOnly}>"),
    "references": _list(
        _ELEMENTS,
        _ASSIGN_OBJECTS,
        link="QOB::property::RefersToMany<{interface}::sIntrospectiveMethods, {id}, {get_named}>",
    ),
    "linked references": _list(
        _ELEMENTS_WITH_OWNER,
        _ASSIGN_OBJECTS,
        link="QOB::property::LinkedToMany<{get_named}, {far_removeOnly}>",
    ),
    "owned objects": _list(_ELEMENTS_WITH_OWNER, _ASSIGN_OBJECTS, part=_OWNS_MANY),
    # Shows other properties: a root object overrides its getters with the list of those.
    "derived view": Shape(
        {
            "get": "return QOB::property::noElements<{type}>(deviant);",
            "getOnly": "return QOB::property::noElements<{type}>(deviant);",
        },
    ),
    # Computed by code that is written by hand.
    "derived value": Shape(),
}


def shape_name(prop: Property) -> str:
    """The kind of a property: a name in SHAPES, or of a kind that has no rules."""
    if prop.derived:
        return "derived view" if prop.multi_valued else "derived value"
    if isinstance(prop.type, DataType):
        if prop.multi_valued:
            return "values"
        strength = "mandatory" if prop.mandatory else "optional"
        return f"{strength} {'primitive' if prop.type.is_primitive else 'value'}"
    far = prop.opposite
    if prop.multi_valued:
        if prop.composite:
            return "owned objects"
        if far is None:
            return "references"
        return "many-to-many association" if far.multi_valued else "linked references"
    if far is not None and not far.multi_valued:
        return "one-to-one association"
    if far is not None and far.composite:
        return "owner by a derived end" if far.derived else "owner"
    if far is not None:
        return "linked reference"
    if prop.composite:
        return "owned value"
    return "subsetting reference" if wider_end(prop) is not None else "reference"


def shape(prop: Property) -> Shape:
    return SHAPES[shape_name(prop)]


def is_stored(prop: Property) -> bool:
    return shape(prop).field_type is not None


def wider_end(prop: Property) -> Optional[Property]:
    """The association end of the same class of which a single reference is a subset."""
    wider = (s for s in prop.subsets if s.owner is prop.owner and s.multi_valued)
    return next((s for s in wider if s.opposite is not None), None)


def far_end(prop: Property) -> Optional[Property]:
    """The other end that a property is kept in step with; the container's, where none is named."""
    if prop.opposite is not None:
        return prop.opposite
    if not (prop.composite and prop.multi_valued and prop.type.is_class):
        return None
    redefined = (r.opposite for r in prop.redefines if r.opposite is not None and not r.derived)
    return next(redefined, None) or _container(prop.owner)


def _container(of: MetaClass) -> Optional[Property]:
    root = [of, *of.first_path][-1]
    return root.find_property("ContainerQOB")


def facts(prop: Property) -> dict[str, str]:
    """What the statements of a shape are filled in with."""
    own = prop.owner.interface
    names = prop.operation_names
    found = {verb: f"&{own}::{name}" for verb, name in names.items()}
    found |= {f"{verb}_name": name for verb, name in names.items()}
    found |= {f"{verb}_named": f"&{prop.owner.cpp_interface}::{name}" for verb, name in names.items()}
    found |= {
        "id": str(prop.id),
        "getter": prop.getter,
        "type": prop.type.cpp,
        "interface": prop.owner.cpp_interface,
        "field": f"fields().{prop.field}",
        "stored": f"&{prop.owner.cpp_fields}::{prop.field}",
        "flag": f"fields().{prop.has_flag}",
        "default": f"{prop.type.cpp}{{{prop.initial_value}}}",
        "container": prop.container,
    }
    if isinstance(prop.type, MetaClass):
        found["type_interface"] = prop.type.cpp_interface
    if (far := far_end(prop)) is not None:
        found |= {"far_interface": far.owner.cpp_interface, "far_id": str(far.id)}
        found |= {
            f"far_{verb}": f"&{far.owner.cpp_interface}::{name}"
            for verb, name in far.operation_names.items()
        }
    if (wider := wider_end(prop)) is not None:
        found["wider_get"] = f"&{own}::{wider.getter}"
        far = wider.opposite
        setter = far.operation_names["setOnly"]
        found["wider_far_setOnly"] = f"&{far.owner.cpp_interface}::{setter}"
    return found


def field_type(prop: Property) -> str:
    return shape(prop).field_type.format(**facts(prop))
