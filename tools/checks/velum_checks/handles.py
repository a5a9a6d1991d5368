"""A handle has every operation of its interface class, and each calls the one of its name.

The operations are read from the interface headers; whether a handle has them is for the compiler to
say, since a name that a handle adds hides those of its bases.
"""

from __future__ import annotations

import dataclasses
import pathlib
import re
import tempfile

from .check import Check
from .project import Project

_COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
_TOKEN = re.compile(
    r"""
      \bnamespace\s+(?P<namespace>[\w:]+)\s*\{
    | \b(?:class|struct)\s+(?:[A-Z_]+\s+)?(?P<cls>\w+)(?:\s+final)?\s*(?::(?P<bases>[^;{}()]*))?\{
    | \bvirtual\s+(?P<operation>[^;{}]+?)\s*(?=[;{])
    | (?P<open>\{) | (?P<close>\})
    """,
    re.VERBOSE,
)
_OPERATION = re.compile(
    r"(?P<result>[^()]*?)\b(?P<name>\w+)\s*\((?P<parameters>[^()]*)\)\s*(?P<const>const\b)?", re.DOTALL
)
_INTERFACE = re.compile(r"[\w:]*\b\w+Intf\b")
_FORWARDING = re.compile(
    r"\b(?P<name>\w+)\([^(){}]*\)\s*const\s*\{[^{}]*?\(\*this\)->(?P<called>\w+)\(", re.DOTALL
)
_DEVIANT = re.compile(r"(?:QOB::)?Deviant\b(?!\s*const)")


@dataclasses.dataclass(frozen=True)
class Operation:
    """One virtual operation as a handle should have it: without the deviant."""

    name: str
    result: str
    parameters: tuple[str, ...]
    const: bool

    @property
    def call(self) -> str:
        names = (re.search(r"\w+$", parameter).group() for parameter in self.parameters)
        return f"{self.name}({', '.join(names)})"

    def __str__(self) -> str:
        return f"{self.name}({', '.join(self.parameters)})" + (" const" if self.const else "")


@dataclasses.dataclass
class Class:
    namespace: str
    name: str
    bases: str
    operations: list[Operation] = dataclasses.field(default_factory=list)

    @property
    def full_name(self) -> str:
        return f"{self.namespace}::{self.name}"


def _split(parameters: str) -> list[str]:
    """The parameters one by one; a comma within <> parts none."""
    found, depth = [""], 0
    for character in " ".join(parameters.split()):
        depth += {"<": 1, ">": -1}.get(character, 0)
        if character == "," and depth == 0:
            found.append("")
        else:
            found[-1] += character
    return [each.strip() for each in found if each.strip()]


def _operation(text: str) -> Operation | None:
    match = _OPERATION.match(text)
    if match is None or "~" in match["result"]:
        return None
    parameters = _split(match["parameters"])
    if parameters and _DEVIANT.match(parameters[0]):
        del parameters[0]
    result = " ".join(match["result"].split())
    return Operation(match["name"], result, tuple(parameters), match["const"] is not None)


def classes(text: str) -> list[Class]:
    """The classes that a header defines, each with the virtual operations that it adds."""
    found: list[Class] = []
    # What is open: the name of a namespace, a class, or nothing of interest.
    scopes: list[str | Class | None] = []
    for match in _TOKEN.finditer(_COMMENT.sub(" ", text)):
        if match["namespace"]:
            scopes.append(match["namespace"])
        elif match["cls"]:
            namespace = "::".join(scope for scope in scopes if isinstance(scope, str))
            found.append(Class(namespace, match["cls"], match["bases"] or ""))
            scopes.append(found[-1])
        elif match["operation"]:
            operation = _operation(match["operation"])
            if operation is not None and isinstance(scopes[-1], Class):
                scopes[-1].operations.append(operation)
        elif match["open"]:
            scopes.append(None)
        else:
            scopes.pop()
    return found


def _inherited(of: Class, interfaces: dict[str, Class]) -> list[Class]:
    """The class and every interface class that it derives from, each once."""
    found = [of]
    for name in _INTERFACE.findall(of.bases):
        full_name = name if "::" in name else f"{of.namespace}::{name}"
        base = interfaces.get(full_name)
        if base is not None and base is not of:
            found += [each for each in _inherited(base, interfaces) if each not in found]
    return found


def wrong_calls(text: str) -> list[str]:
    """The members of handles that call an operation of another name. A handle for reading has only
    the form without association to call."""
    return [
        f"{match['name']} calls {match['called']}"
        for match in _FORWARDING.finditer(_COMMENT.sub(" ", text))
        if match["called"].removesuffix("WithoutAssociation") != match["name"].removesuffix("WithoutAssociation")
        or len(match["called"]) < len(match["name"])
    ]


def unit(include: pathlib.Path) -> str:
    """The C++ that compiles only if each handle has each operation."""
    headers = sorted(include.rglob("*.h"))
    interfaces: dict[str, Class] = {}
    handles: set[str] = set()
    for header in headers:
        for each in classes(header.read_text(encoding="utf-8")):
            if header.parent.name == "nsinterface" and each.name.endswith("Intf"):
                interfaces[each.full_name] = each
            else:
                handles.add(each.full_name)
    lines = [f'#include "{path.relative_to(include).as_posix()}"' for path in headers]
    lines.append("#include <concepts>")
    concepts: dict[tuple[str, Operation], str] = {}
    for interface in interfaces.values():
        lines.append(f"namespace {interface.namespace} {{")
        for operation in interface.operations:
            name = f"HasOperation{len(concepts)}"
            concepts[interface.full_name, operation] = f"{interface.namespace}::{name}"
            lines.append(_concept(name, operation))
        lines.append("}")
    for interface in interfaces.values():
        own = interface.namespace.removesuffix("NSInterface") + interface.name.removesuffix("Intf")
        space, _, name = own.rpartition("::")
        reader = f"{space}::Immutable{name}"
        for declaring in _inherited(interface, interfaces):
            for operation in declaring.operations:
                concept = concepts[declaring.full_name, operation]
                for handle in (own, reader) if operation.const else (own,):
                    if handle in handles:
                        lines.append(f'static_assert({concept}<{handle}>, "{handle}: {operation}");')
    return "\n".join(lines) + "\n"


def _concept(name: str, operation: Operation) -> str:
    parameters = ", ".join(["Handle const& handle", *operation.parameters])
    call = f"handle.{operation.call}"
    # A sequence may come as its read-only form.
    if operation.result != "void" and "Sequence<" not in operation.result:
        call = f"{{ {call} }} -> std::convertible_to<{operation.result}>"
    return f"template <class Handle> concept {name} = requires({parameters}) {{ {call}; }};"


def _find(project: Project) -> list[str]:
    include = project.installed() / "include"
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder, "handles.cpp")
        source.write_text(unit(include), encoding="utf-8")
        result = project.attempt("g++", "-std=c++20", f"-I{include}", "-fsyntax-only", source)
    findings = [
        f"{header.relative_to(include).as_posix()}: {each}"
        for header in sorted(include.rglob("*.h"))
        for each in wrong_calls(header.read_text(encoding="utf-8"))
    ]
    if result.returncode != 0:
        missing = re.findall(r"error: static assertion failed: (.*)", result.stderr)
        findings += [f"there is no member {each}" for each in missing] or [result.stderr.rstrip()]
    return findings


CHECK = Check(
    name="handles",
    meaning="a handle has every operation of its interface class",
    fix="forward the operation in the handle, or in what it is made of (qob/qob/object.h)",
    find=_find,
)
