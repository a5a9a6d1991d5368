"""The code generator: reads the metamodel files and lays out C++ declarations and one-line calls.

    commandline.py what CMake and people call
    loader.py      metamodel files to model classes; reports every fault it finds
    schema.py      the keys of a metamodel file
    checks.py      the rules that hold between the parts of a loaded metamodel
    faults.py      what is wrong with a model
    model.py       packages, data types, classes: every fact a template prints
    members.py     properties and operations of classes, likewise
    names.py       how C++ names and file names follow from the model's names
    operations.py  which operations a property gives to its class, in which order
    shapes.py      the kinds of property and the kernel rules they call
    containment.py what objects of a class contain and are linked to
    tables.py      the class as data: its properties by number
    includes.py    what each generated file must include
    outputs.py     which files a package becomes, and the text of each
    layout.py      breaks lines that are too long
    documentation.py  what a handle's documentation reports about a property
    writer.py      writes what changed and nothing else
"""
