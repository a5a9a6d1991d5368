"""How Python spells the properties of the metamodel: the one place that says so."""

import re

# Between a small letter or a number and a capital one, and before the last of several capitals.
_BORDER = re.compile(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])")


def python_name(name: str, is_many: bool) -> str:
    """The name of a property in Python: owned_literals for OwnedLiteral, if it holds many.

    The kernel's mark is left out: container for ContainerQOB.
    """
    words = _BORDER.sub("_", name.removesuffix("QOB")).lower()
    return _plural(words) if is_many else words


def _plural(words: str) -> str:
    if words.endswith("s"):
        return words
    if re.search(r"[^aeiou]y$", words):
        return words[:-1] + "ies"
    return words + ("es" if re.search(r"(x|ch|sh)$", words) else "s")
