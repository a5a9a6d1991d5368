"""Prints what CMake must know of this interpreter, as a list: the folder of its headers, the ending of
compiled modules, and its folder of packages below a prefix."""

import re
import sysconfig

packages = re.search(r"lib/python[\d.]+/(dist|site)-packages$", sysconfig.get_path("platlib"))
print(
    sysconfig.get_path("include"),
    sysconfig.get_config_var("EXT_SUFFIX"),
    packages.group(0) if packages else sysconfig.get_path("platlib", vars={"platbase": "."}),
    sep=";",
    end="",
)
