"""The metamodel files as the tests read them: what the classes of Python have to be."""

import dataclasses
import pathlib
import tomllib

ROOT = pathlib.Path(__file__).resolve().parents[2]


@dataclasses.dataclass(frozen=True)
class Property:
    owner: str
    name: str
    type: str  # without its package
    is_many: bool
    is_mandatory: bool
    is_unique: bool
    is_read_only: bool
    is_derived: bool
    default: str
    documentation: str

    @property
    def qualified(self):
        return f"{self.owner}.{self.name}"


@dataclasses.dataclass
class Class:
    name: str
    bases: list[str]
    is_abstract: bool
    documentation: str
    properties: list[Property]


def _property(owner, table):
    flags = table.get("flags", [])
    lower, _, upper = table["multiplicity"].partition("..")
    return Property(
        owner=owner,
        name=table["name"],
        type=table["type"].rpartition(".")[2],
        is_many=upper == "*",
        is_mandatory=lower == "1",
        is_unique="non-unique" not in flags,
        is_read_only="derived" in flags and "read-only" in flags,
        is_derived="derived" in flags,
        default=table.get("default", ""),
        documentation=table.get("documentation", ""),
    )


def _classes(table):
    for each in table["class"]:
        bases = each.get("base", [])
        documentation = each.get("documentation", "")
        yield Class(
            name=each["name"],
            bases=[base.rpartition(".")[2] for base in ([bases] if isinstance(bases, str) else bases)],
            is_abstract=each.get("abstract", False) or each["name"] == "Factory",
            documentation=documentation if isinstance(documentation, str) else documentation[0],
            properties=[_property(each["name"], p) for p in each.get("property", [])],
        )


def classes():
    """All classes of the two packages, by name."""
    found = {}
    for name in ("foundation", "types"):
        with open(ROOT / "metamodel" / f"{name}.toml", "rb") as file:
            found |= {each.name: each for each in _classes(tomllib.load(file))}
    return found


def kinds():
    """The literals of all enumerations, by name."""
    found = {}
    for name in ("foundation", "types"):
        with open(ROOT / "metamodel" / f"{name}.toml", "rb") as file:
            for each in tomllib.load(file)["data_type"]:
                if each["kind"] == "enumeration":
                    found[each["name"]] = each["literals"]
    return found
