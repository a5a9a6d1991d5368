"""What every check is made of."""

from __future__ import annotations

import dataclasses
from collections.abc import Callable

from .project import Project


@dataclasses.dataclass(frozen=True)
class Check:
    """One check: `find` returns a line for each fault, `fix` tells a person what repairs them."""

    name: str
    meaning: str
    fix: str
    find: Callable[[Project], list[str]]
    repair: Callable[[Project], None] | None = None
