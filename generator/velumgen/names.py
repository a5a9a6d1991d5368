"""How the names of C++ operations, members and files follow from the names of the model."""

import re

IDENTIFIER = re.compile(r"[A-Za-z][A-Za-z0-9]*\Z")


def capitalized(name: str) -> str:
    return name[:1].upper() + name[1:]


def uncapitalized(name: str) -> str:
    return name[:1].lower() + name[1:]


def plural(name: str) -> str:
    """Mechanical: `s`, or `es` behind a final s (`getAxeses`)."""
    return name + ("es" if name.endswith("s") else "s")


def is_predicate(name: str) -> bool:
    """Whether a Boolean property of this name reads as a predicate, as `isMinOpen` does."""
    return name[:2].lower() == "is"


def file_stem(namespace: str, name: str) -> str:
    """`Zorvane::metamodel::types`, `Axis` -> `zorvanemetamodeltypesaxis`"""
    return (namespace.replace("::", "") + name).lower()


def cpp_string(text: str) -> str:
    """A narrow C++ string literal that holds exactly the UTF-8 bytes of `text`."""
    escapes = {"\\": "\\\\", '"': '\\"', "\n": "\\n", "\t": "\\t", "\r": "\\r"}
    out = []
    for character in text:
        if character in escapes:
            out.append(escapes[character])
        elif " " <= character <= "~":
            # "??" would begin a trigraph for compilers that still know them.
            out.append("\\?" if character == "?" and out and out[-1] in ("?", "\\?") else character)
        else:
            # Octal ends after three digits; a hexadecimal escape would swallow what follows.
            out.extend(f"\\{byte:03o}" for byte in character.encode("utf-8"))
    return '"' + "".join(out) + '"'


def comment_lines(text: str, width: int = 90) -> list[str]:
    """`text` as the lines of a C++ comment, without the slashes."""
    import textwrap

    lines: list[str] = []
    for paragraph in text.split("\n"):
        # A backslash at the end of a line comment would continue it into the code.
        wrapped = textwrap.wrap(paragraph, width, break_long_words=False) or [""]
        lines.extend(line + " ." if line.endswith("\\") else line for line in wrapped)
    return lines
