"""Reads metamodel files into model classes and reports every fault of every file together."""

from __future__ import annotations

import re
import tomllib
from pathlib import Path
from typing import Any, Optional, Union

from . import checks, schema
from .faults import Fault, MetamodelError
from .members import ExtraOperation, Parameter, Property
from .model import UNBOUNDED, DataType, MetaClass, Package, Type


def load(path: Union[str, Path]) -> Package:
    """The package of the file with all that it imports; raises MetamodelError with all faults."""
    loader = Loader()
    package = loader.load(Path(path))
    if package is not None and not loader.faults:
        for each in loader.packages:
            loader.faults.extend(checks.check(each))
    if loader.faults:
        raise MetamodelError(loader.faults)
    assert package is not None
    return package


class Loader:
    """Builds in two passes, since classes name each other in any order: first things, then links."""

    def __init__(self) -> None:
        self.faults: list[Fault] = []
        self.packages: list[Package] = []
        self._loading: list[Path] = []
        self._loaded: dict[Path, Optional[Package]] = {}

    def load(self, path: Path) -> Optional[Package]:
        resolved = path.resolve()
        if resolved in self._loading:
            self._fault(path, "", "The file imports itself, directly or through another file.")
            return None
        if resolved not in self._loaded:
            self._loading.append(resolved)
            self._loaded[resolved] = self._load_new(path)
            self._loading.pop()
        return self._loaded[resolved]

    def _fault(self, file: Union[str, Path], place: str, cause: str) -> None:
        self.faults.append(Fault(str(file), place, cause))

    def _load_new(self, path: Path) -> Optional[Package]:
        try:
            document = tomllib.loads(path.read_text(encoding="utf-8"))
        except OSError as error:
            self._fault(path, "", f"The file cannot be read: {error.strerror}.")
            return None
        except UnicodeDecodeError as error:
            self._fault(path, "", f"The file is not UTF-8 text at byte {error.start}.")
            return None
        except tomllib.TOMLDecodeError as error:
            self._fault(path, "", f"The file is not TOML: {error}.")
            return None
        return _FileLoader(self, path, document).load()


