"""Compares the table of the order of elements with files, or derives such a table from them.

usage: element_order.py TABLE FILE...
       element_order.py --derive FILE...

The table is src/writing/element_order.inc: for each element the names of its children, in order. A file
contradicts it where children stand in another order, or where a child of such an element isn't named. Two
files contradict each other where an order can't be derived: the circle is printed then.
"""

import collections
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

# Their children are lists of things of several names, in any order, or texts with elements in them.
LISTS = {"ELEMENTS", "FIELDS", "SW-VALUES-PHYS", "VG", "DISPLAY-NAME", "ARRAY-SIZE", "V", "L-1", "L-2", "L-4", "P",
         "SW-VALUE-BLOCK-SIZE", "MAX-NUMBER-OF-ELEMENTS", "SD", "SDG", "SW-MAX-AXIS-POINTS"}


def local(element):
    return element.tag.rpartition("}")[2] if isinstance(element.tag, str) else None


def sequences(file):
    """The name of each element that has children, with their names, each once in the order of its first."""
    for element in ElementTree.parse(file).iter():
        names = [name for name in map(local, element) if name]
        if names and local(element) not in LISTS:
            yield local(element), names


def table_of(path):
    text = pathlib.Path(path).read_text(encoding="utf-8")
    rows = re.findall(r'\{"([A-Z0-9-]+)",((?:\s*"[A-Z0-9 -]+")+)\}', text)
    return {parent: " ".join(re.findall(r'"([^"]+)"', children)).split() for parent, children in rows}


def contradictions(table, files):
    """What of the files isn't as the table has it, each kind once."""
    found = {}
    for file in files:
        for parent, names in sequences(file):
            order = table.get(parent)
            if order is None:
                continue
            last = -1
            for name in names:
                if name not in order:
                    found.setdefault((parent, name), f"{file}: {parent} has a {name}, which the table doesn't name")
                    continue
                place = order.index(name)
                if place < last:
                    found.setdefault((parent, name, order[last]),
                                     f"{file}: {name} stands behind {order[last]} in {parent}")
                last = max(last, place)
    return list(found.values())


def circle(before, names):
    """Some names of which each has to stand before the next one, and the last one before the first."""
    way = [next(iter(names))]
    while True:
        way.append(next(name for name in names if name in before[way[-1]]))
        if way[-1] in way[:-1]:
            return way[way.index(way[-1]):]


def derived(files):
    """The table, and what contradicts itself in the files."""
    before = collections.defaultdict(lambda: collections.defaultdict(set))
    for file in files:
        for parent, names in sequences(file):
            for name in names:
                before[parent][name].update(())
            for one, other in zip(names, names[1:]):
                if one != other:
                    before[parent][other].add(one)
    table, faults = {}, []
    for parent, needed in sorted(before.items()):
        order, left = [], dict(needed)
        while left:
            ready = sorted(name for name in left if not left[name] - set(order))
            if not ready:
                way = circle(left, {n for n in left if left[n] - set(order)})
                faults.append(f"{parent}: {' before '.join(reversed(way))}")
                break
            order.append(ready[0])
            del left[ready[0]]
        if len(order) > 1:
            table[parent] = order
    return table, faults


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    if arguments[0] == "--derive":
        table, faults = derived(arguments[1:])
        for parent, children in table.items():
            print(f'{{"{parent}", "{" ".join(children)}"}},')
    else:
        table = table_of(arguments[0])
        faults = contradictions(table, arguments[1:])
        faults += [fault for fault in derived(arguments[1:])[1] if fault.split(":")[0] in table]
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
