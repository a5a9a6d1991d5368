// The kernel's own costs: handles, reads and writes in root and branch, transactions, undo, and the
// life of objects in models of different sizes.

#include "qob/qob/transaction.h"
#include "support/comparison.h"
#include "support/plain.h"
#include "thing.h"

#include <algorithm>
#include <random>

namespace {

using benchmark::DoNotOptimize;
using benchmark::State;
using sample::Thing;

QOB::Model newModel() {
    return QOB::NSInterface::FactoryIntf::createNewModel();
}

/// A model that ends with its scope.
class Scope {
public:
    explicit Scope(std::int64_t count = 0) : model(newModel()) {
        for (std::int64_t i = 0; i < count; ++i) {
            things.push_back(Thing::create(model, static_cast<int>(i)));
        }
    }
    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;
    ~Scope() { model.destroy(); }

    QOB::Model model;
    std::vector<Thing> things;
};

class PlainScope {
public:
    explicit PlainScope(std::int64_t count = 0) {
        for (std::int64_t i = 0; i < count; ++i) {
            model.create(static_cast<int>(i));
        }
    }
    plain::Model model;
};

// Handles and values ---------------------------------------------------------------------------

void copyHandle(State& state, std::int64_t) {
    Scope const scope(1);
    for (auto _ : state) {
        Thing const copy = scope.things[0];
        DoNotOptimize(copy.get());
    }
}
void copyHandlePlain(State& state, std::int64_t) {
    PlainScope const scope(1);
    for (auto _ : state) {
        plain::Handle const copy = scope.model.objects[0];
        DoNotOptimize(copy.get());
    }
}

void getHot(State& state, std::int64_t) {
    Scope const scope(1);
    for (auto _ : state) {
        DoNotOptimize(scope.things[0].getNumber());
    }
}
void getHotPlain(State& state, std::int64_t) {
    PlainScope const scope(1);
    for (auto _ : state) {
        DoNotOptimize(scope.model.objects[0]->getNumber());
    }
}

void getInUntouchedBranch(State& state, std::int64_t) {
    Scope const scope(1);
    Thing const inBranch = scope.things[0].in(scope.model.createDeviant());
    for (auto _ : state) {
        DoNotOptimize(inBranch.getNumber());
    }
}
void getInChangedBranch(State& state, std::int64_t) {
    Scope const scope(1);
    Thing const inBranch = scope.things[0].in(scope.model.createDeviant());
    inBranch.setNumber(5);
    for (auto _ : state) {
        DoNotOptimize(inBranch.getNumber());
    }
}

template <class Objects>
std::vector<std::size_t> randomOrder(Objects const& objects) {
    std::vector<std::size_t> order(objects.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    return order;
}

void getRandom(State& state, std::int64_t count) {
    Scope const scope(count);
    auto const order = randomOrder(scope.things);
    std::size_t next = 0;
    for (auto _ : state) {
        DoNotOptimize(scope.things[order[next]].getNumber());
        next = next + 1 == order.size() ? 0 : next + 1;
    }
}
void getRandomPlain(State& state, std::int64_t count) {
    PlainScope const scope(count);
    auto const order = randomOrder(scope.model.objects);
    std::size_t next = 0;
    for (auto _ : state) {
        DoNotOptimize(scope.model.objects[order[next]]->getNumber());
        next = next + 1 == order.size() ? 0 : next + 1;
    }
}

void setHot(State& state, std::int64_t) {
    Scope const scope(1);
    int value = 0;
    for (auto _ : state) {
        scope.things[0].setNumber(++value & 0xFFFF);
    }
}
void setHotPlain(State& state, std::int64_t) {
    PlainScope const scope(1);
    int value = 0;
    for (auto _ : state) {
        scope.model.objects[0]->setNumber(++value & 0xFFFF);
    }
}

void setSame(State& state, std::int64_t) {
    Scope const scope(1);
    scope.things[0].setNumber(7);
    for (auto _ : state) {
        scope.things[0].setNumber(7);
    }
}
void setSamePlain(State& state, std::int64_t) {
    PlainScope const scope(1);
    scope.model.objects[0]->setNumber(7);
    for (auto _ : state) {
        scope.model.objects[0]->setNumber(7);
    }
}

// Branches -------------------------------------------------------------------------------------

void branchLife(State& state, std::int64_t count) {
    Scope const scope(count);
    for (auto _ : state) {
        scope.model.removeDeviant(scope.model.createDeviant());
    }
}
void branchLifePlain(State& state, std::int64_t) {
    for (auto _ : state) {
        auto const branch = std::make_unique<plain::Branch>();
        DoNotOptimize(branch.get());
    }
}

void firstWriteInBranch(State& state, std::int64_t count) {
    Scope const scope(count);
    while (state.KeepRunningBatch(count)) {
        QOB::Deviant const branch = scope.model.createDeviant();
        for (Thing const& thing : scope.things) {
            thing->setNumber(branch, -1);
        }
        scope.model.removeDeviant(branch);
    }
}
void firstWriteInBranchPlain(State& state, std::int64_t count) {
    PlainScope const scope(count);
    while (state.KeepRunningBatch(count)) {
        plain::Branch branch;
        for (plain::Handle const& object : scope.model.objects) {
            branch.setNumber(object, -1);
        }
    }
}

// Transactions: per object that is touched -----------------------------------------------------

void writeAll(Scope const& scope, int value) {
    for (Thing const& thing : scope.things) {
        thing.setNumber(value);
    }
}
void writeAll(PlainScope& scope, int value) {
    for (plain::Handle const& object : scope.model.objects) {
        scope.model.setNumber(object, value);
    }
}

void transactionCommit(State& state, std::int64_t count) {
    Scope const scope(count);
    int value = -1;
    while (state.KeepRunningBatch(count)) {
        QOB::Transaction transaction(scope.model);
        writeAll(scope, --value);
        transaction.commit();
    }
}
void transactionCommitPlain(State& state, std::int64_t count) {
    PlainScope scope(count);
    scope.model.recording = true;
    int value = -1;
    while (state.KeepRunningBatch(count)) {
        writeAll(scope, --value);
        scope.model.commit();
        scope.model.undo.clear();
    }
}

void transactionRollback(State& state, std::int64_t count) {
    Scope const scope(count);
    while (state.KeepRunningBatch(count)) {
        QOB::Transaction transaction(scope.model);
        writeAll(scope, -1);
        transaction.rollback();
    }
}
void transactionRollbackPlain(State& state, std::int64_t count) {
    PlainScope scope(count);
    scope.model.recording = true;
    while (state.KeepRunningBatch(count)) {
        writeAll(scope, -1);
        scope.model.rollback();
    }
}

void undoRedo(State& state, std::int64_t count) {
    Scope const scope(count);
    scope.model.setUndoEnabled(true);
    QOB::Transaction transaction(scope.model);
    writeAll(scope, -1);
    transaction.commit();
    while (state.KeepRunningBatch(2 * count)) {
        scope.model.undo();
        scope.model.redo();
    }
}
void undoRedoPlain(State& state, std::int64_t count) {
    PlainScope scope(count);
    scope.model.recording = true;
    writeAll(scope, -1);
    scope.model.commit();
    while (state.KeepRunningBatch(2 * count)) {
        scope.model.swapStates(scope.model.undo.back());
        scope.model.swapStates(scope.model.undo.back());
    }
}

// Life of objects ------------------------------------------------------------------------------

void create(State& state, std::int64_t count) {
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        {
            Scope scope;
            scope.things.reserve(static_cast<std::size_t>(count));
            state.ResumeTiming();
            for (std::int64_t i = 0; i < count; ++i) {
                scope.things.push_back(Thing::create(scope.model, static_cast<int>(i)));
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}
void createPlain(State& state, std::int64_t count) {
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        {
            PlainScope scope;
            std::vector<plain::Handle> handles;
            handles.reserve(static_cast<std::size_t>(count));
            state.ResumeTiming();
            for (std::int64_t i = 0; i < count; ++i) {
                handles.push_back(scope.model.create(static_cast<int>(i)));
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

/// One object of a model of `count`, in random order; made anew behind the clock's back.
void destroyOne(State& state, std::int64_t count) {
    Scope scope(count);
    auto const order = randomOrder(scope.things);
    std::size_t next = 0;
    while (state.KeepRunningBatch(100)) {
        for (std::size_t i = 0; i < 100; ++i) {
            Thing& thing = scope.things[order[(next + i) % order.size()]];
            thing.destroy();
            thing = Thing();
        }
        state.PauseTiming();
        for (std::size_t i = 0; i < 100; ++i) {
            scope.things[order[(next + i) % order.size()]] = Thing::create(scope.model, 1);
        }
        next = (next + 100) % order.size();
        state.ResumeTiming();
    }
}
void destroyOnePlain(State& state, std::int64_t count) {
    PlainScope scope(count);
    std::mt19937 random(7);
    while (state.KeepRunningBatch(10)) {
        for (int i = 0; i < 10; ++i) {
            scope.model.destroy(scope.model.objects[random() % scope.model.objects.size()].get());
        }
        state.PauseTiming();
        for (int i = 0; i < 10; ++i) {
            scope.model.create(1);
        }
        state.ResumeTiming();
    }
}

void addRows() {
    using comparison::add;
    add("copy and drop a handle", copyHandle, copyHandlePlain, 0);
    add("get, hot", getHot, getHotPlain, 3);
    add("get, hot, in a branch without a state", getInUntouchedBranch, getHotPlain, 4);
    add("get, hot, in a branch with a state", getInChangedBranch, getHotPlain, 0);
    add("get, random order", getRandom, getRandomPlain, 2, {1'000'000});
    add("set", setHot, setHotPlain, 3);
    add("set to the present value", setSame, setSamePlain, 2);
    add("branch, made and removed, objects", branchLife, branchLifePlain, 0, {10, 100'000});
    add("first write in a branch, objects",
        firstWriteInBranch,
        firstWriteInBranchPlain,
        3,
        {1, 1000, 100'000});
    add("transaction: write, commit, objects",
        transactionCommit,
        transactionCommitPlain,
        6,
        {1, 1000, 100'000});
    add("transaction: write, rollback, objects",
        transactionRollback,
        transactionRollbackPlain,
        6,
        {1, 1000, 100'000});
    add("undo or redo, objects", undoRedo, undoRedoPlain, 3, {1, 1000, 100'000});
    add("create, objects", create, createPlain, 0, {1000, 100'000, 1'000'000});
    add("destroy one of", destroyOne, destroyOnePlain, 0, {1000, 100'000, 1'000'000});
}

} // namespace

int main(int argc, char** argv) {
    addRows();
    return comparison::run(argc, argv);
}
