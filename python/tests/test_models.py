"""Models, transactions, branches, and how long everything lives."""

import gc
import subprocess
import sys
import textwrap
import threading
import unittest
import weakref

import velum


class Models(unittest.TestCase):
    def setUp(self):
        self.model = velum.Model()

    def test_a_model_holds_its_objects(self):
        integer = velum.Integer(self.model, "x")
        real = velum.FloatingPoint(self.model, "y")
        velum.Unit(self.model, "metre")
        self.assertEqual(self.model.objects(velum.Real), [integer, real])
        self.assertEqual(len(self.model.objects()), 3)
        self.assertIsNone(self.model.find(12345))
        with self.assertRaisesRegex(TypeError, "takes a class of velum, not int"):
            self.model.objects(int)
        with self.assertRaises(TypeError):
            self.model.objects("Integer")
        self.assertEqual(velum.Model("mine").uri, "mine")
        self.assertIn("3 objects", repr(self.model))
        self.assertEqual({self.model, integer.model}, {self.model})
        self.assertNotEqual(self.model, velum.Model())

    def test_a_transaction_is_one_step(self):
        self.model.undo_enabled = True
        with self.assertRaises(velum.Error):
            velum.Integer(self.model, "x")
        with self.model.transaction():
            integer = velum.Integer(self.model, "x")
        with self.model.transaction():
            integer.name = "y"
            integer.length = "8|bit"
        self.assertTrue(self.model.undo())
        self.assertEqual((integer.name, str(integer.length)), ("x", "32|bit"))
        self.assertTrue(self.model.redo())
        self.assertEqual((integer.name, str(integer.length)), ("y", "8|bit"))
        self.assertFalse(self.model.redo())
        self.assertTrue(self.model.undo() and self.model.undo())
        self.assertFalse(integer.exists)
        self.assertFalse(self.model.undo())

    def test_an_exception_takes_the_changes_back(self):
        integer = velum.Integer(self.model, "x")
        with self.assertRaises(ZeroDivisionError), self.model.transaction():
            integer.name = "y"
            velum.Unit(self.model, "metre")
            1 / 0  # noqa: B018
        self.assertEqual((integer.name, len(self.model.objects())), ("x", 1))
        with self.model.transaction() as change:
            integer.name = "y"
            change.rollback()
        with self.model.transaction() as change:
            integer.length = "8|bit"
            change.commit()
        self.assertEqual((integer.name, str(integer.length)), ("x", "8|bit"))
        with self.assertRaises(velum.Error), self.model.transaction() as change:
            change.commit()
            change.commit()
        with self.assertRaisesRegex(velum.Error, "isn't open"):
            self.model.transaction().commit()
        again = self.model.transaction()
        with again, self.assertRaisesRegex(velum.Error, "open already"):
            again.__enter__()
        with again:
            integer.name = "z"
        self.assertEqual(integer.name, "z")

    def test_a_branch_is_changed_by_itself_and_merged(self):
        integer = velum.Integer(self.model, "x")
        draft = self.model.branch()
        self.assertIsInstance(draft, velum.Branch)
        mine = integer.in_branch(draft)
        mine.name = "y"
        new = velum.Unit(draft, "metre")
        self.assertEqual((integer.name, mine.name), ("x", "y"))
        self.assertEqual(mine, integer)
        self.assertEqual((mine.model, draft.model), (draft, self.model))
        self.assertNotEqual(draft, self.model)
        self.assertEqual((len(self.model.objects()), len(draft.objects())), (1, 2))
        self.assertFalse(new.in_branch(self.model).exists)
        self.model.merge(draft)
        self.assertEqual((integer.name, len(self.model.objects())), ("y", 2))
        draft.remove()
        self.assertFalse(draft.exists)
        for action in (lambda: mine.name, draft.objects, draft.remove, lambda: self.model.merge(draft)):
            with self.assertRaises(velum.Error):
                action()
        with self.model.branch() as draft:
            integer.in_branch(draft).destroy()
        self.assertTrue(integer.exists)
        other = velum.Model()
        for action in (lambda: integer.in_branch(other), lambda: self.model.merge(other.branch())):
            with self.assertRaises(ValueError):
                action()
        with self.assertRaises(TypeError):
            integer.in_branch(integer)
        with self.assertRaises(TypeError):
            velum.Branch()

    def test_a_read_only_model_refuses_changes(self):
        integer = velum.Integer(self.model, "x")
        self.model.read_only = True
        with self.assertRaises(velum.Error):
            integer.name = "y"
        with self.assertRaises(velum.Error):
            velum.Unit(self.model, "metre")
        self.model.read_only = False
        integer.name = "y"
        self.assertEqual((self.model.read_only, integer.name), (False, "y"))

    def test_objects_of_two_models_meet(self):
        other = velum.Model()
        unit = velum.Unit(other, "metre")
        integer = velum.Integer(self.model, "x", unit=unit)
        del other, unit
        gc.collect()
        # The other model ended with the last that Python had of it.
        self.assertIsNone(integer.unit)


