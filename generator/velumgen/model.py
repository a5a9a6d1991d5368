"""The metamodel in memory. Templates print nothing but properties of these classes."""

from __future__ import annotations

from dataclasses import dataclass, field
from functools import cached_property
from pathlib import Path
from typing import Iterator, Optional, Union

from . import names
from .members import ExtraOperation, Parameter, Property

UNBOUNDED = 0xFFFFFFFF


@dataclass(eq=False)
class Package:
    """One metamodel file."""

    name: str
    file: str
    namespace: str
    documentation: str = ""
    # What counting the package's parts must give, by the words of schema.SUMS.
    sums: dict[str, int] = field(default_factory=dict)
    generated: bool = True
    export_macro: str = ""
    export_header: str = ""
    include: str = ""
    public_root: str = ""
    private_root: str = ""
    # Whether the package tells the names of its classes to the visitors' registry.
    names_handles: bool = False
    # The class type that stands for the domain of its classes in visitors, and where it stands.
    visitation_domain: str = ""
    visitation_header: str = ""
    # The class type whose `moduleObjects()` own the tables of its classes, and where it stands; the
    # domain if the package's library declares that one itself.
    module: str = ""
    module_header: str = ""
    # Where the package stands in the registry: the function that gives the package around it, and
    # its header. Without one, the package is not made live.
    registry_parent: str = ""
    registry_parent_header: str = ""
    # Whether the package is the registry's own: its tables are complete from the start, because
    # the registry's elements are made with them, and it lies directly in the registry.
    describes_registry: bool = False
    # What the names of a class's files begin with, if it isn't the namespace.
    file_prefix: Optional[str] = None
    # Whether the getters of one end of a multi-valued property are declared const.
    const_views: bool = False
    # Whether handles for reading show lists, as sequences that can't be written.
    reading_views: bool = False
    imports: list[Package] = field(default_factory=list)
    # Both in the order of the file, which is that of their creation in the registry.
    classes: list[MetaClass] = field(default_factory=list)
    data_types: list[DataType] = field(default_factory=list)

    @property
    def dotted(self) -> str:
        return self.namespace.replace("::", ".")

    @property
    def underscored(self) -> str:
        return self.namespace.replace("::", "_")

    @property
    def types(self) -> dict[str, Type]:
        return {t.name: t for t in [*self.data_types, *self.classes]}

    @property
    def model_path(self) -> str:
        """The metamodel file as banners name it: its folder and its name, the same on any machine."""
        return "/".join(Path(self.file).resolve().parts[-2:])

    @property
    def is_live(self) -> bool:
        """Whether the package and its types become elements of the registry."""
        return bool(self.registry_parent) or self.describes_registry

    @property
    def generated_classes(self) -> list[MetaClass]:
        return [c for c in self.classes if c.generated]

    @property
    def listed_classes(self) -> list[MetaClass]:
        """The classes in the package's table, in the order of the file."""
        return [c for c in self.classes if c.index is not None]

    @property
    def created_classes(self) -> list[MetaClass]:
        """What the package's factory creates, in the order of the package's table."""
        found = (c for c in self.classes if c.has_creators and c.is_named)
        return sorted(found, key=lambda c: c.index or 0)

    @property
    def created_values(self) -> list[DataType]:
        """The values of two parts that the package's factory creates."""
        return sorted((t for t in self.data_types if t.unit), key=lambda t: t.index or 0)

    @property
    def data_types_by_index(self) -> list[DataType]:
        return sorted(self.data_types, key=lambda t: t.index or 0)

    @property
    def table(self) -> dict[int, Type]:
        """The types by their place in the package's table."""
        return {t.index: t for t in self.types.values() if t.index is not None}

    @property
    def table_size(self) -> int:
        """The entries of the table, with an empty one at each end."""
        return max(self.table, default=0) + 2

    @property
    def function(self) -> str:
        """The function that gives the package's table."""
        return f"{self.namespace}::get_{self.name}_PackageIntrospectiveMethods"

    @property
    def capitalized(self) -> str:
        """Its name within the names of functions."""
        return names.capitalized(self.name)

    @property
    def classes_by_index(self) -> list[MetaClass]:
        return sorted(self.listed_classes, key=lambda c: c.index or 0)

    @property
    def metapackage_header(self) -> str:
        return f"{self.include}/nsmetaregistry/{self.file_stem}metapackage.h"

    @property
    def introspection_header(self) -> str:
        if not self.generated:
            return "qob/qob/introspection.h"
        return f"{self.include}/{self.file_stem}introspection.h"

    @property
    def file_stem(self) -> str:
        return names.file_stem(self.namespace, "")

    def file_stem_of(self, type_name: str) -> str:
        if self.file_prefix is None:
            return names.file_stem(self.namespace, type_name)
        return names.file_stem(self.file_prefix, type_name)


