"""C++ text without what is no code, and the functions in it."""

from __future__ import annotations

import dataclasses
import re

# What is no code: comments, literals and the lines of the preprocessor.
_NO_CODE = re.compile(
    r"""
      //[^\n]*
    | /\*.*?\*/
    | R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"
    | "(?:\\.|[^"\\\n])*"
    | (?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])*'
    | ^[ \t]*\#(?:\\\n|[^\n])*
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
_EDGE = re.compile(r"[{};]|[()]")
# What may stand before a declaration: template parameters, attributes, macros on lines of their own.
_PREFIX = re.compile(
    r"template\s*<(?:[^<>]|<(?:[^<>]|<[^<>]*>)*>)*>\s*"
    r"|\[\[[^\]]*\]\]\s*"
    r"|^[A-Z][A-Z0-9_]+\([^()]*\)\s*\n(?=\s*\w)",
    re.MULTILINE,
)
_SCOPE = re.compile(r"(?:inline\s+)?namespace\b|extern\b[^(]*$|(?:class|struct|union|enum)\b[^(]*(?:\([^()]*\)[^(]*)?$")
_MEMBER_INITIALIZER = re.compile(r"\)[\w\s]*:(?!:).*[\w>]\s*$", re.DOTALL)
_OPERATOR = re.compile(r"\boperator\s*(?:\(\)|[^\s\w(]+)")
_VARIABLE = re.compile(r"[^(]*=")
_NAME = re.compile(r"((?:\w+::)*operator [\w:]+|[~@\w:<>]+)\s*\($")


def code_of(text: str) -> str:
    """The code, on as many lines as before, so that line numbers stay true."""
    return _NO_CODE.sub(lambda match: "\n" * match.group().count("\n"), text)


@dataclasses.dataclass(frozen=True)
class Function:
    name: str
    line: int
    """Of its first line, which the template or the type of the result begins."""
    lines: int


def _name(head: str) -> str:
    words = _PREFIX.sub("", head)
    operator = _OPERATOR.search(words)
    if operator:
        words = _OPERATOR.sub("@", words)
    for match in re.finditer(r"\(", words):
        found = _NAME.search(words, 0, match.end())
        if found and found.group(1) not in ("requires", "noexcept", "decltype", "__attribute__"):
            return found.group(1).replace("@", operator.group() if operator else "@")
    return "?"


def _opens_scope(head: str) -> bool:
    return _SCOPE.match(_PREFIX.sub("", head)) is not None


def _opens_function(head: str) -> bool:
    words = _OPERATOR.sub("@", _PREFIX.sub("", head))
    return "(" in words and not _VARIABLE.match(words)


def functions(text: str) -> list[Function]:
    """The functions that formatted C++ text defines; what stands inside of one belongs to it."""
    code = code_of(text)
    found = []
    scopes: list[bool] = []  # whether what stands there is declarations
    begins: tuple[int, str] | None = None  # the function that is open, and the depth outside of it
    depth = 0
    parentheses = 0
    head = 0
    for match in _EDGE.finditer(code):
        mark, at = match.group(), match.start()
        if mark in "()":
            parentheses += 1 if mark == "(" else -1
        elif mark == ";":
            if parentheses == 0 and (not scopes or scopes[-1]):
                head = match.end()
        elif mark == "{":
            words = code[head:at].strip()
            declares = parentheses == 0 and (not scopes or scopes[-1])
            if declares and _MEMBER_INITIALIZER.search(words):
                scopes.append(False)
            elif declares and _opens_scope(words):
                scopes.append(True)
                head = match.end()
            elif declares and begins is None and _opens_function(words):
                scopes.append(False)
                begins = (head + len(code[head:at]) - len(code[head:at].lstrip()), words)
                depth = len(scopes)
            else:
                scopes.append(False)
        elif scopes:
            if begins is not None and len(scopes) == depth:
                first = code.count("\n", 0, begins[0]) + 1
                last = code.count("\n", 0, at) + 1
                found.append(Function(_name(begins[1]), first, last - first + 1))
                begins = None
                head = match.end()
            elif scopes[-1]:
                head = match.end()
            scopes.pop()
    return found
