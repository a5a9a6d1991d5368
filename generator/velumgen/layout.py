"""Breaks the long lines of generated C++, as a person would: at a base clause, a comma, a result type.

What can't be broken stays: `#include` lines and literals.
"""

from __future__ import annotations

import re
from dataclasses import dataclass
from typing import Iterator, Optional

from . import names

WIDTH = 100
_STEP = 4

_COMMENT = re.compile(r"(?P<prefix>\s*///?)(?: (?P<text>.*))?\Z")
_BODY_ON_ONE_LINE = re.compile(r"(?P<head>.*\)[^(){}]* \{) (?P<body>[^{}]*;) \}\Z")
_TOKEN = re.compile(r'"(?:\\.|[^"\\])*"|->|[(<{\[]|[)>}\]]|, ?| : | = | ')


def wrapped(text: str) -> str:
    """The text with no line longer than WIDTH, as far as its lines can be broken."""
    lines: list[str] = []
    for block in _blocks(text.split("\n")):
        if all(len(line) <= WIDTH for line in block):
            lines.extend(block)
        elif _COMMENT.match(block[0]):
            lines.extend(_paragraph(block))
        else:
            lines.extend(_code(block[0]))
    return "\n".join(lines)


def _blocks(lines: list[str]) -> Iterator[list[str]]:
    """Each line of code alone; the lines of a paragraph of a comment together."""
    paragraph: list[str] = []
    for line in lines:
        match = _COMMENT.match(line)
        continues = match and match["text"] and paragraph
        if continues and _COMMENT.match(paragraph[0])["prefix"] == match["prefix"]:
            paragraph.append(line)
            continue
        if paragraph:
            yield paragraph
            paragraph = []
        if match and match["text"]:
            paragraph = [line]
        else:
            yield [line]
    if paragraph:
        yield paragraph


def _paragraph(lines: list[str]) -> list[str]:
    prefix = _COMMENT.match(lines[0])["prefix"]
    text = " ".join(_COMMENT.match(line)["text"] for line in lines)
    return [f"{prefix} {line}" for line in names.comment_lines(text, WIDTH - len(prefix) - 1)]


def _code(line: str) -> list[str]:
    text = line.lstrip(" ")
    indent = len(line) - len(text)
    if text.startswith("#"):
        return [line]
    if one_line := _BODY_ON_ONE_LINE.match(line):
        parts = [one_line["head"], " " * (indent + _STEP) + one_line["body"], " " * indent + "}"]
        return [broken for part in parts for broken in wrapped(part).split("\n")]
    return _Statement(text, indent).lines()


@dataclass(frozen=True)
class _Place:
    """Where a line may be broken: the offset of what comes behind, how deep in brackets, and why."""

    offset: int
    depth: int
    kind: str  # "base", "value", "comma", "open", "result" or "word"


class _Statement:
    """One line of code that is too long."""

    def __init__(self, text: str, indent: int) -> None:
        self._text = text
        self._indent = indent
        self._places = sorted(_places(text), key=lambda place: place.offset)
        # The body of a function follows one step further in, so its parameters go two.
        opens_body = text.endswith("{") and not re.match(r"(?:class|struct) ", text)
        self._continued = indent + _STEP * (2 if opens_body else 1)

    def lines(self) -> list[str]:
        found: list[str] = []
        start, indent = 0, self._indent
        while indent + len(self._text) - start > WIDTH:
            place = self._best(start, start + WIDTH - indent)
            if place is None:
                break
            found.append(" " * indent + self._text[start : place.offset].rstrip())
            start = place.offset
            indent = self._indent_at(place)
            if place.kind in ("base", "value"):
                self._continued = indent + _STEP
        return [*found, " " * indent + self._text[start:]]

    def _indent_at(self, place: _Place) -> int:
        """How far the line behind a break is indented: with the brackets, as far as there is room."""
        if place.kind == "result":
            return self._indent
        if place.kind == "base":
            return self._indent + _STEP
        nested = self._continued + _STEP * max(place.depth - 1, 0)
        behind = next((p.offset for p in self._places if p.offset > place.offset), len(self._text))
        word = len(self._text[place.offset : behind].rstrip())
        return nested if nested + word <= WIDTH else self._indent + _STEP

    def _best(self, start: int, end: int) -> Optional[_Place]:
        """The place that leaves the most readable line: the outermost, then the last of its kind."""
        fitting = [p for p in self._places if start < p.offset and self._line_end(p) <= end]
        for kinds in (("base",), ("value",), ("comma",), ("result",), ("comma", "open"), ("word",)):
            found = [p for p in fitting if p.kind in kinds]
            if kinds == ("comma",):
                found = [p for p in found if p.depth <= 1]
            if found:
                depth = min(p.depth for p in found)
                return [p for p in found if p.depth == depth][-1]
        # Nothing fits: the next place leaves the line as short as it can be.
        return next((p for p in self._places if p.offset > start), None)

    def _line_end(self, place: _Place) -> int:
        return len(self._text[: place.offset].rstrip())


def _places(text: str) -> Iterator[_Place]:
    depth = 0
    in_head = not text.startswith("return ")
    results: list[_Place] = []
    for match in _TOKEN.finditer(text):
        token = match.group()
        if token in "(<{[":
            if token == "(" and depth == 0 and in_head:
                yield from results[-1:]
                in_head = False
            depth += 1
            yield _Place(match.end(), depth, "open")
        elif token in ")>}]":
            depth -= 1
        elif token in (", ", ","):
            yield _Place(match.end(), depth, "comma")
        elif token == " : " and depth == 0:
            yield _Place(match.start() + 1, 0, "base")
        elif token == " = " and depth == 0:
            yield _Place(match.end(), 0, "value")
            in_head = False
        elif token == " " and depth == 0 and in_head:
            results.append(_Place(match.end(), 0, "result"))
        elif token == " ":
            yield _Place(match.end(), depth, "word")
    if in_head:
        yield from (_Place(p.offset, 0, "word") for p in results)
