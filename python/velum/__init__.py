"""Data types of ASAM and AUTOSAR: models with undo, branches, checks and files.

The classes, their properties and their documentation are those of the metamodel: see help() of any of
them, and docs/python.md for all names.
"""

import collections.abc as _abc
from typing import Any as _Any

from . import _core
from ._core import *  # noqa: F403  the classes are made when the module is loaded

for _made in (_core.Branch, _core.Model, _core.Observation, _core.Transaction):
    _made.__module__ = "velum"
for _function in (_core.check, _core.diff, _core.load, _core.read, _core.save, _core.write):
    _function.__module__ = "velum"
_abc.MutableSequence.register(_core.List)

# Of velum.reports, whose dataclasses take longer to make than all else: only when they are asked for.
_REPORTS = frozenset(
    "Change Changes CheckReport ConsumedElements DiffReport FileReport Finding Issue LoadReport "
    "ObjectChange Omission Place ReadReport Renaming Single SkippedElements SkippedName UnresolvedReference Value WriteFinding "
    "WriteReport".split()
)


def __getattr__(name: str) -> _Any:
    if name not in _REPORTS:
        raise AttributeError(f"module 'velum' has no attribute {name!r}")
    from . import reports

    return getattr(reports, name)


def __dir__() -> list[str]:
    return sorted({*globals(), *_REPORTS})
