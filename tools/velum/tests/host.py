"""What the tests of the program share: documents, the program that reads them, what it says.

The first two arguments of a test are the program and the folder of the samples.
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

PROGRAM = pathlib.Path(sys.argv[1])
SAMPLES = pathlib.Path(sys.argv[2])

NAMESPACE = "http://autosar.org/schema/r4.0"
OPENING = f'<AUTOSAR xmlns="{NAMESPACE}">'
CLOSING = "</AUTOSAR>"


def run(*arguments, cwd=SAMPLES, **options):
    return subprocess.run(
        [PROGRAM, *arguments], cwd=cwd, capture_output=True, timeout=300, check=False, **options)


def help_of(*command):
    """The options, arguments and commands of a help text, with what it says of each."""
    text = run(*command, "--help").stdout.decode()
    entries = {}
    for line in text.splitlines():
        entry = re.fullmatch(r"  (\S.*?)(?:  +(\S.*))?", re.sub(r"(:\{.*?\}) ", r"\1  ", line))
        if entry:
            key, said = entry[1], entry[2] or ""
            name = key.split(" ")[0].split(",")[-1] if key.startswith("-") else key.split(" ")[0]
            entries[name] = said
        elif entries and line.startswith("     "):
            last = list(entries)[-1]
            entries[last] = f"{entries[last]} {line.strip()}".strip()
    return entries


class Folder:
    """A temporary folder to run the program in."""

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self._folder.name)
        return self

    def __exit__(self, *_):
        self._folder.cleanup()

    def write(self, name, content):
        data = content if isinstance(content, bytes) else content.encode()
        (self.path / name).write_bytes(data)

    def run(self, *arguments):
        return run(*arguments, cwd=self.path)


def named(tag, name, content=""):
    return f"<{tag}><SHORT-NAME>{name}</SHORT-NAME>{content}</{tag}>"


def package(name, elements, before=""):
    """`before` is what stands between the name and the elements."""
    return named("AR-PACKAGE", name, f"{before}<ELEMENTS>\n{elements}\n</ELEMENTS>")


def document(*packages):
    return f"{OPENING}<AR-PACKAGES>{''.join(packages)}</AR-PACKAGES>{CLOSING}"


def properties(content):
    return ("<SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS><SW-DATA-DEF-PROPS-CONDITIONAL>"
            f"{content}</SW-DATA-DEF-PROPS-CONDITIONAL></SW-DATA-DEF-PROPS-VARIANTS>"
            "</SW-DATA-DEF-PROPS>")


def imported(elements, *options):
    """The result of importing a document with one package P that holds the elements."""
    with Folder() as folder:
        folder.write("f.arxml", document(package("P", elements)))
        return folder.run(*(options or ("import", "--json")), "f.arxml")


def findings(result):
    return [(finding["path"], finding["reason"], finding["text"])
            for finding in json.loads(result.stdout)["files"][0]["findings"]]


def skips(result):
    """How many elements were skipped, by name and reason."""
    return {(row["element"], row["reason"]): row["count"]
            for row in json.loads(result.stdout)["files"][0]["skipped"]}


def classes(result):
    """How many objects there are, by class."""
    return {row["class"]: row["count"] for row in json.loads(result.stdout)["objects"]}


def shown(elements, *path, with_relations=False):
    """What is shown of a document with one package P that holds the elements: what an object is, and
    only if asked for how it stands to others."""
    with Folder() as folder:
        folder.write("f.arxml", document(package("P", elements)))
        lines = folder.run("show", "f.arxml", *path).stdout.decode().splitlines()
        relations = ("  refers to ", "  invalid value ", "  used by ")
        return [line for line in lines if with_relations or not line.startswith(relations)]


def held(elements):
    """All objects of such a document with what they hold, by path; identities are left out."""
    text = imported(elements, "import", "--verbose").stdout.decode()
    objects = {}
    for block in text.split("\n\n"):
        lines = re.sub(r" #\d+", "", block).splitlines()
        for place, line in enumerate(lines):
            path = re.fullmatch(r'  ExternalId: "(.*)"', line)
            if path:
                objects[path[1]] = lines[:place]
    return objects