class _FileLoader:
    def __init__(self, loader: Loader, path: Path, document: dict[str, Any]):
        self._loader = loader
        self._path = path
        self._document = document
        self._class_tables: list[tuple[MetaClass, dict[str, Any]]] = []
        self._property_tables: list[tuple[Property, dict[str, Any]]] = []

    def _fault(self, place: str, cause: str) -> None:
        self._loader._fault(self._path, place, cause)

    def _sound(self, table: dict[str, Any], keys: dict[str, schema.Key], place: str) -> bool:
        return schema.check(table, keys, lambda cause: self._fault(place, cause))

    def load(self) -> Optional[Package]:
        if not self._sound(self._document, schema.FILE, ""):
            return None
        header = self._document["package"]
        if not self._sound(header, schema.PACKAGE, "package"):
            return None
        imports = [name for name in header.get("imports", [])]
        plain = {k: v for k, v in header.items() if k != "imports"}
        self._package = Package(file=str(self._path), **plain)
        self._check_tables(header)
        if self._package.generated:
            for key in schema.GENERATED_PACKAGE:
                if not header.get(key):
                    self._fault("package", f'Key "{key}" is missing.')
        for name in imports:
            imported = self._loader.load(self._path.parent / name)
            if imported is not None:
                self._package.imports.append(imported)
        # Names of a package that could not be read would only add faults of their own making.
        imports_complete = len(self._package.imports) == len(imports)
        self._read_data_types()
        self._read_classes()
        if imports_complete:
            self._link_bases()
            self._link_properties()
        self._loader.packages.append(self._package)
        return self._package

    def _check_tables(self, header: dict[str, Any]) -> None:
        for name, value in header.get("sums", {}).items():
            if name not in schema.SUMS:
                self._fault("package", f'Sum "{name}" is none of {", ".join(schema.SUMS)}.')
            elif not schema.fits(schema.NUMBER, value):
                self._fault("package", f'Sum "{name}" ({value!r}) is not {schema.NUMBER}.')

    # First pass

    def _add_type(self, new: Type) -> None:
        for known in self._package.types.values():
            if known.name == new.name:
                self._fault(new.name, "The package has two types of this name.")
                return
            if known.index == new.index and new.index is not None:
                self._fault(new.name, f"Index ({new.index}) is also that of {known.name}.")
        laid_out = new.generated if isinstance(new, MetaClass) else self._package.generated
        if new.index is None and laid_out:
            self._fault(new.name, 'Key "index" is missing.')
        elif new.index is not None and new.index < 1:
            self._fault(new.name, f"Index ({new.index}) is not above 0.")
        types = self._package.classes if new.is_class else self._package.data_types
        types.append(new)

    def _read_data_types(self) -> None:
        for number, table in enumerate(self._document.get("data_type", []), start=1):
            place = str(table.get("name", f"data type {number}"))
            if not self._sound(table, schema.DATA_TYPE, place):
                continue
            if table["kind"] not in schema.DATA_TYPE_KINDS:
                known = ", ".join(schema.DATA_TYPE_KINDS)
                self._fault(place, f'Kind ("{table["kind"]}") is none of {known}.')
                continue
            self._add_type(
                DataType(
                    self._package,
                    table["name"],
                    table.get("index"),
                    _texts(table.get("documentation")),
                    table["kind"],
                    table.get("header", ""),
                    table.get("literals", []),
                )
            )
        for table in self._document.get("data_type", []):
            data_type = self._package.types.get(table.get("name", ""))
            if isinstance(data_type, DataType) and data_type.kind == "value":
                self._link_value(data_type, table)

    def _link_value(self, value: DataType, table: dict[str, Any]) -> None:
        """A value is made of a number and a unit; without a unit it has no creators."""
        if "unit" not in table:
            return
        number = self._find_type(table.get("number", ""))
        unit = self._package.types.get(table["unit"])
        if isinstance(number, DataType) and number.kind in ("integer", "real"):
            value.number = number
        else:
            self._fault(value.name, f'Number ("{table.get("number", "")}") is no type of numbers.')
        if isinstance(unit, DataType) and unit.kind == "enumeration":
            value.unit = unit
        else:
            self._fault(value.name, f'Unit ("{table["unit"]}") is no enumeration here.')

    def _read_classes(self) -> None:
        for number, table in enumerate(self._document.get("class", []), start=1):
            place = str(table.get("name", f"class {number}"))
            if not self._sound(table, schema.CLASS, place):
                continue
            new = MetaClass(
                self._package,
                table["name"],
                table.get("index"),
                _texts(table.get("documentation")),
                generated=self._package.generated and table.get("generated", True),
                abstract=table.get("abstract", False),
                order=table.get("order", []),
                tags=table.get("tags", [schema.TAGS[0]]),
                header=table.get("header", ""),
                interface_header=table.get("interface_header", ""),
                state_class=table.get("state_class", ""),
                fields_struct=table.get("fields_struct", ""),
                state_header=table.get("state_header", ""),
                factory=table.get("factory", False),
                constructed_by_hand=table.get("constructed_by_hand", False),
                headers=table.get("headers", []),
                companions=table.get("companions", []),
                handle_mixin=table.get("handle_mixin", ""),
                root_mixin=table.get("root_mixin", ""),
                root_mixin_header=table.get("root_mixin_header", ""),
            )
            for tag in new.tags:
                if tag not in schema.TAGS:
                    self._fault(place, f'Tag ("{tag}") is none of {", ".join(schema.TAGS)}.')
            self._add_type(new)
            if self._package.types.get(new.name) is new:
                self._class_tables.append((new, table))

    # Second pass

    def _find_type(self, name: str) -> Optional[Type]:
        """`Name` of this package, or `package.Name` of one that is imported."""
        package_name, _, type_name = name.rpartition(".")
        for package in [self._package, *_all_imports(self._package)]:
            if package.name == (package_name or self._package.name):
                return package.types.get(type_name)
        return None

    def _types_named_in(self, texts: list[str]) -> list[Type]:
        """The types of this package and its imports that C++ types name, fully qualified."""
        named = {token for text in texts for token in re.findall(r"[A-Za-z_][\w:]*", text)}
        found: list[Type] = []
        for package in [self._package, *_all_imports(self._package)]:
            for each in package.types.values():
                spellings = {each.cpp}
                if isinstance(each, MetaClass):
                    spellings.add(each.cpp_immutable)
                if spellings & named:
                    found.append(each)
        return found

    def _find_property(self, reference: str, searched: MetaClass) -> Optional[Property]:
        """`Class.property` or `package.Class.property`; the class may be `searched` itself."""
        class_name, _, property_name = reference.rpartition(".")
        found = self._find_type(class_name) if class_name else searched
        return found.find_property(property_name) if isinstance(found, MetaClass) else None

    def _link_bases(self) -> None:
        for new, table in self._class_tables:
            for name in _texts(table.get("base")):
                base = self._find_type(name)
                if base is None:
                    self._fault(new.name, f'Base ("{name}") is not known.')
                elif not isinstance(base, MetaClass):
                    self._fault(new.name, f'Base ("{name}") is a data type, not a class.')
                else:
                    new.bases.append(base)
            if not table.get("base") and new.generated:
                self._fault(new.name, 'Key "base" is missing.')
        for new, _ in self._class_tables:
            if _reaches_itself(new):
                self._fault(new.name, "The class is its own base, directly or through another.")
                new.bases.clear()
        for new, _ in self._class_tables:
            for base in new.bases[1:]:
                for part in [base, *base.ancestors]:
                    part.may_be_second_part |= part not in [new.base, *new.base.ancestors]

    def _link_properties(self) -> None:
        for new, table in self._class_tables:
            self._read_operations(new, table.get("operation", []))
            self._read_properties(new, table.get("property", []))
        for each, table in self._property_tables:
            self._link_property(each, table)
        for new, table in self._class_tables:
            for name in table.get("creator", []):
                argument = next((p for p in new.all_properties() if p.name == name), None)
                if argument is None:
                    cause = f'Creator argument ("{name}") is no property of the class or a base.'
                    self._fault(new.name, cause)
                else:
                    new.creator_arguments.append(argument)

    def _read_operations(self, owner: MetaClass, tables: list[dict[str, Any]]) -> None:
        for number, table in enumerate(tables, start=1):
            place = f"{owner.name}.{table.get('name', f'operation {number}')}"
            if not self._sound(table, schema.OPERATION, place):
                continue
            parameters: list[Parameter] = []
            for text in table.get("parameters", []):
                type_name, _, name = text.rpartition(" ")
                if not type_name:
                    self._fault(place, f'Parameter ("{text}") is not a type and a name.')
                parameters.append(Parameter(type_name, name))
            result = table.get("result", "void")
            owner.extra_operations.append(
                ExtraOperation(
                    owner,
                    table["name"],
                    result,
                    table.get("const", False),
                    parameters,
                    table.get("documentation", ""),
                    table.get("deviant", True),
                    table.get("static", False),
                    table.get("override", False),
                    table.get("after_pair", False),
                    table.get("empty_on_state", False),
                    self._types_named_in([result, *(p.type for p in parameters)]),
                )
            )

    def _read_properties(self, owner: MetaClass, tables: list[dict[str, Any]]) -> None:
        for number, table in enumerate(tables, start=1):
            place = f"{owner.name}.{table.get('name', f'property {number}')}"
            if not self._sound(table, schema.PROPERTY, place):
                continue
            type_ = self._find_type(table["type"])
            if type_ is None:
                self._fault(place, f'Type ("{table["type"]}") is not known.')
            limits = schema.MULTIPLICITIES.get(table["multiplicity"])
            if limits is None:
                known = ", ".join(schema.MULTIPLICITIES)
                cause = f'Multiplicity ("{table["multiplicity"]}") is none of {known}.'
                self._fault(place, cause)
            flags = table.get("flags", [])
            for flag in flags:
                if flag not in schema.FLAGS:
                    known = ", ".join(schema.FLAGS)
                    self._fault(place, f'Flag ("{flag}") is none of {known}.')
            for key in ("without", "by_hand"):
                for verb in table.get(key, []):
                    if verb not in schema.VERBS:
                        known = ", ".join(schema.VERBS)
                        self._fault(place, f'Verb ("{verb}") of key "{key}" is none of {known}.')
            if type_ is None or limits is None:
                continue
            new = Property(
                owner,
                table["id"],
                table["name"],
                type_,
                limits[0],
                UNBOUNDED if limits[1] is None else limits[1],
                default=table.get("default"),
                composite="composite" in flags,
                derived="derived" in flags,
                read_only="read-only" in flags,
                ordered="ordered" in flags,
                unique="non-unique" not in flags,
                association=table.get("association"),
                other_end=table.get("other_end"),
                hidden=table.get("hidden", False),
                private=table.get("private", False),
                plural=table.get("plural"),
                documentation=table.get("documentation"),
                part=table.get("part"),
                without=table.get("without", []),
                by_hand=table.get("by_hand", []),
                overrides=table.get("overrides", False),
            )
            owner.properties.append(new)
            self._property_tables.append((new, table))

    def _link_property(self, each: Property, table: dict[str, Any]) -> None:
        place = f"{each.owner.name}.{each.name}"
        if "opposite" in table:
            each.opposite = self._find_property(table["opposite"], each.owner)
            if each.opposite is None:
                self._fault(place, f'Opposite ("{table["opposite"]}") is not known.')
        for key, found in (("redefines", each.redefines), ("subsets", each.subsets)):
            for reference in table.get(key, []):
                other = self._find_property(reference, each.owner)
                if other is None:
                    self._fault(place, f'The property ("{reference}") that it {key} is not known.')
                else:
                    found.append(other)


def _texts(value: Union[None, str, list[str]]) -> list[str]:
    if value is None:
        return []
    return [value] if isinstance(value, str) else list(value)


def _all_imports(package: Package) -> list[Package]:
    found: list[Package] = []
    for imported in package.imports:
        for candidate in [imported, *_all_imports(imported)]:
            if candidate not in found:
                found.append(candidate)
    return found


def _reaches_itself(start: MetaClass) -> bool:
    seen: list[MetaClass] = []
    open_ = list(start.bases)
    while open_:
        each = open_.pop()
        if each is start:
            return True
        if each not in seen:
            seen.append(each)
            open_.extend(each.bases)
    return False
