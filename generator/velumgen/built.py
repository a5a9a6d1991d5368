"""Takes away what a package models but isn't laid out yet, so that the rest stands by itself.

A class keeps its nearest base that is built; what it loses of the bases between, it can't offer.
"""

from __future__ import annotations

from .faults import Fault, MetamodelError
from .model import MetaClass, Package, Property


def restrict(package: Package) -> None:
    """Cuts the package and all that it imports down to what their files say is built.

    Raises MetamodelError where a property would be left without its type or its other end.
    """
    packages = _with_imports(package)
    classes = [c for p in packages for c in p.classes]
    built = {c for c in classes if not c.package.built or c.name in c.package.built}
    properties = {p for c in built for p in c.properties if _is_built(c, p.name)}
    faults = [
        Fault(p.owner.package.file, f"{p.owner.name}.{p.name}", f"It is built, but {missing} is not.")
        for c in classes
        for p in c.properties
        if p in properties
        for missing in _missing(p, built, properties)
    ]
    if faults:
        raise MetamodelError(faults)
    bases = {c: _nearest(c, built) for c in built}
    for each in classes:
        if each in built:
            each.bases = bases[each]
            _cut_members(each, properties)
        each.forget_derived_facts()
    for each in packages:
        each.classes = [c for c in each.classes if c in built]


def _with_imports(package: Package) -> list[Package]:
    found = [package]
    for each in found:
        found.extend(p for p in each.imports if p not in found)
    return found


def _is_built(of: MetaClass, member: str) -> bool:
    return not of.package.built or member in of.package.built[of.name]


def _missing(each: Property, built: set[MetaClass], properties: set[Property]) -> list[str]:
    found: list[str] = []
    if isinstance(each.type, MetaClass) and each.type not in built:
        found.append(f"its type {each.type.qualified}")
    if each.opposite is not None and each.opposite not in properties:
        found.append(f"its opposite {each.opposite.qualified}")
    return found


def _nearest(of: MetaClass, built: set[MetaClass]) -> list[MetaClass]:
    """The built classes that take the places of the direct bases, without what others bring."""
    nearest = [next(c for c in [base, *base.ancestors] if c in built) for base in of.bases]
    return [
        base
        for position, base in enumerate(nearest)
        if base not in nearest[:position] and not any(base in other.ancestors for other in nearest)
    ]


def _cut_members(of: MetaClass, properties: set[Property]) -> None:
    of.extra_operations = [op for op in of.extra_operations if _is_built(of, op.name)]
    of.properties = [p for p in of.properties if p in properties]
    of.order = [name for name in of.order if _is_built(of, name)]
    of.creator_arguments = [p for p in of.creator_arguments if p in properties]
    for each in of.properties:
        each.redefines = [p for p in each.redefines if p in properties]
        each.subsets = [p for p in each.subsets if p in properties]
