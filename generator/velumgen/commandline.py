"""The command line: what CMake and `./dev check` call."""

from __future__ import annotations

import argparse
import sys
from pathlib import Path
from typing import Optional

from . import loader, outputs, stubs, writer
from .faults import MetamodelError
from .model import Package

ROOT = Path(__file__).resolve().parent.parent


def main(arguments: Optional[list[str]] = None) -> int:
    options = _parser().parse_args(arguments)
    try:
        package = loader.load(options.model)
        if options.command == "stubs":
            writer.write_if_changed(options.out, stubs.render(package, options.names))
            return 0
        files = outputs.outputs(package) if package.generated else []
    except MetamodelError as error:
        print(error, file=sys.stderr)
        return 1
    if options.command == "list":
        for output in files:
            print(f"{output.role}={output.path}")
        for path in inputs(package):
            print(f"input={path}")
    elif options.command == "write":
        _write(files, options)
    return 0


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(prog="generate.py", description=__doc__)
    commands = parser.add_subparsers(dest="command", required=True)
    check = commands.add_parser("check", help="load a metamodel file and report its faults")
    list_ = commands.add_parser("list", help="print what a run would write and what it reads")
    write = commands.add_parser("write", help="write the generated files that changed")
    stub = commands.add_parser("stubs", help="write the annotations of the Python classes")
    for command in (check, list_, write, stub):
        command.add_argument("model", type=Path, help="the metamodel file")
    write.add_argument("--out", type=Path, required=True, help="folder of all generated files")
    stub.add_argument("--out", type=Path, required=True, help="the stub file")
    stub.add_argument("--names", type=Path, required=True, help="what spells names in Python")
    write.add_argument("--stamp", type=Path, required=True, help="touched at the end of the run")
    return parser


def inputs(package: Package) -> list[Path]:
    """Every file whose change may change what is written: models, templates, the generator."""
    models: list[Path] = []
    pending = [package]
    while pending:
        each = pending.pop(0)
        if Path(each.file).resolve() not in models:
            models.append(Path(each.file).resolve())
            pending.extend(each.imports)
    own = [ROOT / "generate.py", *ROOT.glob("velumgen/*.py"), *ROOT.glob("templates/*.j2")]
    return [*models, *sorted(own)]


def _write(files: list[outputs.Output], options: argparse.Namespace) -> None:
    renderer = outputs.Renderer()
    # Everything is laid out before anything is written: a failing template changes no file.
    texts = {o.path: renderer.render(o) for o in files}
    for path, text in texts.items():
        writer.write_if_changed(options.out / path, text)
    # The stamp lists what the run wrote, so that the next one removes what is no longer made.
    try:
        before = options.stamp.read_text(encoding="utf-8").splitlines()
    except FileNotFoundError:
        before = []
    for path in before:
        if path not in texts:
            (options.out / path).unlink(missing_ok=True)
    options.stamp.parent.mkdir(parents=True, exist_ok=True)
    options.stamp.write_text("".join(f"{path}\n" for path in texts), encoding="utf-8")