@dataclass(eq=False)
class Type:
    package: Package
    name: str
    # Its place in the package's table; a hand-written package need not tell all of them.
    index: Optional[int]
    documentation: list[str] = field(default_factory=list)

    @property
    def qualified(self) -> str:
        """The name in messages and model files: `foundation.NamedElement`."""
        return f"{self.package.name}.{self.name}"

    @property
    def dotted(self) -> str:
        return f"{self.package.dotted}.{self.name}"

    @property
    def cpp(self) -> str:
        """The class that a caller holds: a value class or a handle, fully qualified."""
        return f"{self.package.namespace}::{self.name}"

    @property
    def file_stem(self) -> str:
        return self.package.file_stem_of(self.name)


@dataclass(eq=False)
class DataType(Type):
    """A type whose values are copied: a primitive of the kernel, a value class, an enumeration."""

    kind: str = "value"
    header: str = ""
    literals: list[str] = field(default_factory=list)
    # Of a value: what its number and its unit are.
    number: Optional[DataType] = None
    unit: Optional[DataType] = None

    @property
    def meta_interface(self) -> str:
        """The kernel's class of its live element."""
        kind = "Enumeration" if self.kind == "enumeration" else "DataType"
        return f"QOB::NSInterface::{kind}Intf"

    @property
    def is_class(self) -> bool:
        return False

    @property
    def is_primitive(self) -> bool:
        return self.kind in ("boolean", "integer", "real", "string")

    @property
    def value_header(self) -> str:
        return self.header or f"{self.package.include}/{self.file_stem}.h"


