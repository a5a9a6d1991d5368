"""Random operations on models: random_operations.py COUNT [SEED]

Whatever a program does in whatever order, the answer is a value or an exception of Python, and the lists
behave as those of Python do.
"""

import functools
import gc
import random
import sys
import threading

import velum

EXPECTED = (velum.Error, TypeError, ValueError, IndexError, AttributeError, OverflowError)


def concrete():
    model = velum.Model()
    found = []
    for value in vars(velum).values():
        if isinstance(value, type) and issubclass(value, velum.Object):
            try:
                value(model)
            except TypeError:
                continue
            found.append(value)
    return found


CLASSES = concrete()


@functools.cache
def names(of):
    return [n for n in dir(of) if isinstance(getattr(of, n), velum.Property)]


class Player:
    """Keeps some models and handles, drops them at random, and does what comes."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.models = [velum.Model()]
        self.handles = []
        self.lists = []
        self.open = []
        self.observations = []
        self.actions = [
            *[self.create, self.set, self.get] * 6,
            *[self.list_action] * 6,
            *[self.branch, self.transaction, self.undo, self.forget, self.destroy] * 2,
            *[self.merge, self.show, self.end_model, self.new_model, self.observe, self.elsewhere],
        ]

    def pick(self, things):
        return self.random.choice(things) if things else None

    def keep(self, things, new, most=60):
        things.append(new)
        if len(things) > most:
            things.pop(self.random.randrange(len(things)))

    def create(self):
        made = self.pick(CLASSES)(self.pick(self.models))
        self.keep(self.handles, made)

    def value(self):
        return self.random.choice(
            [
                lambda: self.random.randrange(-5, 5),
                lambda: self.random.random(),
                lambda: self.random.random() < 0.5,
                lambda: self.random.choice(["", "x", "8|bit", "1.5|ms", "\udc80", None]),
                lambda: self.random.choice(list(velum.DataSizeUnitKind)),
                lambda: [self.pick(self.handles) for _ in range(self.random.randrange(4))],
                lambda: self.pick(self.lists),
                *[lambda: self.pick(self.handles)] * 12,
            ]
        )()

    def set(self):
        if handle := self.pick(self.handles):
            name = self.random.choice(names(type(handle)))
            if self.random.random() < 0.1:
                delattr(handle, name)
            else:
                setattr(handle, name, self.value())

    def get(self):
        if handle := self.pick(self.handles):
            value = getattr(handle, self.random.choice(names(type(handle))))
            if isinstance(value, velum.List):
                self.keep(self.lists, value, 20)
            elif isinstance(value, velum.Object):
                self.keep(self.handles, value)

    def list_action(self):
        values = self.pick(self.lists)
        if values is None:
            return
        before = list(values)
        i, j = (self.random.randrange(-4, 5) for _ in range(2))
        new = self.value()
        action = self.random.choice(
            [
                lambda x: x.append(new),
                lambda x: x.insert(i, new),
                lambda x: x.__setitem__(i, new),
                lambda x: x.__delitem__(i),
                lambda x: x.__delitem__(slice(i, j)),
                lambda x: x.__setitem__(slice(i, j), [new]),
                lambda x: x.__setitem__(slice(i, j, -1), [new]),
                lambda x: x.extend([new] if i else before),
                lambda x: x.reverse(),
                lambda x: x.pop(i),
                lambda x: x.remove(new),
                lambda x: x.clear(),
            ]
        )
        try:
            action(values)
        except EXPECTED:
            assert list(values) == before, "what is refused changes nothing"
            return
        action(before)
        after = list(values)
        # The library may move an object that has one place only; values stay as Python has them.
        if not any(isinstance(each, velum.Object) for each in [*before, *after]):
            assert after == before, (after, before)

    def branch(self):
        model = self.pick(self.models)
        draft = model.branch()
        self.keep(self.models, draft, 6)
        if handle := self.pick(self.handles):
            self.keep(self.handles, handle.in_branch(draft))

    def merge(self):
        self.pick(self.models).merge(self.pick(self.models))

    def transaction(self):
        if self.open and self.random.random() < 0.6:
            change = self.open.pop(self.random.randrange(len(self.open)))
            failed = self.random.random() < 0.3
            change.__exit__(ValueError if failed else None, None, None)
        else:
            change = self.pick(self.models).transaction()
            change.__enter__()
            self.keep(self.open, change, 3)

    def undo(self):
        model = self.pick(self.models)
        if self.random.random() < 0.2:
            model.undo_enabled = self.random.random() < 0.3
        (model.undo if self.random.random() < 0.5 else model.redo)()

    def observe(self):
        self.keep(self.observations, self.pick(self.models).observe(self.seen), 3)

    def seen(self, changes):
        """Reads whatever has changed."""
        for each in changes.changed:
            repr(each)
        for each in [*changes.created, *changes.destroyed]:
            self.keep(self.handles, each)

    def elsewhere(self):
        """Another thread can do nothing but drop what it has."""
        handle = self.pick(self.handles)
        values = self.pick(self.lists)
        refused = []

        def attempt(handle, values):
            for action in (lambda: getattr(handle, "name"), lambda: len(values), handle.destroy):
                try:
                    action()
                except EXPECTED:
                    refused.append(action)

        if handle is not None and values is not None:
            thread = threading.Thread(target=attempt, args=(handle, values))
            self.handles.remove(handle)
            self.lists.remove(values)
            del handle, values
            thread.start()
            thread.join()
            assert len(refused) == 3, refused

    def forget(self):
        for things in (self.handles, self.lists, self.open, self.observations):
            if things and self.random.random() < 0.3:
                things.pop(self.random.randrange(len(things)))
        if self.random.random() < 0.02:
            self.handles.clear()
            self.lists.clear()
            gc.collect()

    def destroy(self):
        if handle := self.pick(self.handles):
            handle.destroy()

    def show(self):
        for thing in (self.pick(self.handles), self.pick(self.models)):
            repr(thing)
        if handle := self.pick(self.handles):
            handle.describe()
            hash(handle)

    def end_model(self):
        if self.random.random() < 0.05:
            self.models.pop(self.random.randrange(len(self.models))).destroy()
        elif self.random.random() < 0.2:
            self.models.pop(self.random.randrange(len(self.models)))
        if not self.models:
            self.models.append(velum.Model())

    def new_model(self):
        if self.random.random() < 0.1:
            self.keep(self.models, velum.Model(), 6)

    def play(self, count):
        refused = 0
        for _ in range(count):
            try:
                self.random.choice(self.actions)()
            except EXPECTED:
                refused += 1
            if not self.models:
                self.models.append(velum.Model())
        return refused


def main(count, seed=1):
    refused = 0
    for part in range(0, count, 10_000):
        player = Player(seed + part)
        refused += player.play(min(10_000, count - part))
    print(f"{count} operations, {refused} refused")
    assert refused < count * 0.9


if __name__ == "__main__":
    main(*map(int, sys.argv[1:]))
