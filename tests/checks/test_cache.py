import pathlib
import sys

from sandbox import Sandbox
from velum_checks.cache import Cache, Task

# Writes a line to a log for each run, and fails if the watched file says so.
TOOL = """
import pathlib, sys
log, watched = map(pathlib.Path, sys.argv[1:3])
log.open("a").write("run\\n")
sys.exit("bad content" if watched.read_text() == "bad" else 0)
"""


class CacheOfRuns(Sandbox):
    def setUp(self) -> None:
        super().setUp()
        self.log = self.project.root / "build" / "log"
        self.watched = self.write("build/watched", "one")
        self.settings = self.write("build/settings", "strict")

    def failures(self) -> list[str]:
        task = Task(
            name="unit",
            command=(sys.executable, "-c", TOOL, str(self.log), str(self.watched)),
            dependencies=("echo", f"unit.o: \\\n {self.watched}"),
            directory=pathlib.Path(self.project.root),
        )
        return Cache(self.project, "test", [self.settings]).failures([task])

    def runs(self) -> int:
        return len(self.log.read_text().splitlines())

    def test_a_passed_unit_runs_again_only_after_a_change(self) -> None:
        self.assertEqual([], self.failures())
        self.assertEqual([], self.failures())
        self.assertEqual(1, self.runs())

        self.watched.write_text("two")
        self.assertEqual([], self.failures())
        self.assertEqual(2, self.runs())

        self.settings.write_text("lax")
        self.assertEqual([], self.failures())
        self.assertEqual(3, self.runs())

    def test_a_failure_is_never_remembered_as_passed(self) -> None:
        self.watched.write_text("bad")
        for _ in range(2):
            self.assertEqual(["unit\nbad content"], self.failures())
        self.assertEqual(2, self.runs())
