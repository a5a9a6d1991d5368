"""What the functions of velum report, as dataclasses."""

from __future__ import annotations

from collections.abc import Iterable, Iterator
from dataclasses import asdict, dataclass, fields
from importlib import import_module
from typing import TYPE_CHECKING, Any

if TYPE_CHECKING:
    from velum import Object

Row = dict[str, Any]


class _Table:
    """A report that can be read as a table: one row for whatever it tells by itself."""

    __slots__ = ()

    def rows(self) -> list[Row]:
        """The report as rows, each with the same keys: for csv.DictWriter, say."""
        raise NotImplementedError

    def to_pandas(self) -> Any:
        """The rows as a pandas.DataFrame. Raises ImportError where pandas isn't installed."""
        try:
            pandas = import_module("pandas")
        except ImportError as failure:
            raise ImportError(
                "to_pandas() needs the package pandas, which isn't installed; rows() doesn't."
            ) from failure
        return pandas.DataFrame(self.rows())


@dataclass(frozen=True, slots=True)
class Place:
    """Where something stands in a file; lines and columns count from 1."""

    line: int
    column: int
    path: str  # of the nearest element with a name


@dataclass(frozen=True, slots=True)
class Finding:
    """Something that is worth telling by itself, about one element or one target of references."""

    reason: str
    is_fault: bool
    text: str
    target: str  # what references ask for; empty if it isn't about references
    count: int
    places: tuple[Place, ...]  # the first ones


@dataclass(frozen=True, slots=True)
class Omission:
    """Something that could be an object and is none."""

    place: Place
    element: str
    reason: str
    text: str


@dataclass(frozen=True, slots=True)
class ConsumedElements:
    """The elements of one name that objects were made of."""

    element: str
    count: int


@dataclass(frozen=True, slots=True)
class SkippedElements:
    """The elements of one name that were skipped for one reason."""

    element: str
    reason: str
    count: int
    first: Place


@dataclass(frozen=True, slots=True)
class FileReport:
    """What happened to the elements of one file: each is consumed or skipped."""

    file: str
    consumed: tuple[ConsumedElements, ...]
    skipped: tuple[SkippedElements, ...]
    omissions: tuple[Omission, ...]
    findings: tuple[Finding, ...]
    element_count: int
    consumed_count: int
    skipped_count: int


@dataclass(frozen=True, slots=True)
class ReadReport(_Table):
    """What velum.read() made of the files."""

    classes: dict[str, int]  # how many objects of each class
    files: tuple[FileReport, ...]

    def rows(self) -> list[Row]:
        """A row for each finding, at the first of its places."""
        return [
            {
                "file": file.file,
                "line": finding.places[0].line if finding.places else None,
                "column": finding.places[0].column if finding.places else None,
                "path": finding.places[0].path if finding.places else None,
                "reason": finding.reason,
                "is_fault": finding.is_fault,
                "count": finding.count,
                "text": finding.text,
            }
            for file in self.files
            for finding in file.findings
        ]

    @property
    def faults(self) -> list[Finding]:
        """The findings by which an object is wrong or incomplete."""
        return [each for file in self.files for each in file.findings if each.is_fault]


@dataclass(frozen=True, slots=True)
class WriteFinding:
    """What velum.write() has to say about an object."""

    remark: str
    path: str
    text: str


@dataclass(frozen=True, slots=True)
class WriteReport(_Table):
    """What velum.write() wrote."""

    files: tuple[str, ...]
    objects: int
    bytes: int
    findings: tuple[WriteFinding, ...]

    def rows(self) -> list[Row]:
        """A row for each finding."""
        return [asdict(each) for each in self.findings]


@dataclass(frozen=True, slots=True)
class SkippedName:
    """What a file holds of a class or property that this installation doesn't know."""

    name: str
    count: int


@dataclass(frozen=True, slots=True)
class UnresolvedReference:
    """A reference to an object of another model that isn't there."""

    object: Object
    property: str
    position: int  # in a list, else -1
    uri: str
    id: int


@dataclass(frozen=True, slots=True)
class LoadReport:
    """What velum.load() could not load."""

    skipped: tuple[SkippedName, ...]
    unresolved: tuple[UnresolvedReference, ...]


@dataclass(frozen=True, slots=True)
class ObjectChange:
    """An object that has other values than before."""

    object: Object
    # By the name of the property: before and now. Of a property with many, a tuple of its values.
    values: dict[str, tuple[Any, Any]]


@dataclass(frozen=True, slots=True)
class Changes:
    """What a transaction, an undo, a redo, a merge or a single write has changed."""

    created: tuple[Object, ...]
    destroyed: tuple[Object, ...]
    changed: tuple[ObjectChange, ...]


@dataclass(frozen=True, slots=True)
class Single:
    """An object that only one side has."""

    path: str
    metaclass: str


@dataclass(frozen=True, slots=True)
class Renaming:
    """Two objects of the same content under two paths."""

    old: str
    new: str
    metaclass: str


@dataclass(frozen=True, slots=True)
class Value:
    """A value of a property: as Python has it, and as a person reads it."""

    value: Any
    text: str

    def __str__(self) -> str:
        return self.text


@dataclass(frozen=True, slots=True)
class Change:
    """One difference in an object that both sides have."""

    path: str
    part: str  # the place in the object; empty for the object itself
    property: str
    kind: str  # value, order, class, added, removed or renamed
    is_many: bool
    old: tuple[Value, ...]
    new: tuple[Value, ...]


@dataclass(frozen=True, slots=True)
class DiffReport(_Table):
    """In what two sides differ, each list in the order of the paths."""

    added: tuple[Single, ...]
    removed: tuple[Single, ...]
    renamed: tuple[Renaming, ...]
    changed: tuple[Change, ...]
    same_count: int

    @property
    def is_same(self) -> bool:
        """Whether there is no difference."""
        return not (self.added or self.removed or self.renamed or self.changed)

    def rows(self) -> list[Row]:
        """A row for each difference."""
        return [*self._objects(), *map(_change_row, self.changed)]

    def _objects(self) -> Iterator[Row]:
        for each in self.added:
            yield _row("added", each.path, new=each.metaclass)
        for each in self.removed:
            yield _row("removed", each.path, old=each.metaclass)
        for pair in self.renamed:
            yield _row("renamed", pair.old, old=pair.old, new=pair.new)


def _row(
    kind: str, path: str, part: str = "", property: str = "", old: str = "", new: str = ""
) -> Row:
    return {"kind": kind, "path": path, "part": part, "property": property, "old": old, "new": new}


def _change_row(change: Change) -> Row:
    old, new = (", ".join(map(str, values)) for values in (change.old, change.new))
    return _row(change.kind, change.path, change.part, change.property, old, new)


@dataclass(frozen=True, slots=True)
class Issue:
    """One thing that is legal but doubtful."""

    path: str
    rule: str
    severity: str  # error, warning or note
    text: str
    file: str | None
    line: int
    column: int


@dataclass(frozen=True, slots=True)
class CheckReport(_Table):
    """What velum.check() found, in the order of the files and paths."""

    issues: tuple[Issue, ...]

    def of(self, severities: Iterable[str]) -> list[Issue]:
        """The issues of some severities."""
        wanted = set(severities)
        return [each for each in self.issues if each.severity in wanted]

    @property
    def errors(self) -> list[Issue]:
        """The issues by which the data contradict themselves."""
        return self.of(["error"])

    def rows(self) -> list[Row]:
        """A row for each issue."""
        return [{field.name: getattr(each, field.name) for field in fields(each)} for each in self.issues]