class Observers(unittest.TestCase):
    def setUp(self):
        self.model = velum.Model()
        self.seen = []

    def test_changes_are_reported_when_they_are_complete(self):
        integer = velum.Integer(self.model, "x")
        with self.model.observe(self.seen.append) as observation:
            with self.model.transaction():
                integer.name = "y"
                integer.length = "8|bit"
                unit = velum.Unit(self.model, "metre")
                self.assertEqual(self.seen, [])
            (changes,) = self.seen
            self.assertEqual((changes.created, changes.destroyed), ((unit,), ()))
            (change,) = changes.changed
            self.assertEqual(change.object, integer)
            sizes = velum.DataSize("32|bit"), velum.DataSize("8|bit")
            self.assertEqual(change.values, {"name": ("x", "y"), "length": sizes})
            integer.unit = unit
            self.assertEqual(self.seen[-1].changed[0].values, {"unit": (None, unit)})
            integer.external_id = "/x"
            self.assertEqual(self.seen[-1].changed[0].values, {"external_id": (None, "/x")})
            unit.destroy()
            self.assertEqual([each.exists for each in self.seen[-1].destroyed], [False])
            with self.assertRaises(ZeroDivisionError), self.model.transaction():
                integer.name = "z"
                1 / 0  # noqa: B018
            self.assertEqual(len(self.seen), 4)
            self.assertTrue(observation.is_active)
        integer.name = "w"
        self.assertEqual((len(self.seen), observation.is_active), (4, False))

    def test_both_ends_and_lists_are_reported(self):
        enumeration = velum.Enumeration(self.model, "e")
        literal = velum.EnumerationLiteral(self.model, "low")
        observation = self.model.observe(self.seen.append)
        enumeration.owned_literals.append(literal)
        values = {each.object: each.values for each in self.seen[0].changed}
        self.assertEqual(values[enumeration]["owned_literals"], ((), (literal,)))
        self.assertEqual(values[literal]["enumeration"], (None, enumeration))
        observation.stop()
        observation.stop()

    def test_a_branch_has_observers_of_its_own(self):
        integer = velum.Integer(self.model, "x")
        draft = self.model.branch()
        kept = draft.observe(self.seen.append)
        integer.in_branch(draft).name = "y"
        self.assertEqual(self.seen[0].changed[0].object.name, "y")
        draft.remove()
        self.assertFalse(kept.is_active)

    def test_what_the_function_raises_reaches_the_change(self):
        integer = velum.Integer(self.model, "x")

        def refuse(changes):
            raise LookupError(len(changes.changed))

        with self.model.observe(refuse):
            with self.assertRaisesRegex(LookupError, "1"):
                integer.name = "y"
            with self.assertRaises(LookupError), self.model.transaction():
                integer.name = "z"
        self.assertEqual(integer.name, "z")
        with self.model.observe(lambda changes: setattr(integer, "name", "w")):
            with self.assertRaises(velum.Error):
                integer.length = "8|bit"
        self.assertEqual(integer.name, "z")
        with self.assertRaisesRegex(TypeError, r"observe\(\) takes a function, not int"):
            self.model.observe(5)
        with self.assertRaises(TypeError):
            velum.Observation()

    def test_an_observation_ends_with_its_last_reference_in_a_circle_too(self):
        integer = velum.Integer(self.model, "x")

        class Holder:
            def __init__(holder, model, seen):
                holder.seen = seen
                holder.observation = model.observe(holder.see)

            def see(holder, changes):
                holder.seen.append(changes)

        holder = Holder(self.model, self.seen)
        integer.name = "y"
        ended = weakref.ref(holder)
        del holder
        gc.collect()
        self.assertIsNone(ended())
        integer.name = "z"
        self.assertEqual(len(self.seen), 1)

    def test_a_function_may_stop_its_own_observation(self):
        integer = velum.Integer(self.model, "x")
        kept = []
        kept.append(self.model.observe(lambda changes: kept.pop().stop()))
        integer.name = "y"
        integer.name = "z"
        self.assertEqual(kept, [])
        kept = self.model.observe(lambda changes: None)
        self.model.destroy()
        self.assertFalse(kept.is_active)


