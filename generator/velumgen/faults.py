"""What is wrong with a metamodel, told all at once."""

from __future__ import annotations

from dataclasses import dataclass


@dataclass(frozen=True)
class Fault:
    """One sentence about one place: the file, the class and property in it, and the cause."""

    file: str
    place: str
    cause: str

    def __str__(self) -> str:
        return f"{self.file}: error: {self.place}: {self.cause}" if self.place else (
            f"{self.file}: error: {self.cause}"
        )


class MetamodelError(Exception):
    """Carries every fault that was found, in the order of the files."""

    def __init__(self, faults: list[Fault]):
        super().__init__("\n".join(str(fault) for fault in faults))
        self.faults = faults
