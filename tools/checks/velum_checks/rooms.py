"""The folders of a library or a program are layers: nothing includes from a floor above its own."""

from __future__ import annotations

import dataclasses
import posixpath
import re

from .check import Check
from .project import Project, is_product

_LIST = "tools/checks/rooms.txt"
_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
_SUFFIXES = ("*.h", "*.cpp", "*.inc")


@dataclasses.dataclass
class House:
    """A folder of sources, its folder of public headers, and the floor of each of its rooms."""

    sources: str
    public: str | None
    floors: dict[str, int] = dataclasses.field(default_factory=dict)

    def room(self, path: str) -> str | None:
        """The room that a file of the repository stands in; none if it is in another house."""
        for root in (self.sources, self.public):
            if root and path.startswith(root + "/"):
                first, _, rest = path[len(root) + 1 :].partition("/")
                return first if rest else "."
        return None


def parse(text: str) -> list[House]:
    """The houses of a list, lowest first. Raises `ValueError` with the line that can't be read."""
    houses: list[House] = []
    floor = 0
    for number, line in enumerate(text.splitlines(), start=1):
        words = line.partition("#")[0].split()
        if not words:
            continue
        if words[0] == "house" and len(words) in (2, 3):
            houses.append(House(words[1], words[2] if len(words) == 3 else None))
        elif houses and words[0] != "house":
            floor += 1
            for room in words:
                if room in houses[-1].floors:
                    raise ValueError(f"{_LIST}:{number}: the room {room} is named twice")
                houses[-1].floors[room] = floor
        else:
            raise ValueError(f"{_LIST}:{number}: this is neither a house nor a floor of one")
    return houses


class Plan:
    """Judges includes by the houses and by the files that there are."""

    def __init__(self, houses: list[House], files: set[str]) -> None:
        self._houses = houses
        self._files = files

    def house(self, path: str) -> House | None:
        return next((house for house in self._houses if house.room(path) is not None), None)

    def _target(self, house: House, path: str, include: str) -> str | None:
        """The file that an include leads to; none if it is in no house."""
        candidates = [posixpath.join(posixpath.dirname(path), include), f"{house.sources}/{include}"]
        for other in self._houses:
            candidates.append(f"{other.sources}/{include}")
            if other.public:
                candidates.append(f"{posixpath.dirname(other.public)}/{include}")
        normal = (posixpath.normpath(candidate) for candidate in candidates)
        return next((path for path in normal if path in self._files), None)

    def fault(self, path: str, include: str) -> str | None:
        """What is wrong with an include of a file; none if nothing is."""
        house = self.house(path)
        assert house is not None
        target = self._target(house, path, include)
        if target is None or (there := self.house(target)) is None:
            return None
        if there is not house:
            if self._houses.index(there) > self._houses.index(house):
                return f"{target} belongs to {there.sources}, which stands above {house.sources}"
            if there.public and not target.startswith(there.public + "/"):
                return f"{target} is private to {there.sources}"
            return None
        here, other = house.room(path), there.room(target)
        if here == other or here not in house.floors or other not in house.floors:
            return None
        if house.floors[other] > house.floors[here]:
            return f"the room {here} includes upward, from {other}"
        if house.floors[other] == house.floors[here]:
            return f"the rooms {here} and {other} are on one floor"
        return None


def _findings_in(plan: Plan, path: str, text: str) -> list[str]:
    findings = []
    for match in _INCLUDE.finditer(text):
        fault = plan.fault(path, match.group(1) or match.group(2))
        if fault:
            findings.append(f"{path}:{text.count(chr(10), 0, match.start(0)) + 1}: {fault}")
    return findings


def _find(project: Project) -> list[str]:
    try:
        houses = parse((project.root / _LIST).read_text(encoding="utf-8"))
    except (OSError, ValueError) as failure:
        return [str(failure)]
    files = {project.relative(path): path for path in project.tracked(*_SUFFIXES)}
    plan = Plan(houses, set(files))
    findings = []
    homeless = set()
    for name, path in files.items():
        house = plan.house(name)
        if house is None or not is_product(name):
            continue
        if (room := house.room(name)) not in house.floors and (house.sources, room) not in homeless:
            homeless.add((house.sources, room))
            findings.append(f"{name}:1: the room {room} of {house.sources} is not in {_LIST}")
        findings += _findings_in(plan, name, path.read_text(encoding="utf-8"))
    for house in houses:
        for room in house.floors:
            if not any(house.room(name) == room for name in files):
                findings.append(f"{_LIST}:1: there is no room {room} in {house.sources}")
    return findings


CHECK = Check(
    name="rooms",
    meaning="no folder of a library or program includes from one above it",
    fix=f"move what both need to a lower room; {_LIST} has the order",
    find=_find,
)
