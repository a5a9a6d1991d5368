"""The keys of a metamodel file: which exist, which must be there, what type each has."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Callable

from . import names

TEXT = "a text"
NUMBER = "a number"
SWITCH = "true or false"
TEXTS = "a list of texts"
TEXT_OR_TEXTS = "a text or a list of texts"
TABLE = "a table"
TABLES = "a list of tables"


def _is_texts(value: Any) -> bool:
    return isinstance(value, list) and all(isinstance(item, str) for item in value)


_FITS: dict[str, Callable[[Any], bool]] = {
    TEXT: lambda value: isinstance(value, str),
    NUMBER: lambda value: isinstance(value, int) and not isinstance(value, bool),
    SWITCH: lambda value: isinstance(value, bool),
    TEXTS: _is_texts,
    TEXT_OR_TEXTS: lambda value: isinstance(value, str) or _is_texts(value),
    TABLE: lambda value: isinstance(value, dict),
    TABLES: lambda value: isinstance(value, list) and all(isinstance(v, dict) for v in value),
}


def fits(type_: str, value: Any) -> bool:
    return _FITS[type_](value)


@dataclass(frozen=True)
class Key:
    type: str
    required: bool = False


FILE = {
    "package": Key(TABLE, required=True),
    "data_type": Key(TABLES),
    "class": Key(TABLES),
}

PACKAGE = {
    "name": Key(TEXT, required=True),
    "namespace": Key(TEXT, required=True),
    "documentation": Key(TEXT),
    "imports": Key(TEXTS),
    "sums": Key(TABLE),
    "generated": Key(SWITCH),
    "export_macro": Key(TEXT),
    "export_header": Key(TEXT),
    "include": Key(TEXT),
    "public_root": Key(TEXT),
    "private_root": Key(TEXT),
    "names_handles": Key(SWITCH),
    "visitation_domain": Key(TEXT),
    "visitation_header": Key(TEXT),
    "module": Key(TEXT),
    "module_header": Key(TEXT),
    "registry_parent": Key(TEXT),
    "registry_parent_header": Key(TEXT),
    "describes_registry": Key(SWITCH),
    "file_prefix": Key(TEXT),
    "const_views": Key(SWITCH),
    "reading_views": Key(SWITCH),
}

# What a package must say before C++ can be laid out for it.
GENERATED_PACKAGE = (
    "export_macro",
    "export_header",
    "include",
    "public_root",
    "private_root",
    "visitation_domain",
    "visitation_header",
)

DATA_TYPE = {
    "name": Key(TEXT, required=True),
    "index": Key(NUMBER),
    "kind": Key(TEXT, required=True),
    "header": Key(TEXT),
    "literals": Key(TEXTS),
    "number": Key(TEXT),
    "unit": Key(TEXT),
    "documentation": Key(TEXT_OR_TEXTS),
}

CLASS = {
    "name": Key(TEXT, required=True),
    "index": Key(NUMBER),
    "base": Key(TEXT_OR_TEXTS),
    "generated": Key(SWITCH),
    "abstract": Key(SWITCH),
    "documentation": Key(TEXT_OR_TEXTS),
    "order": Key(TEXTS),
    "creator": Key(TEXTS),
    "tags": Key(TEXTS),
    "header": Key(TEXT),
    "interface_header": Key(TEXT),
    "state_class": Key(TEXT),
    "fields_struct": Key(TEXT),
    "state_header": Key(TEXT),
    "constructed_by_hand": Key(SWITCH),
    "factory": Key(SWITCH),
    "headers": Key(TEXTS),
    "companions": Key(TEXTS),
    "handle_mixin": Key(TEXT),
    "root_mixin": Key(TEXT),
    "root_mixin_header": Key(TEXT),
    "operation": Key(TABLES),
    "property": Key(TABLES),
}

OPERATION = {
    "name": Key(TEXT, required=True),
    "result": Key(TEXT),
    "const": Key(SWITCH),
    "deviant": Key(SWITCH),
    "static": Key(SWITCH),
    "override": Key(SWITCH),
    "after_pair": Key(SWITCH),
    "empty_on_state": Key(SWITCH),
    "parameters": Key(TEXTS),
    "documentation": Key(TEXT),
}

PROPERTY = {
    "id": Key(NUMBER, required=True),
    "name": Key(TEXT, required=True),
    "type": Key(TEXT, required=True),
    "multiplicity": Key(TEXT, required=True),
    "default": Key(TEXT),
    "flags": Key(TEXTS),
    "opposite": Key(TEXT),
    "association": Key(TEXT),
    "other_end": Key(TEXT),
    "redefines": Key(TEXTS),
    "subsets": Key(TEXTS),
    "hidden": Key(SWITCH),
    "private": Key(SWITCH),
    "plural": Key(TEXT),
    "documentation": Key(TEXT),
    "part": Key(TEXT),
    "without": Key(TEXTS),
    "by_hand": Key(TEXTS),
    "overrides": Key(SWITCH),
}

# What `without` and `by_hand` may name.
VERBS = ("has", "remove", "set", "get", "removeOnly", "setOnly", "getOnly")

# The words of `flags` and what each sets; `unique` is the rule, so its absence has the word.
FLAGS = ("composite", "derived", "read-only", "ordered", "non-unique")

# What `sums` may count.
SUMS = ("classes", "data_types", "properties", "hidden", "shown", "repeating")

# The marks of a class in the registry; without `tags` it has the first alone.
TAGS = ("qob_metaclass", "qob_factory", "qob_hide_in_lumvo")

MULTIPLICITIES = {"0..1": (0, 1), "1..1": (1, 1), "0..*": (0, None), "1..*": (1, None)}

DATA_TYPE_KINDS = ("boolean", "integer", "real", "string", "value", "enumeration")


def check(table: dict[str, Any], keys: dict[str, Key], report: Callable[[str], None]) -> bool:
    """Reports each key that is unknown, missing or of the wrong type; true if there was none."""
    sound = True
    for key, value in table.items():
        if key not in keys:
            report(f'Key "{key}" is not known here; known are {", ".join(sorted(keys))}.')
            sound = False
        elif not fits(keys[key].type, value):
            report(f'The value of key "{key}" ({value!r}) is not {keys[key].type}.')
            sound = False
    for key, rule in keys.items():
        if rule.required and key not in table:
            report(f'Key "{key}" is missing.')
            sound = False
    # Operations that are the kernel's own business have a prefix.
    name = table.get("name", "").removeprefix("internal_") if keys is OPERATION else table.get("name")
    if sound and "name" in keys and not names.IDENTIFIER.match(name):
        report(f'Name ("{table["name"]}") is not made of letters and digits, a letter first.')
        sound = False
    return sound
