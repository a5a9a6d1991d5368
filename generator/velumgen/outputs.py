"""Which files a package becomes, and the text of each."""

from __future__ import annotations

from dataclasses import dataclass, replace
from pathlib import Path
from typing import Any, Callable

import jinja2

from . import containment, documentation, includes, layout, names, operations, shapes, tables
from .model import MetaClass, Package

TEMPLATES = Path(__file__).resolve().parent.parent / "templates"


@dataclass(frozen=True)
class Output:
    """One generated file, relative to the folder of all generated files."""

    path: str
    template: str
    role: str  # "header" is installed, "private" only included by sources, "source" compiled
    context: dict[str, Any]


# The files of a class: template, and which include it is known by. Those of concrete classes are only
# for classes that can be instantiated.
_CLASS_HEADERS = (
    ("handle.h.j2", "handle_header"),
    ("handleinline.h.j2", "inline_header"),
    ("interface.h.j2", "intf_header"),
)
_CLASS_PRIVATE_HEADERS = (("state.h.j2", "fields_header"),)
# The only file of a class that is written by hand.
_TABLE = ("metaregistry.cpp.j2", "{include}/nsmetaregistry/{stem}metaregistry.cpp")
_CLASS_SOURCES = (
    ("handle.cpp.j2", "{include}/{stem}.cpp"),
    ("interface.cpp.j2", "{include}/nsinterface/{stem}intf.cpp"),
    _TABLE,
)
_CONCRETE_HEADERS = (
    ("deviantimpl.h.j2", "deviant_impl_header"),
    ("impl.h.j2", "impl_header"),
)
_CONCRETE_SOURCES = (("impl.cpp.j2", "{include}/nsimplementation/{stem}impl.cpp"),)


def outputs(package: Package) -> list[Output]:
    """Every file of the package, in a fixed order: files that know all classes come last, so that
    where neighbours are compiled together, an edit of a class compiles few units."""
    found: list[Output] = []
    for each in sorted(package.classes, key=lambda each: each.factory):
        found.extend(_class_outputs(each))
    found.extend(_package_outputs(package))
    return found


def _package_outputs(package: Package) -> list[Output]:
    context = {"package": package}
    public = f"{package.public_root}/{package.include}"
    own = f"{package.private_root}/{package.include}/{package.file_stem}"
    table = f"{package.public_root}/{package.introspection_header}"
    found = [
        Output(f"{public}/{package.file_stem}.h", "package.h.j2", "header", context),
        Output(table, "introspection.h.j2", "header", context),
        Output(f"{own}introspection.cpp", "introspection.cpp.j2", "source", context),
    ]
    if package.is_live:
        metapackage = f"nsmetaregistry/{package.file_stem}metapackage.cpp"
        header = f"{package.public_root}/{package.metapackage_header}"
        source = f"{package.private_root}/{package.include}/{metapackage}"
        found.append(Output(header, "metapackage.h.j2", "header", context))
        found.append(Output(source, "metapackage.cpp.j2", "source", context))
    if package.names_handles:
        found.append(Output(f"{own}names.h", "names.h.j2", "private", context))
        found.append(Output(f"{own}names.cpp", "names.cpp.j2", "source", context))
    return [_normal(output) for output in found]


def _normal(output: Output) -> Output:
    return replace(output, path=output.path.removeprefix("./"))


def _class_outputs(each: MetaClass) -> list[Output]:
    package = each.package
    context = {"cls": each, "package": package}
    if not each.generated:
        sources = [_TABLE] if each.index is not None else []
        return [_source(each, template, pattern, context) for template, pattern in sources]
    concrete = not each.abstract
    found = [
        Output(f"{package.public_root}/{getattr(each, include)}", template, "header", context)
        for template, include in _CLASS_HEADERS
    ]
    found += [
        Output(f"{package.private_root}/{getattr(each, include)}", template, "private", context)
        for template, include in _CLASS_PRIVATE_HEADERS + (_CONCRETE_HEADERS if concrete else ())
    ]
    for template, pattern in _CLASS_SOURCES + (_CONCRETE_SOURCES if concrete else ()):
        found.append(_source(each, template, pattern, context))
    return [_normal(output) for output in found]


def _source(each: MetaClass, template: str, pattern: str, context: dict[str, Any]) -> Output:
    path = pattern.format(include=each.package.include, stem=each.file_stem)
    return _normal(Output(f"{each.package.private_root}/{path}", template, "source", context))


class Renderer:
    """Fills templates in; `finish` is the last step of each text."""

    def __init__(self, finish: Callable[[str], str] = layout.wrapped) -> None:
        self._finish = finish
        self._environment = jinja2.Environment(
            loader=jinja2.FileSystemLoader(TEMPLATES),
            undefined=jinja2.StrictUndefined,
            trim_blocks=True,
            lstrip_blocks=True,
            keep_trailing_newline=True,
            autoescape=False,
        )
        self._environment.filters["cpp_string"] = names.cpp_string
        self._environment.filters["comment"] = _comment
        self._environment.filters["indented"] = _indented
        for function in (
            operations.own_operations,
            operations.all_operations,
            operations.handle_operations,
            operations.joined_operations,
            operations.state_operations,
            operations.flagged_properties,
            operations.assignment_rules,
            operations.root_getters,
            operations.root_setters,
            shapes.field_type,
        ):
            self._environment.globals[function.__name__] = function
        for module in (containment, documentation, includes, tables):
            self._environment.globals[module.__name__.rpartition(".")[2]] = module

    def render(self, output: Output) -> str:
        text = self._environment.get_template(output.template).render(output.context)
        return self._finish(text)


def _comment(texts: list[str], indent: int = 0) -> str:
    """Documentation texts as lines of a documentation comment, an empty line between two."""
    margin = " " * indent + "///"
    blocks = [names.comment_lines(text, 96 - indent) for text in texts]
    lines = [line for block in blocks for line in ["", *block]][1:]
    return "".join(f"{margin} {line}".rstrip() + "\n" for line in lines)


def _indented(statement: str, indent: int) -> str:
    """The statement of a body on a line of its own; nothing for an empty body."""
    return f"{' ' * indent}{statement}\n" if statement else ""
