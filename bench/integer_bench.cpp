// What a host pays for one metaclass: making integers, reading and writing them through handles.

#include "support/comparison.h"
#include "support/plain.h"

#include <memory>
#include <vector>
#include <velum_types/types.h>

namespace {

namespace types = Zorvane::metamodel::types;

using benchmark::DoNotOptimize;
using benchmark::State;

/// A model that ends with its scope.
class Scope {
public:
    Scope() : model((types::initialize(), types::NSInterface::FactoryIntf::createNewModel())) {}
    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;
    ~Scope() { model.destroy(); }

    QOB::Model model;
};

void create(State& state, std::int64_t count) {
    QOB::String const name("an integer type");
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        {
            Scope const scope;
            state.ResumeTiming();
            for (std::int64_t i = 0; i < count; ++i) {
                DoNotOptimize(types::Integer::create(scope.model, name).get());
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}
void createPlain(State& state, std::int64_t count) {
    std::string const name("an integer type");
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        {
            std::vector<std::unique_ptr<plain::IntegerType>> model;
            state.ResumeTiming();
            for (std::int64_t i = 0; i < count; ++i) {
                model.push_back(std::make_unique<plain::IntegerType>());
                model.back()->setName(name);
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

void isSigned(State& state, std::int64_t) {
    Scope const scope;
    types::Integer const integer = types::Integer::create(scope.model);
    for (auto _ : state) {
        DoNotOptimize(integer.isSigned());
    }
}
void isSignedPlain(State& state, std::int64_t) {
    plain::IntegerType const integer;
    plain::IntegerType const* pointer = &integer;
    for (auto _ : state) {
        DoNotOptimize(pointer);
        DoNotOptimize(pointer->isSigned());
    }
}

void getLength(State& state, std::int64_t) {
    Scope const scope;
    types::Integer const integer = types::Integer::create(scope.model);
    for (auto _ : state) {
        DoNotOptimize(integer.getLength());
    }
}

template <bool Changes>
void setIsSigned(State& state, std::int64_t) {
    Scope const scope;
    types::Integer const integer = types::Integer::create(scope.model);
    bool value = true;
    for (auto _ : state) {
        value = Changes ? !value : value;
        integer.setIsSigned(value);
    }
}
template <bool Changes>
void setIsSignedPlain(State& state, std::int64_t) {
    plain::IntegerType integer;
    plain::IntegerType* pointer = &integer;
    bool value = true;
    for (auto _ : state) {
        DoNotOptimize(pointer);
        value = Changes ? !value : value;
        pointer->setIsSigned(value);
    }
}

} // namespace

int main(int argc, char** argv) {
    using comparison::add;
    add("create an integer with a name, integers", create, createPlain, 0, {1000, 100'000});
    add("isSigned", isSigned, isSignedPlain, 3);
    add("getLength", getLength, isSignedPlain, 3);
    add("setIsSigned, another value", setIsSigned<true>, setIsSignedPlain<true>, 3);
    add("setIsSigned, the same value", setIsSigned<false>, setIsSignedPlain<false>, 2);
    return comparison::run(argc, argv);
}
