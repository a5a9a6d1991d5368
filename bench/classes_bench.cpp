// What a host pays for the metaclasses as they are used together: objects of ten properties, their
// associations, what they contain, transactions, undo and branches over them.

#include "qob/qob/observer.h"
#include "qob/qob/transaction.h"
#include "support/comparison.h"
#include "support/plaintypes.h"

#include <algorithm>
#include <any>
#include <cstddef>
#include <functional>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>
#include <velum_types/types.h>

namespace {

namespace foundation = Zorvane::metamodel::foundation;
namespace types = Zorvane::metamodel::types;

using benchmark::DoNotOptimize;
using benchmark::State;

/// A model that ends with its scope.
class Scope {
public:
    explicit Scope(std::int64_t count = 0)
        : model(types::NSInterface::FactoryIntf::createNewModel()) {
        QOB::String const name("an integer type");
        for (std::int64_t i = 0; i < count; ++i) {
            integers.push_back(types::Integer::create(model, name));
        }
    }
    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;
    ~Scope() { model.destroy(); }

    QOB::Model model;
    std::vector<types::Integer> integers;
};

using plain::TypeHandle;

std::vector<TypeHandle> plainTypes(std::int64_t count) {
    std::vector<TypeHandle> result;
    for (std::int64_t i = 0; i < count; ++i) {
        result.push_back(plain::makeType("an integer type"));
    }
    return result;
}

std::vector<std::size_t> shuffled(std::size_t count) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::shuffle(order.begin(), order.end(), std::mt19937(17));
    return order;
}

// Life -------------------------------------------------------------------------------------------

