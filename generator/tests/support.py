"""Shared by the generator's tests: models from text, in a folder of their own."""

import tempfile
import unittest
from pathlib import Path

from velumgen import loader
from velumgen.faults import MetamodelError

# A hand-written kernel to build on, as small as it can be.
KERNEL = """
[package]
name = "QOB"
namespace = "QOB"
generated = false

[[data_type]]
name = "Boolean"
index = 23
kind = "boolean"
header = "qob/qob/boolean.h"

[[data_type]]
name = "String"
index = 24
kind = "string"
header = "qob/qob/string.h"

[[data_type]]
name = "Real"
index = 27
kind = "real"
header = "qob/qob/real.h"

[[data_type]]
name = "Integer"
index = 28
kind = "integer"
header = "qob/qob/integer.h"

[[class]]
name = "ClassObject"
index = 13
abstract = true
header = "qob/qob/object.h"
interface_header = "qob/qob/nsinterface/classobjectintf.h"

[[class.property]]
id = 3
name = "ContainerQOB"
type = "ClassObject"
multiplicity = "0..1"
"""

HEADER = """
[package]
name = "zoo"
namespace = "Park::zoo"
imports = ["kernel.toml"]
export_macro = "ZOO_EXPORT"
export_header = "zoo/export.h"
include = "zoo"
public_root = "include"
private_root = "."
visitation_domain = "Park::VisitationDomain"
visitation_header = "zoo/visitationdomain.h"
"""


class ModelTest(unittest.TestCase):
    """A test whose models are files of a temporary folder."""

    def setUp(self):
        self.maxDiff = None
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.write("kernel.toml", KERNEL)

    def write(self, name, text):
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        return path

    def load(self, classes, header=HEADER):
        return loader.load(self.write("zoo.toml", header + classes))

    def faults(self, classes, header=HEADER):
        """The messages for a wrong model, with the file's folder taken off."""
        with self.assertRaises(MetamodelError) as caught:
            self.load(classes, header)
        return str(caught.exception).replace(f"{self.folder}/", "").splitlines()


def prop(id=1, name="Legs", type="QOB.Integer", multiplicity="0..1", **more):
    """The text of one property."""
    lines = ["[[class.property]]", f"id = {id}"]
    values = {"name": name, "type": type, "multiplicity": multiplicity, **more}
    for key, value in values.items():
        if isinstance(value, bool):
            value = str(value).lower()
        elif isinstance(value, str):
            value = f"'{value}'"
        lines.append(f"{key} = {value}")
    return "\n".join(lines) + "\n"


def cls(name="Animal", index=1, *properties, base="QOB.ClassObject", **more):
    """The text of one class."""
    lines = ["[[class]]", f"name = '{name}'", f"index = {index}"]
    values = {"base": base, **more}
    for key, value in values.items():
        if isinstance(value, bool):
            value = str(value).lower()
        elif isinstance(value, str):
            value = f"'{value}'"
        lines.append(f"{key} = {value}")
    return "\n".join([*lines, *properties]) + "\n"
