"""Writes generated files: only what changed, so that nothing else is rebuilt."""

from __future__ import annotations

from pathlib import Path


def write_if_changed(path: Path, text: str) -> bool:
    """Returns whether the file was written; one with the same bytes keeps its time stamp."""
    data = text.encode("utf-8")
    try:
        if path.read_bytes() == data:
            return False
    except FileNotFoundError:
        pass
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data)
    return True