class Life(unittest.TestCase):
    def test_objects_keep_the_model(self):
        for keep in (
            lambda model: velum.Enumeration(model, "e"),
            lambda model: velum.Enumeration(model, "e").owned_literals,
            lambda model: model.branch(),
            lambda model: iter(velum.Enumeration(model, "e").owned_literals),
            lambda model: model.transaction(),
        ):
            model = velum.Model()
            uri = model.uri
            kept = keep(model)
            del model
            gc.collect()
            self.assertNotEqual(velum.Model().uri, uri, "the model is still there")
            del kept
            self.assertEqual(velum.Model().uri, uri, "the model ended")

    def test_a_destroyed_model_raises(self):
        model = velum.Model()
        enumeration = velum.Enumeration(model, "e")
        literals = enumeration.owned_literals
        branch = model.branch()
        model.destroy()
        model.destroy()
        self.assertFalse(model.exists or branch.exists or enumeration.exists)
        actions = (
            lambda: enumeration.name,
            lambda: setattr(enumeration, "name", "x"),
            lambda: enumeration.owned_literals[0],
            lambda: literals[0],
            lambda: literals.append(None),
            lambda: velum.Integer(model, "x"),
            lambda: velum.Integer(branch, "x"),
            enumeration.destroy,
            enumeration.describe,
            model.objects,
            model.branch,
            model.undo,
            lambda: model.transaction().__enter__(),
        )
        for number, action in enumerate(actions):
            with self.subTest(number), self.assertRaises((velum.Error, TypeError)):
                action()
        for shown in (model, branch, enumeration):
            self.assertIn("gone", repr(shown))

    def test_a_model_ends_in_an_open_transaction(self):
        model = velum.Model()
        with model.transaction():
            velum.Integer(model, "x")
            model.destroy()
        open_one = velum.Model().transaction()
        open_one.__enter__()
        del open_one
        gc.collect()

    def test_handles_in_circles_are_collected(self):
        class Holder:
            pass

        model = velum.Model()
        holder = Holder()
        holder.model, holder.object = model, velum.Enumeration(model, "e")
        holder.list, holder.self = holder.object.owned_literals, holder
        ended = weakref.ref(holder)
        uri = model.uri
        del holder, model
        self.assertIsNotNone(ended())
        gc.collect()
        self.assertIsNone(ended())
        self.assertEqual(velum.Model().uri, uri)

    def test_another_thread_is_refused(self):
        model = velum.Model()
        enumeration = velum.Enumeration(model, "e")
        literals, branch = enumeration.owned_literals, model.branch()
        unit, change = velum.Unit(model, "u"), model.transaction()
        observation = model.observe(print)
        refused = []
        actions = (
            lambda: enumeration.id,
            lambda: enumeration.exists,
            lambda: enumeration.container,
            lambda: setattr(enumeration, "external_id", "/x"),
            lambda: enumeration.in_branch(branch),
            enumeration.destroy,
            enumeration.describe,
            lambda: literals[0],
            lambda: len(literals),
            lambda: list(literals),
            lambda: literals.append(None),
            literals.clear,
            lambda: velum.Integer(model, "x"),
            lambda: velum.Integer(branch, "x"),
            lambda: velum.Integer(velum.Model(), "x", unit=unit),
            lambda: velum.Enumeration(velum.Model()).owned_literals.extend(literals),
            model.objects,
            lambda: model.find(1),
            lambda: model.exists,
            lambda: model.uri,
            lambda: model.undo_enabled,
            lambda: setattr(model, "undo_enabled", True),
            lambda: model.read_only,
            lambda: setattr(model, "read_only", True),
            model.undo,
            model.redo,
            model.branch,
            lambda: model.merge(branch),
            branch.remove,
            model.transaction,
            change.__enter__,
            lambda: model.observe(print),
            lambda: observation.is_active,
            observation.stop,
            lambda: velum.read([], into=model),
            lambda: velum.write(model, "/nowhere/x.arxml"),
            lambda: velum.write([enumeration], "/nowhere/x.arxml"),
            lambda: velum.save(model, "/nowhere/x.db"),
            lambda: velum.diff(model, branch),
            lambda: velum.check(model),
            model.destroy,
        )

        def try_all():
            for action in actions:
                try:
                    action()
                except velum.Error as error:
                    refused.append("belongs to another thread" in str(error))
            refused.append("of another thread" in repr(enumeration))
            refused.append("of another thread" in repr(model))
            refused.append(velum.Integer(velum.Model(), "mine").name == "mine")

        thread = threading.Thread(target=try_all)
        thread.start()
        thread.join()
        self.assertEqual(refused, [True] * (len(actions) + 3))
        self.assertEqual(enumeration.name, "e")

    def test_the_last_reference_may_go_in_another_thread(self):
        kept = [velum.Enumeration(velum.Model(), "e")]
        uri = kept[0].model.uri
        thread = threading.Thread(target=kept.clear)
        thread.start()
        thread.join()
        self.assertEqual(velum.Model().uri, uri)

    def test_the_interpreter_ends_in_any_order(self):
        programs = {
            "globals": "x = velum.Integer(velum.Model(), 'x')",
            "circle": "class H: pass\nh = H(); h.h = h; h.x = velum.Integer(velum.Model(), 'x')",
            "open transaction": "m = velum.Model(); t = m.transaction(); t.__enter__()\n"
            "x = velum.Integer(m, 'x')",
            "atexit": "import atexit\nm = velum.Model(); e = velum.Enumeration(m, 'e')\n"
            "atexit.register(lambda: print(e.owned_literals, m))",
            "last words": "class D:\n  def __init__(s): s.x = velum.Integer(velum.Model(), 'x')\n"
            "  def __del__(s): s.x.name = 'y'; assert s.x.name == 'y'\nd = D()\n"
            "import builtins; builtins.d = D()",
            "destroyed": "m = velum.Model(); x = velum.Integer(m, 'x'); m.destroy()",
            "iterator": "e = velum.Enumeration(velum.Model(), 'e')\n"
            "i = iter(e.owned_literals); l = e.owned_literals; b = e.model.branch()",
            "thread": "import threading, time\nm = velum.Model(); x = velum.Integer(m, 'x')\n"
            "threading.Thread(target=lambda: (time.sleep(0.05), repr(x))).start()",
            "derived": "class C(velum.Integer): pass\nc = C(velum.Model(), 'c'); c.c = c",
        }
        for name, program in programs.items():
            with self.subTest(name):
                ended = subprocess.run(
                    [sys.executable, "-c", "import velum\n" + textwrap.dedent(program)],
                    capture_output=True,
                    text=True,
                    check=False,
                )
                self.assertEqual((ended.returncode, ended.stderr), (0, ""))


if __name__ == "__main__":
    unittest.main()
