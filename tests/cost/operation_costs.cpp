// The operations whose instructions `./dev check cost` counts: each stands in a function of its
// own, `cost_NAME`, which repeats it as often as the program is told. Without callgrind around it
// the program only runs them.
//
// usage: operation_costs ROUNDS

#include "qob/qob/transaction.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;

namespace {

/// What the operations work on: a model with as many objects and children as there are rounds.
struct Fixture {
    explicit Fixture(std::size_t number)
        : rounds(number),
          model(types::NSInterface::FactoryIntf::createNewModel()),
          enumeration(types::Enumeration::create(model, "enumeration")),
          methods{types::CompuMethod::create(model, "%d", "first"),
                  types::CompuMethod::create(model, "%d", "second")},
          children(enumeration.getOwnedLiterals()) {
        for (std::size_t i = 0; i != rounds; ++i) {
            integers.push_back(types::Integer::create(model, "an integer type"));
            literals.push_back(types::EnumerationLiteral::create(model));
        }
        for (std::size_t i = 0; i != 20; ++i) {
            integers[i].setCompuMethod(methods[i % 2]);
        }
        integers[0].setMinValue(1.5);
    }
    Fixture(Fixture const&) = delete;
    Fixture& operator=(Fixture const&) = delete;
    ~Fixture() { model.destroy(); }

    std::size_t rounds;
    QOB::Model model;
    types::Enumeration enumeration;
    types::CompuMethod methods[2];
    QOB::Sequence<types::EnumerationLiteral> children;
    std::vector<types::Integer> integers;
    std::vector<types::EnumerationLiteral> literals;
    QOB::String const name = "an integer type";
    QOB::String const property = "IsSigned";
    QOB::Object const values[2] = {QOB::Boolean(false), QOB::Boolean(true)};
    int sum = 0; ///< what is read goes here, so that it is read
};

auto const& ofIntegers = types::NSInterface::IntegerIntf::sIntrospectiveMethods;
auto const& ofReals = types::NSInterface::RealIntf::sIntrospectiveMethods;
constexpr unsigned SignedId = 2;
constexpr unsigned MinimumId = 1;

} // namespace

// The check finds them by their names, so they are neither inlined nor mangled nor local.
#define COST(name)                                                                                 \
    extern "C" __attribute__((noinline)) void cost_##name(Fixture& fixture);                       \
    void cost_##name(Fixture& fixture)

COST(create_with_name) {
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.integers.push_back(types::Integer::create(fixture.model, fixture.name));
    }
}
COST(get) {
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.sum += fixture.integers[i].isSigned() ? 1 : 0;
    }
}
COST(set) {
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.integers[i].setIsSigned(false);
    }
}
COST(set_in_transaction) {
    QOB::Transaction transaction(fixture.model);
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.integers[i].setIsSigned(true);
    }
    transaction.commit();
}
COST(undo) {
    fixture.model.undo();
}
COST(set_in_branch) {
    QOB::Deviant const branch = fixture.model.createDeviant();
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.integers[i]->setIsSigned(branch, true);
    }
    fixture.model.removeDeviant(branch);
}
COST(get_by_id) {
    QOB::Object const object = fixture.integers.front();
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.sum +=
            ofReals.getSingleValued(object.get(), object.getDeviant(), MinimumId).isValid() ? 1 : 0;
    }
}
COST(set_by_id) {
    QOB::Object const object = fixture.integers.front();
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        ofIntegers.setSingleValued(
            object.get(), object.getDeviant(), SignedId, fixture.values[i % 2]);
    }
}
COST(get_by_name) {
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.sum += fixture.integers.front().getOne(fixture.property).isValid() ? 1 : 0;
    }
}
COST(move_between_opposites) {
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.integers[10].setCompuMethod(fixture.methods[(i + 1) % 2]);
    }
}
COST(add_child) {
    for (types::EnumerationLiteral const& each : fixture.literals) {
        fixture.children.push_back(each);
    }
}
COST(remove_first_child) {
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.children.pop_front();
    }
}
COST(destroy) {
    for (std::size_t i = 0, end = fixture.rounds; i != end; ++i) {
        fixture.integers[i].destroy();
    }
}
/// What was counted before belongs to the last operation.
COST(end) {
    ++fixture.sum;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " ROUNDS\n";
        return 2;
    }
    types::initialize();
    Fixture fixture(std::max(20UL, std::stoul(argv[1])));
    cost_create_with_name(fixture);
    cost_get(fixture);
    cost_set(fixture);
    fixture.model.setUndoEnabled(true);
    cost_set_in_transaction(fixture);
    cost_undo(fixture);
    fixture.model.setUndoEnabled(false);
    cost_set_in_branch(fixture);
    cost_get_by_id(fixture);
    cost_set_by_id(fixture);
    cost_get_by_name(fixture);
    cost_move_between_opposites(fixture);
    cost_add_child(fixture);
    cost_remove_first_child(fixture);
    cost_destroy(fixture);
    cost_end(fixture);
    return fixture.sum < 0 ? 1 : 0;
}