void create(State& state, std::int64_t count) {
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        {
            Scope scope;
            QOB::String const name("an integer type");
            scope.integers.reserve(static_cast<std::size_t>(count));
            state.ResumeTiming();
            for (std::int64_t i = 0; i < count; ++i) {
                scope.integers.push_back(types::Integer::create(scope.model, name));
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
            std::vector<TypeHandle> model;
            model.reserve(static_cast<std::size_t>(count));
            state.ResumeTiming();
            for (std::int64_t i = 0; i < count; ++i) {
                model.push_back(plain::makeType("an integer type"));
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

/// Objects whose ten properties are set. A method serves a hundred of them.
void fill(Scope& scope, std::int64_t count) {
    QOB::String const name("an integer type");
    types::CompuMethod method;
    for (std::int64_t i = 0; i < count; ++i) {
        if (i % 100 == 0) {
            method = types::CompuMethod::create(scope.model, "%d", "method");
        }
        types::Integer const each = types::Integer::create(scope.model, name);
        each.setVisibility(foundation::VisibilityKind::ProtectedVisibility);
        each.setLength({16, types::DataSizeUnitKind::bit});
        each.setMinValue(-5);
        each.setMaxValue(5);
        each.setIsSigned(false);
        each.setIsMinOpen(true);
        each.setIsMaxOpen(true);
        each.setIsApplication(true);
        each.setCompuMethod(method);
        scope.integers.push_back(each);
    }
}
struct PlainScope {
    std::vector<TypeHandle> types;
    std::vector<std::unique_ptr<plain::Method>> methods;
};
void fill(PlainScope& scope, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) {
        if (i % 100 == 0) {
            scope.methods.push_back(std::make_unique<plain::Method>());
        }
        TypeHandle const each(new plain::Type());
        each->setName("an integer type");
        each->setVisibility(1);
        each->setLength(16, 0);
        each->setMinimum(-5);
        each->setMaximum(5);
        each->setSigned(false);
        each->setMinimumOpen(true);
        each->setMaximumOpen(true);
        each->setApplication(true);
        plain::setMethod(each, scope.methods.back().get());
        scope.types.push_back(each);
    }
}
template <class Made>
void createFull(State& state, std::int64_t count) {
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        {
            Made scope;
            state.ResumeTiming();
            fill(scope, count);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}
/// For the row of bytes: what is made stays until the function returned is called.
template <class Made>
std::function<void()> makeFull(std::int64_t count) {
    auto const scope = std::make_shared<Made>();
    fill(*scope, count);
    return [kept = scope]() mutable { kept.reset(); };
}

/// Objects in random order, made anew behind the clock's back.
void destroy(State& state, std::int64_t count) {
    constexpr std::size_t batch = 100;
    Scope scope(count);
    std::vector<std::size_t> const order = shuffled(scope.integers.size());
    std::size_t next = 0;
    while (state.KeepRunningBatch(batch)) {
        for (std::size_t i = 0; i != batch; ++i) {
            types::Integer& picked = scope.integers[order[(next + i) % order.size()]];
            picked.destroy();
            picked = types::Integer();
        }
        state.PauseTiming();
        for (std::size_t i = 0; i != batch; ++i) {
            scope.integers[order[next++ % order.size()]] =
                types::Integer::create(scope.model, "an integer type");
        }
        state.ResumeTiming();
    }
}
void destroyPlain(State& state, std::int64_t count) {
    constexpr std::size_t batch = 10;
    std::vector<TypeHandle> types = plainTypes(count);
    std::mt19937 random(17);
    while (state.KeepRunningBatch(batch)) {
        for (std::size_t i = 0; i != batch; ++i) {
            plain::Type const* const picked = types[random() % types.size()].get();
            types.erase(std::ranges::find_if(
                types, [&](TypeHandle const& each) { return each.get() == picked; }));
        }
        state.PauseTiming();
        for (std::size_t i = 0; i != batch; ++i) {
            types.push_back(plain::makeType("an integer type"));
        }
        state.ResumeTiming();
    }
}

// Values -----------------------------------------------------------------------------------------

void getAtRandom(State& state, std::int64_t count) {
    Scope const scope(count);
    std::vector<std::size_t> const order = shuffled(scope.integers.size());
    std::size_t next = 0;
    for (auto _ : state) {
        DoNotOptimize(scope.integers[order[next++ % order.size()]].isSigned());
    }
}
void getAtRandomPlain(State& state, std::int64_t count) {
    std::vector<TypeHandle> const types = plainTypes(count);
    std::vector<std::size_t> const order = shuffled(types.size());
    std::size_t next = 0;
    for (auto _ : state) {
        DoNotOptimize(types[order[next++ % order.size()]]->isSigned());
    }
}

// By number and by name, as generic tools read and write. Writes alternate between two values.

constexpr unsigned SignedId = 2;
constexpr unsigned MinimumId = 1;
constexpr unsigned PlainSignedId = 7;
constexpr unsigned PlainMinimumId = 5;

auto const& ofIntegers = types::NSInterface::IntegerIntf::sIntrospectiveMethods;
auto const& ofReals = types::NSInterface::RealIntf::sIntrospectiveMethods;

/// One integer type, as the functions of its class take it.
class One : public Scope {
public:
    One() : Scope(1) { integer.setMinValue(1.5); }

    types::Integer const& integer = integers.front();
    QOB::Object const object = integer;
    QOB::Deviant const deviant = model.getDeviant();
    QOB::Object const values[2] = {QOB::Boolean(false), QOB::Boolean(true)};
    QOB::String const name = "IsSigned";
};
/// And its counterpart.
struct PlainOne {
    TypeHandle const type = plain::makeType("an integer type");
    std::any const values[2] = {false, true};
    std::string const name = "IsSigned";
};

void typedGet(State& state, std::int64_t) {
    One const one;
    for (auto _ : state) {
        DoNotOptimize(one.integer.isSigned());
    }
}
template <bool Changes>
void typedSet(State& state, std::int64_t) {
    One const one;
    bool value = false;
    for (auto _ : state) {
        one.integer.setIsSigned(value);
        value = Changes ? !value : value;
    }
}
void typedGetPlain(State& state, std::int64_t) {
    PlainOne const one;
    for (auto _ : state) {
        DoNotOptimize(one.type->isSigned());
    }
}
template <bool Changes>
void typedSetPlain(State& state, std::int64_t) {
    PlainOne const one;
    bool value = false;
    for (auto _ : state) {
        one.type->setSigned(value);
        value = Changes ? !value : value;
    }
}

template <auto& Methods, unsigned Id>
void getById(State& state, std::int64_t) {
    One const one;
    for (auto _ : state) {
        DoNotOptimize(Methods.getSingleValued(one.object.get(), one.deviant, Id));
    }
}
template <unsigned Id>
void getByIdPlain(State& state, std::int64_t) {
    PlainOne const one;
    for (auto _ : state) {
        DoNotOptimize(one.type->get(Id));
    }
}
void setById(State& state, std::int64_t) {
    One const one;
    std::size_t next = 0;
    for (auto _ : state) {
        ofIntegers.setSingleValued(one.object.get(), one.deviant, SignedId, one.values[next++ % 2]);
    }
}
void setByIdPlain(State& state, std::int64_t) {
    PlainOne const one;
    std::size_t next = 0;
    for (auto _ : state) {
        one.type->set(PlainSignedId, one.values[next++ % 2]);
    }
}
void getByName(State& state, std::int64_t) {
    One const one;
    for (auto _ : state) {
        DoNotOptimize(one.integer.getOne(one.name));
    }
}
void getByNamePlain(State& state, std::int64_t) {
    PlainOne const one;
    for (auto _ : state) {
        DoNotOptimize(one.type->get(plain::Type::idOf(one.name)));
    }
}
void setByName(State& state, std::int64_t) {
    One const one;
    std::size_t next = 0;
    for (auto _ : state) {
        one.integer.setOrAdd(one.name, one.values[next++ % 2]);
    }
}
void setByNamePlain(State& state, std::int64_t) {
    PlainOne const one;
    std::size_t next = 0;
    for (auto _ : state) {
        one.type->set(plain::Type::idOf(one.name), one.values[next++ % 2]);
    }
}

/// One transaction over all objects, each written once. The step before it stays undoable.
void commitAgainAndAgain(State& state, Scope const& scope) {
    scope.model.setUndoEnabled(true);
    bool value = false;
    while (state.KeepRunningBatch(static_cast<std::int64_t>(scope.integers.size()))) {
        QOB::Transaction transaction(scope.model);
        for (types::Integer const& each : scope.integers) {
            each.setIsSigned(value);
        }
        transaction.commit();
        value = !value;
    }
}

void setInTransaction(State& state, std::int64_t count) {
    commitAgainAndAgain(state, Scope(count));
}

/// Asks for the new value of each property.
class Listener : public QOB::Observer {
public:
    void changed(QOB::Changes const& changes) override {
        for (QOB::ObjectChange const& change : changes.changed()) {
            for (QOB::ImmutableProperty const& property : change.properties()) {
                DoNotOptimize(change.newValues(property).data());
            }
        }
    }
};
void setInTransactionObserved(State& state, std::int64_t count) {
    Scope const scope(count);
    Listener listener;
    listener.observe(scope.model);
    commitAgainAndAgain(state, scope);
}

void setObserved(State& state, std::int64_t count) {
    Scope const scope(count);
    Listener listener;
    listener.observe(scope.model);
    bool value = false;
    while (state.KeepRunningBatch(count)) {
        for (types::Integer const& each : scope.integers) {
            each.setIsSigned(value);
        }
        value = !value;
    }
}
void setUnobserved(State& state, std::int64_t count) {
    Scope const scope(count);
    bool value = false;
    while (state.KeepRunningBatch(count)) {
        for (types::Integer const& each : scope.integers) {
            each.setIsSigned(value);
        }
        value = !value;
    }
}
void setInTransactionPlain(State& state, std::int64_t count) {
    std::vector<TypeHandle> const types = plainTypes(count);
    plain::Journal step;
    bool value = false;
    while (state.KeepRunningBatch(count)) {
        plain::Journal journal;
        for (TypeHandle const& each : types) {
            journal.save(each);
            each->setSigned(value);
        }
        value = !value;
        step = std::move(journal);
    }
}

void undo(State& state, std::int64_t count) {
    Scope const scope(count);
    scope.model.setUndoEnabled(true);
    {
        QOB::Transaction transaction(scope.model);
        for (types::Integer const& each : scope.integers) {
            each.setIsSigned(false);
        }
        transaction.commit();
    }
    while (state.KeepRunningBatch(2 * count)) {
        scope.model.undo();
        scope.model.redo();
    }
}
void undoPlain(State& state, std::int64_t count) {
    std::vector<TypeHandle> const types = plainTypes(count);
    plain::Journal journal;
    for (TypeHandle const& each : types) {
        journal.save(each);
        each->setSigned(false);
    }
    while (state.KeepRunningBatch(2 * count)) {
        journal.exchange();
        journal.exchange();
    }
}

/// A branch that changes one of a hundred objects, made and removed.
void branch(State& state, std::int64_t count) {
    Scope const scope(count);
    while (state.KeepRunningBatch(count / 100)) {
        QOB::Deviant const deviant = scope.model.createDeviant();
        for (std::size_t i = 0; i < scope.integers.size(); i += 100) {
            types::Integer const inBranch(scope.integers[i].get(), deviant);
            inBranch.setIsSigned(false);
        }
        scope.model.removeDeviant(deviant);
    }
}
void branchPlain(State& state, std::int64_t count) {
    std::vector<TypeHandle> const types = plainTypes(count);
    while (state.KeepRunningBatch(count / 100)) {
        plain::TypeBranch changes;
        for (std::size_t i = 0; i < types.size(); i += 100) {
            changes.stateOf(types[i]).isSigned = false;
        }
    }
}

// Associations and containment -------------------------------------------------------------------

/// An integer type goes to and fro between two computation methods that serve `count` others each.
void move(State& state, std::int64_t count) {
    Scope const scope(2 * count + 1);
    types::CompuMethod const methods[] = {types::CompuMethod::create(scope.model, "%d", "first"),
                                          types::CompuMethod::create(scope.model, "%d", "second")};
    for (std::size_t i = 0; i < scope.integers.size(); ++i) {
        scope.integers[i].setCompuMethod(methods[i % 2]);
    }
    types::Integer const& moved = scope.integers[scope.integers.size() / 2];
    std::size_t next = 0;
    for (auto _ : state) {
        moved.setCompuMethod(methods[next++ % 2]);
    }
}
void movePlain(State& state, std::int64_t count) {
    std::vector<TypeHandle> const types = plainTypes(2 * count + 1);
    plain::Method methods[2];
    for (std::size_t i = 0; i < types.size(); ++i) {
        plain::setMethod(types[i], &methods[i % 2]);
    }
    TypeHandle const& moved = types[types.size() / 2];
    std::size_t next = 0;
    for (auto _ : state) {
        plain::setMethod(moved, &methods[next++ % 2]);
    }
}

/// Children are added until there are `count`, and taken out again from the front; the time is that
/// of the one or of the other.
template <bool Adding, class Fill, class Drain>
void fillAndDrain(State& state, std::int64_t count, Fill const& fill, Drain const& drain) {
    while (state.KeepRunningBatch(count)) {
        if constexpr (Adding) {
            fill();
            state.PauseTiming();
            drain();
            state.ResumeTiming();
        } else {
            state.PauseTiming();
            fill();
            state.ResumeTiming();
            drain();
        }
    }
}
template <bool Adding>
void children(State& state, std::int64_t count) {
    Scope const scope;
    types::Enumeration const owner = types::Enumeration::create(scope.model, "owner");
    std::vector<types::EnumerationLiteral> literals;
    for (std::int64_t i = 0; i < count; ++i) {
        literals.push_back(types::EnumerationLiteral::create(scope.model));
    }
    auto const list = owner.getOwnedLiterals();
    auto const fill = [&] {
        for (types::EnumerationLiteral const& each : literals) {
            list.push_back(each);
        }
    };
    auto const drain = [&] {
        while (!list.empty()) {
            list.pop_front();
        }
    };
    fillAndDrain<Adding>(state, count, fill, drain);
}
template <bool Adding>
void childrenPlain(State& state, std::int64_t count) {
    std::vector<TypeHandle> const types = plainTypes(count);
    plain::Method owner;
    auto const fill = [&] {
        for (TypeHandle const& each : types) {
            plain::setMethod(each, &owner);
        }
    };
    auto const drain = [&] {
        while (!owner.types.empty()) {
            owner.types.front()->state.method = nullptr;
            owner.types.erase(owner.types.begin());
        }
    };
    fillAndDrain<Adding>(state, count, fill, drain);
}

} // namespace

int main(int argc, char** argv) {
    using comparison::add;
    using comparison::within;
    types::initialize();
    add("create with ten properties, objects",
        createFull<Scope>,
        createFull<PlainScope>,
        2.5,
        {1000, 10'000, 100'000, 1'000'000});
    add("create with a name, objects", create, createPlain, 0, {10'000, 1'000'000});
    comparison::addBytes(
        "bytes per object, 1000000", makeFull<Scope>, makeFull<PlainScope>, 330, 1'000'000);
    add("typed get", typedGet, typedGetPlain, 1.5);
    add("typed get, random order", getAtRandom, getAtRandomPlain, 1.8, {1000, 1'000'000});
    add("typed set, another value", typedSet<true>, typedSetPlain<true>, 1.5);
    add("typed set, the same value", typedSet<false>, typedSetPlain<false>, 1.5);
    add("first set in a transaction, objects",
        setInTransaction,
        setInTransactionPlain,
        4,
        {10'000, 100'000});
    add("undo or redo, objects", undo, undoPlain, 2, {10'000, 100'000});
    add("branch, one of 100 changed, objects", branch, branchPlain, 3, {10'000, 100'000});
    add("get by id", getById<ofIntegers, SignedId>, getByIdPlain<PlainSignedId>, 2.5);
    add("get by id, a number", getById<ofReals, MinimumId>, getByIdPlain<PlainMinimumId>, 2.5);
    add("set by id", setById, setByIdPlain, 2.5);
    add("get by name", getByName, getByNamePlain, 2);
    add("set by name", setByName, setByNamePlain, 2);
    add("move between opposites, elements", move, movePlain, within(120), {10});
    add("move between opposites, elements", move, movePlain, within(150), {1000});
    add("move between opposites, elements", move, movePlain, within(300), {100'000});
    add("add a child, up to", children<true>, childrenPlain<true>, within(60), {1000});
    add("add a child, up to", children<true>, childrenPlain<true>, within(80), {100'000});
    add("remove the first child, from", children<false>, childrenPlain<false>, within(80), {1000});
    add("remove the first child, from",
        children<false>,
        childrenPlain<false>,
        within(100),
        {100'000});
    add("destroy one of", destroy, destroyPlain, within(400), {1000});
    add("destroy one of", destroy, destroyPlain, within(800), {100'000});
    add("destroy one of", destroy, destroyPlain, within(1000), {1'000'000});
    add("the same with an observer / without, objects",
        setInTransactionObserved,
        setInTransaction,
        0,
        {1, 10'000});
    add("set with an observer / without, objects", setObserved, setUnobserved, 0, {10'000});
    return comparison::run(argc, argv);
}
