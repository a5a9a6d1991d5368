"""Packs the package of a build as a wheel, with its libraries inside: wheel.py BUILD FOLDER"""

import pathlib
import re
import shutil
import subprocess
import sys
import sysconfig
import tempfile

_METADATA = """Metadata-Version: 2.1
Name: velum
Version: {version}
Summary: Models of ASAM and AUTOSAR data types, with undo, branches and checks
Requires-Python: >={python}
"""
_WHEEL = """Wheel-Version: 1.0
Generator: wheel.py
Root-Is-Purelib: false
Tag: {tag}
"""


def _version(build: pathlib.Path) -> str:
    cache = (build / "CMakeCache.txt").read_text(encoding="utf-8")
    found = re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.*)$", cache, re.MULTILINE)
    assert found is not None, "the build has no version"
    return found.group(1)


def _tag() -> str:
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = re.sub(r"[-.]", "_", sysconfig.get_platform())
    return f"{python}-{python}-{platform}"


def _stage(build: pathlib.Path, folder: pathlib.Path) -> pathlib.Path:
    """The package as it is installed, with the libraries beside its module."""
    prefix = folder / "prefix"
    subprocess.run(
        ["cmake", "--install", build, "--strip", "--prefix", prefix],
        check=True,
        stdout=subprocess.DEVNULL,
    )
    stage = folder / "stage"
    (installed,) = prefix.rglob("velum/_core.pyi")
    shutil.copytree(installed.parent, stage / "velum")
    libraries = stage / "velum" / "lib"
    libraries.mkdir()
    for library in prefix.rglob("lib*.so.*"):
        # Under the name by which others ask for it.
        if library.is_symlink():
            shutil.copy(library.resolve(), libraries / library.name)
    return stage


def pack(build: pathlib.Path, target: pathlib.Path) -> None:
    """Writes the wheel into the target folder."""
    with tempfile.TemporaryDirectory() as folder:
        stage = _stage(build, pathlib.Path(folder))
        version = _version(build)
        information = stage / f"velum-{version}.dist-info"
        information.mkdir()
        python = f"{sys.version_info.major}.{sys.version_info.minor}"
        metadata = _METADATA.format(version=version, python=python)
        (information / "METADATA").write_text(metadata, encoding="utf-8")
        (information / "WHEEL").write_text(_WHEEL.format(tag=_tag()), encoding="utf-8")
        target.mkdir(parents=True, exist_ok=True)
        subprocess.run(
            [sys.executable, "-m", "wheel", "pack", "--dest-dir", target, stage],
            check=True,
            stdout=subprocess.DEVNULL,
        )


if __name__ == "__main__":
    pack(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]))
