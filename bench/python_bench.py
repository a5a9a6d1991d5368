"""Measures the Python package beside protobuf and a plain class with checked properties, in one run.

usage: python_bench.py PROGRAM SAMPLE...

PROGRAM is the host. Whatever is compared takes turns. Times of statements and of creation are the best of
all turns, those of a processor medians. Creation keeps all objects until the end of a turn.
"""

import gc
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile
import time

from google.protobuf import descriptor_pb2, descriptor_pool, message_factory
from google.protobuf.internal import api_implementation
from import_bench import packages_of, write_document

import velum

TURNS = 25
LOOPS = 1000
STATEMENTS = 20


class Plain:
    """A type as a careful program writes it."""

    __slots__ = ("_flag", "_number", "_text", "_whole")

    def __init__(self, text=""):
        self._text = text
        self._flag = False
        self._whole = 0
        self._number = 0.0


def _checked(slot, kind):
    def get(self):
        return getattr_slot(self)

    getattr_slot = getattr(Plain, slot).__get__
    setattr_slot = getattr(Plain, slot).__set__

    def set_(self, value):
        if not isinstance(value, kind):
            raise TypeError(slot)
        setattr_slot(self, value)

    return property(get, set_)


Plain.text, Plain.flag = _checked("_text", str), _checked("_flag", bool)
Plain.whole, Plain.number = _checked("_whole", int), _checked("_number", float)


def message_class():
    """A message of the same fields, made without the compiler of protobuf."""
    file = descriptor_pb2.FileDescriptorProto(name="bench.proto", package="bench")
    message = file.message_type.add(name="Plain")
    kinds = {"text": 9, "flag": 8, "whole": 5, "number": 1}  # string, bool, int32, double
    for number, (name, kind) in enumerate(kinds.items(), start=1):
        message.field.add(name=name, number=number, type=kind, label=1)
    pool = descriptor_pool.DescriptorPool()
    pool.Add(file)
    return message_factory.MessageFactory(pool).GetPrototype(pool.FindMessageTypeByName("bench.Plain"))


def best_of(runs, count, turns=TURNS):
    """Nanoseconds of one of `count` things that a call does, for each of the calls, which take turns."""
    best = [float("inf")] * len(runs)
    for _ in range(turns):
        for i, run in enumerate(runs):
            start = time.perf_counter_ns()
            run()
            best[i] = min(best[i], time.perf_counter_ns() - start)
    return [each / count for each in best]


def statements(text, **names):
    """A function that runs a statement LOOPS * STATEMENTS times."""
    lines = [text.replace("$", str(i % 2)) for i in range(STATEMENTS)]
    body = "\n        ".join(lines)
    source = f"def run({', '.join(names)}):\n    for _ in range({LOOPS}):\n        {body}\n"
    scope = {}
    exec(compile(source, "statements", "exec"), scope)
    return lambda: scope["run"](*names.values())


def access_rows(message):
    """Name, and the statement for each of the three."""
    model = velum.Model()
    literal = velum.EnumerationLiteral(model, "low", value=1)
    integer = velum.Integer(model, "x", min_value=0.5)
    plain, proto = Plain("low"), message(text="low", whole=1, number=0.5)
    for kind, (owner, name), other, values in (
        ("whole number", (literal, "value"), "whole", (7, 8)),
        ("number", (integer, "min_value"), "number", (0.5, 1.5)),
        ("boolean", (integer, "is_signed"), "flag", (True, False)),
        ("text", (literal, "name"), "text", ("low", "high")),
    ):
        for action, text in (("get", "o.{}"), ("set", "o.{} = v[$]")):
            runs = [
                statements(text.format(each), o=of, v=values)
                for of, each in ((owner, name), (proto, other), (plain, other))
            ]
            yield f"{action} a {kind}", *best_of(runs, LOOPS * STATEMENTS)


def creation_rows(message):
    for count in (1000, 100_000):
        turns = TURNS if count < 10_000 else 5

        def ours():
            model = velum.Model()
            made = velum.Integer
            kept = [made(model, "x") for _ in range(count)]
            del kept

        gc.disable()
        runs = [
            ours,
            lambda: [message(text="x") for _ in range(count)],
            lambda: [Plain("x") for _ in range(count)],
        ]
        times = best_of(runs, count, turns)
        gc.enable()
        yield f"create with a name, of {count}", *times


def processor_time(*command):
    """The seconds of a processor that a program takes."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def reading_time(document):
    """The same of velum.read() alone, in a process of its own."""
    ended = subprocess.run(
        [sys.executable, "-c", READING, document], check=True, capture_output=True, text=True
    )
    return float(ended.stdout)


READING = """
import os, sys, time, velum
start = time.process_time()
kept = velum.read(sys.argv[1])
print(time.process_time() - start, flush=True)
os._exit(0)
"""


def medians(actions, turns=9):
    """Of what each action returns; the actions take turns."""
    results = [[action() for action in actions] for _ in range(turns)]
    return [statistics.median(column) for column in zip(*results, strict=True)]


def print_reading(program, samples):
    packages = "".join(packages_of(sample) for sample in samples)
    with tempfile.TemporaryDirectory() as folder:
        document = str(pathlib.Path(folder, "document.arxml"))
        write_document(pathlib.Path(document), packages, 10_000_000)
        host, ours = medians(
            (lambda: processor_time(program, "import", document), lambda: reading_time(document))
        )
    print(f"read 10 MB: velum.read {ours:.3f} s, host {host:.3f} s: {ours / host:.2f}x")


def print_import():
    nothing, ours = medians(
        [lambda text=text: processor_time(sys.executable, "-c", text) for text in ("", "import velum")]
    )
    print(f"import velum: {(ours - nothing) * 1000:.0f} ms")


def main(program, samples):
    message = message_class()
    print(f"protobuf: {api_implementation.Type()}")
    print(f"{'':34}{'velum ns':>9}{'protobuf':>10}{'plain':>8}{'of protobuf':>13}{'of plain':>10}")
    for name, ours, proto, plain in (*access_rows(message), *creation_rows(message)):
        print(
            f"{name:34}{ours:9.0f}{proto:10.0f}{plain:8.0f}{ours / proto:12.2f}x{ours / plain:9.2f}x"
        )
    print_import()
    print_reading(program, samples)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2:])