@dataclass(eq=False)
class MetaClass(Type):
    # Whether its C++ is laid out from the file; its table is in any case.
    generated: bool = True
    abstract: bool = False
    bases: list[MetaClass] = field(default_factory=list)
    # Whether it is a second base of a class, or lies above one, and isn't above the first as well.
    may_be_second_part: bool = False
    properties: list[Property] = field(default_factory=list)
    # Operations that no property gives; their bodies are hand-written.
    extra_operations: list[ExtraOperation] = field(default_factory=list)
    # Names of extra operations and properties where the virtual order is not the order of ids.
    order: list[str] = field(default_factory=list)
    creator_arguments: list[Property] = field(default_factory=list)
    # Its marks in the registry.
    tags: list[str] = field(default_factory=list)
    header: str = ""
    interface_header: str = ""
    # The mixin and the fields of a hand-written class, and where they stand.
    state_class: str = ""
    fields_struct: str = ""
    state_header: str = ""
    # Whether its root object has a constructor from a model, written by hand.
    constructed_by_hand: bool = False
    # Whether it has operations that create the package's other classes.
    factory: bool = False
    # Hand-written headers: what its operations name, and what its handle's header brings along.
    headers: list[str] = field(default_factory=list)
    companions: list[str] = field(default_factory=list)
    # Hand-written templates that a handle for reading and the root object derive from: what they
    # have beside the class's properties.
    handle_mixin: str = ""
    root_mixin: str = ""
    root_mixin_header: str = ""

    @property
    def is_class(self) -> bool:
        return True

    @property
    def is_primitive(self) -> bool:
        return False

    @property
    def base(self) -> MetaClass:
        return self.bases[0]

    @cached_property
    def ancestors(self) -> list[MetaClass]:
        """Every base once: the first chain up to its root, then what only a second base adds."""
        found: list[MetaClass] = []
        for base in self.bases:
            for candidate in [base, *base.ancestors]:
                if candidate not in found:
                    found.append(candidate)
        return found

    @cached_property
    def first_path(self) -> list[MetaClass]:
        """The chain of first bases, nearest first."""
        return [self.base, *self.base.first_path] if self.bases else []

    @cached_property
    def bases_first(self) -> list[MetaClass]:
        """The class behind all its bases: what a second base adds comes behind the first's path."""
        found: list[MetaClass] = []
        for base in self.bases:
            found.extend(c for c in base.bases_first if c not in found)
        return [*found, self]

    @cached_property
    def shared_bases(self) -> list[MetaClass]:
        """The generated classes that more than one of the direct bases derive from."""
        seen = [set(base.bases_first) for base in self.bases]
        return [
            c
            for c in self.bases_first
            if c.generated and sum(c in each for each in seen) > 1
        ]

    def is_a(self, other: MetaClass) -> bool:
        return other is self or other in self.ancestors

    def find_property(self, name: str) -> Optional[Property]:
        return next((p for p in self.properties if p.name == name), None)

    def all_properties(self) -> Iterator[Property]:
        for declaring in [self, *self.ancestors]:
            yield from declaring.properties

    def redefines(self, prop: Property) -> bool:
        """Whether another property stands in the place of one of a base."""
        return any(prop in p.redefines for p in self.all_properties())

    @property
    def name_property(self) -> Optional[Property]:
        """The property that the last argument of a creator sets; without one, no creators."""
        return next((p for p in self.all_properties() if p.name == "Name"), None)

    @property
    def has_creators(self) -> bool:
        return not self.abstract and not self.factory

    @property
    def is_named(self) -> bool:
        """Whether it has creators that take values."""
        return bool(self._created_with)

    @property
    def creator_parameters(self) -> str:
        return ", ".join(f"{p.type.cpp} {p.argument}" for p in self._created_with)

    @property
    def creator_arguments_typed(self) -> list[Parameter]:
        return [Parameter(p.type.cpp, p.argument) for p in self._created_with]

    @property
    def creator_values(self) -> str:
        return ", ".join(p.argument for p in self._created_with)

    @property
    def creator_setters(self) -> str:
        return ", ".join(f"&{p.owner.cpp_interface}::{p.setter}" for p in self._created_with)

    @property
    def creator_headers(self) -> list[str]:
        return ["qob/qob/integer.h", "qob/qob/model.h"] if self.has_creators else []

    @property
    def creator_types(self) -> list[Type]:
        return [p.type for p in self._created_with] if self.has_creators else []

    @property
    def _created_with(self) -> list[Property]:
        named = [self.name_property] if self.name_property is not None else []
        return [*self.creator_arguments, *named]

    @cached_property
    def own_members(self) -> list[Union[ExtraOperation, Property]]:
        """What the class adds, in the order of its virtual operations."""
        members = [*self.extra_operations, *self.properties]
        if not self.order:
            return members
        return sorted(members, key=lambda member: self.order.index(member.name))

    # What the classes of its objects and states are made of

    @property
    def cpp_base(self) -> str:
        """What the interface class derives from: a base, or two that are joined."""
        bases = ", ".join(base.cpp_interface for base in self.bases)
        return f"QOB::JoinedBases<{bases}>" if len(self.bases) > 1 else bases

    @property
    def state_classes(self) -> list[MetaClass]:
        """The classes whose fields a state holds: its own first, then the bases'. A base whose
        properties are all redefined stores nothing."""
        every = [self, *self.ancestors]
        redefined = {r for c in every for p in c.properties for r in p.redefines}
        return [
            c
            for c in every
            if c.state_class
            or (c.generated and not (c.properties and redefined.issuperset(c.properties)))
        ]

    @property
    def reading_base(self) -> str:
        """What the handle for reading derives from."""
        handle = f"QOB::ReadHandle<NSInterface::{self.interface}>"
        return f"{self.handle_mixin}<{handle}>" if self.handle_mixin else handle

    @property
    def root_base(self) -> str:
        """What the root object derives from: the states of an object, told apart by class."""
        root = f"QOB::RootObject<NSInterface::{self.interface}, {self.deviant_implementation}>"
        if self.root_mixin:
            root = f"{self.root_mixin}<{root}>"
        return f"QOB::StatePairs<{', '.join([root, *reversed(self.levels)])}>"

    @property
    def state_chain(self) -> str:
        """The base of the state class: a mixin of operations for each class, own outermost."""
        chain = self.cpp_interface
        for declaring in reversed(self.state_classes):
            chain = f"{declaring.cpp_state}<{self.deviant_implementation}, {chain}>"
        return chain

    @property
    def field_structs(self) -> str:
        return ", ".join(c.cpp_fields for c in self.state_classes)

    @property
    def assigned_blocks(self) -> str:
        """The interface class, and all that assign a block when a state is brought to another."""
        return ", ".join([self.interface, *(c.cpp_interface for c in self.state_classes)])

    @property
    def levels(self) -> list[str]:
        """The interface classes by which the state of an object may be asked for, own last."""
        classes = [c.cpp_interface for c in reversed([self, *self.ancestors])]
        return ["QOB::NSInterface::ObjectIntf", *classes]

    # C++ names

    @property
    def immutable(self) -> str:
        return f"Immutable{self.name}"

    @property
    def cpp_immutable(self) -> str:
        return f"{self.package.namespace}::{self.immutable}"

    @property
    def interface(self) -> str:
        return f"{self.name}Intf"

    @property
    def cpp_interface(self) -> str:
        return f"{self.package.namespace}::NSInterface::{self.interface}"

    @property
    def implementation(self) -> str:
        return f"{self.name}Impl"

    @property
    def deviant_implementation(self) -> str:
        return f"{self.name}DeviantImpl"

    @property
    def state(self) -> str:
        """The mixin that overrides the operations of this class's own block on a state."""
        return f"{self.name}State"

    @property
    def fields(self) -> str:
        return f"{self.name}Fields"

    @property
    def cpp_state(self) -> str:
        return self.state_class or f"{self.package.namespace}::NSImplementation::{self.state}"

    @property
    def cpp_fields(self) -> str:
        return self.fields_struct or f"{self.package.namespace}::NSImplementation::{self.fields}"

    # Where its declarations stand, as an include names them

    @property
    def handle_header(self) -> str:
        return self.header or f"{self.package.include}/{self.file_stem}.h"

    @property
    def handle_path(self) -> str:
        """The header of its handles in the repository: what a failed access names."""
        return f"{self.package.public_root}/{self.handle_header}".removeprefix("./")

    @property
    def inline_header(self) -> str:
        return f"{self.package.include}/{self.file_stem}inline.h"

    @property
    def intf_header(self) -> str:
        return self.interface_header or f"{self.package.include}/nsinterface/{self.file_stem}intf.h"

    @property
    def fields_header(self) -> str:
        return (
            self.state_header
            or f"{self.package.include}/nsimplementation/{self.file_stem}state.h"
        )

    @property
    def impl_header(self) -> str:
        return f"{self.package.include}/nsimplementation/{self.file_stem}impl.h"

    @property
    def deviant_impl_header(self) -> str:
        return f"{self.package.include}/nsimplementation/{self.file_stem}deviantimpl.h"
