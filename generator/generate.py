#!/usr/bin/python3
"""Generates C++ from a metamodel file; see velumgen/commandline.py."""

import sys

sys.dont_write_bytecode = True

from velumgen.commandline import main  # noqa: E402

if __name__ == "__main__":
    sys.exit(main())
