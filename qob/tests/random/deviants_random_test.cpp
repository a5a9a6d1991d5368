// Random sequences of everything that a host can do to a model are run against plain maps. After
// each step every value in every deviant must agree, and at the end nothing may be left over.
//
//     deviants_random_test [--sequences N] [--seed S] [--length L]
//
// A difference is shrunk and printed with the seed that repeats it.

#include "qob/qob/transaction.h"
#include "reference.h"
#include "thing.h"

#include <rapidcheck.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>

namespace {

using sample::NSImplementation::Alive;

enum class Action {
    Create,
    CreateWithId,
    SetNumber,
    SetLink,
    Destroy,
    Branch,
    RemoveBranch,
    Begin,
    Commit,
    Rollback,
    Undo,
    Redo,
    EnableUndo,
    Merge,
    DropHandle,
    KeepIterator,
    BeRefused,
    EndOrRestoreFar,
    WriteFromOutside, ///< in a deviant of another model, which stands for the root
    EndFromOutside,   ///< what begins or ends states, in such a deviant
    UseRemoved,       ///< anything in a deviant that is gone
};
constexpr int ActionCount = 21;
char const* const ActionNames[ActionCount] = {
    "create",           "createWithId",   "setNumber",
    "setLink",          "destroy",        "branch",
    "removeBranch",     "begin",          "commit",
    "rollback",         "undo",           "redo",
    "enableUndo",       "merge",          "dropHandle",
    "keepIterator",     "beRefused",      "endOrRestoreFar",
    "writeFromOutside", "endFromOutside", "useRemoved"};

/// Ids that a host gives begin here, and few of them come again and again.
constexpr int FirstGivenId = 1000;

/// One step; the numbers pick among what is there when it runs.
struct Command {
    int action;
    unsigned deviant;
    unsigned thing;
    unsigned value;
    unsigned far;
};

[[maybe_unused]] void showValue(Command const& command, std::ostream& out) {
    out << ActionNames[command.action] << "(d" << command.deviant << ", " << command.thing << ", "
        << command.value << ", far " << command.far << ")";
}

} // namespace

template <>
struct rc::Arbitrary<Command> {
    static Gen<Command> arbitrary() {
        // Writes are what the rest acts upon, so they come most often.
        auto const action = gen::weightedOneOf<int>({
            {4, gen::just(static_cast<int>(Action::Create))},
            {6, gen::just(static_cast<int>(Action::SetNumber))},
            {3, gen::just(static_cast<int>(Action::SetLink))},
            {2, gen::just(static_cast<int>(Action::Merge))},
            {1, gen::just(static_cast<int>(Action::WriteFromOutside))},
            {1, gen::just(static_cast<int>(Action::EndFromOutside))},
            {1, gen::just(static_cast<int>(Action::UseRemoved))},
            {1, gen::just(static_cast<int>(Action::KeepIterator))},
            {1, gen::just(static_cast<int>(Action::BeRefused))},
            {1, gen::just(static_cast<int>(Action::EndOrRestoreFar))},
            {9, gen::inRange(0, ActionCount)},
        });
        return gen::build<Command>(gen::set(&Command::action, action),
                                   gen::set(&Command::deviant, gen::inRange(0U, 4U)),
                                   gen::set(&Command::thing, gen::inRange(0U, 6U)),
                                   gen::set(&Command::value, gen::inRange(0U, 6U)),
                                   gen::set(&Command::far, gen::inRange(0U, 3U)));
    }
};

namespace {

class Run {
public:
    Run()
        : model_(QOB::NSInterface::FactoryIntf::createNewModel()),
          stranger_(QOB::NSInterface::FactoryIntf::createNewModel()),
          outside_{stranger_.getDeviant(), stranger_.createDeviant()} {
        views_.push_back({model_, {}, 0});
        things_.emplace_back(); // thing 0 is the model itself
        for (sample::Thing& far : far_) {
            QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
            far = sample::Thing::create(other);
            other.setUndoEnabled(true);
            others_.push_back(other);
        }
    }
    Run(Run const&) = delete;
    Run& operator=(Run const&) = delete;
    ~Run() {
        model_.destroy();
        stranger_.destroy();
        for (QOB::Model const& other : others_) {
            other.destroy();
        }
    }

    void step(Command const& command) {
        unsigned const d = pickDeviant(command.deviant);
        bool raised = false;
        try {
            perform(command, d);
        } catch (QOB::Exception const&) {
            raised = true;
        }
        if (raised != expectRaise_) {
            fail(raised ? "raised, but should not have" : "did not raise, but should have");
        }
        compare();
    }

private:
    struct OpenTransaction {
        std::unique_ptr<QOB::Transaction> transaction;
        int epoch; ///< of the view, when it began
    };
    struct View {
        QOB::Model model;
        std::vector<OpenTransaction> open;
        int epoch = 0; ///< how often everything that was open here was taken back
    };

    /// A position in the model's list of objects, and what was there from it on when it was taken.
    struct KeptIterator {
        QOB::Sequence<QOB::ClassObject>::iterator position;
        std::vector<QOB::NSInterface::ClassObjectIntf const*> ahead; ///< which the position keeps
    };

    [[noreturn]] static void fail(std::string const& what) { RC_FAIL(what); }

    unsigned pickDeviant(unsigned number) const {
        unsigned d = number % static_cast<unsigned>(views_.size());
        while (!expected_.deviants[d].alive) {
            d = (d + 1) % static_cast<unsigned>(views_.size());
        }
        return d;
    }

    reference::Thing pickThing(unsigned number) const {
        return expected_.lastThing == 0
                   ? -1
                   : 1 + static_cast<int>(number % static_cast<unsigned>(expected_.lastThing));
    }

    sample::Thing thing(reference::Thing number, unsigned d) const {
        if (reference::isFar(number)) {
            return far_[number - reference::FirstFar];
        }
        sample::Thing const& kept = things_[static_cast<std::size_t>(number)];
        return kept.get() != nullptr ? kept.in(views_[d].model.getDeviant())
                                     : sample::Thing(QOB::Object(views_[d].model.findObject(
                                           ids_.at(static_cast<std::size_t>(number)))));
    }

    void perform(Command const& command, unsigned d) {
        int const e = static_cast<int>(d);
        View& view = views_[d];
        QOB::Model const& model = view.model;
        reference::Thing const picked = pickThing(command.thing);
        bool const present = picked > 0 && expected_.exists(e, picked);
        bool const writable = expected_.writable(e);
        expectRaise_ = false;
        switch (static_cast<Action>(command.action)) {
        case Action::Create: {
            expectRaise_ = !writable;
            int const number = static_cast<int>(command.value);
            things_.push_back(sample::Thing::create(model, number));
            ids_.push_back(things_.back().getObjectId());
            expected_.create(e, ids_.back(), number);
            break;
        }
        case Action::CreateWithId: {
            int const id = FirstGivenId + static_cast<int>(command.value % 3);
            expectRaise_ = !writable || !expected_.isFree(e, id);
            things_.push_back(sample::Thing::createWithId(model, id));
            ids_.emplace_back(id);
            expected_.create(e, id, 0);
            break;
        }
        case Action::SetNumber:
            if (picked > 0 && thing(picked, d).get() != nullptr) {
                int const number = static_cast<int>(command.value);
                expectRaise_ =
                    !present || (expected_.read(e, picked).number != number && !writable);
                thing(picked, d).setNumber(number);
                expected_.setNumber(e, picked, number);
            }
            break;
        case Action::SetLink:
            if (picked > 0 && thing(picked, d).get() != nullptr) {
                reference::Thing const target =
                    command.value < 4 ? pickThing(command.value)
                                      : reference::FirstFar + static_cast<int>(command.far);
                bool const reachable = expected_.exists(e, target);
                reference::Thing const wanted = reachable ? target : reference::None;
                bool const same = present && expected_.read(e, picked).link == wanted;
                expectRaise_ = !present || (!same && !writable);
                thing(picked, d).setLink(reachable ? thing(target, d) : sample::Thing());
                expected_.setLink(e, picked, wanted);
            }
            break;
        case Action::Destroy:
            if (picked > 0 && thing(picked, d).get() != nullptr && !endsForAll(d, picked)) {
                expectRaise_ = !writable;
                thing(picked, d).destroy();
                expected_.destroy(e, picked);
            }
            break;
        case Action::Branch:
            if (views_.size() < 5) {
                views_.push_back({model.inDeviant(model.createDeviant()), {}, 0});
                expected_.branch();
            }
            break;
        case Action::RemoveBranch:
            expectRaise_ = d == 0;
            model.removeDeviant(model.getDeviant());
            expected_.remove(e);
            break;
        case Action::Begin:
            view.open.push_back({std::make_unique<QOB::Transaction>(model), view.epoch});
            expected_.begin(e);
            break;
        case Action::Commit:
        case Action::Rollback:
            if (!view.open.empty()) {
                OpenTransaction const last = std::move(view.open.back());
                view.open.pop_back();
                // What an inner transaction took back is over for the outer ones as well.
                expectRaise_ = last.epoch != view.epoch;
                if (static_cast<Action>(command.action) == Action::Commit) {
                    last.transaction->commit();
                    expected_.commit(e);
                } else {
                    last.transaction->rollback();
                    expected_.rollback(e);
                    ++view.epoch;
                }
            }
            break;
        case Action::Undo:
            expectRaise_ = expected_.deviants[d].depth > 0;
            if (model.undo() != expected_.undo(e)) {
                fail("undo found a step where there is none, or none where there is one");
            }
            break;
        case Action::Redo:
            expectRaise_ = expected_.deviants[d].depth > 0;
            if (model.redo() != expected_.redo(e)) {
                fail("redo found a step where there is none, or none where there is one");
            }
            break;
        case Action::EnableUndo:
            model.setUndoEnabled(command.value % 3 != 0);
            expected_.setUndoEnabled(e, command.value % 3 != 0);
            break;
        case Action::Merge: {
            unsigned const source = pickDeviant(command.value);
            expectRaise_ = source == d || expected_.deviants[source].depth > 0 ||
                           !expected_.merge(e, static_cast<int>(source));
            model.mergeDeviant(views_[source].model.getDeviant());
            break;
        }
        case Action::EndOrRestoreFar:
            endOrRestoreFar(command.far);
            break;
        case Action::DropHandle:
            // Two things may have one given id, in different deviants: those are kept.
            if (picked > 0 && ids_[static_cast<std::size_t>(picked)] < FirstGivenId &&
                isListedWhereItExists(picked)) {
                things_[static_cast<std::size_t>(picked)] = sample::Thing();
            }
            break;
        case Action::KeepIterator:
            keepIterator(model.getRootObjects(), command);
            break;
        case Action::BeRefused:
            beRefused(model.getRootObjects(), command.value);
            break;
        case Action::WriteFromOutside:
            if (picked > 0 && thing(picked, 0).get() != nullptr) {
                int const number = static_cast<int>(command.value);
                bool const exists = expected_.exists(0, picked);
                bool const same = exists && expected_.read(0, picked).number == number;
                expectRaise_ = !exists || (!same && !expected_.writable(0));
                thing(picked, 0)->setNumber(outside(command), number);
                expected_.setNumber(0, picked, number);
            }
            break;
        case Action::EndFromOutside:
            if (picked > 0 && thing(picked, d).get() != nullptr) {
                expectRaise_ = true;
                endStates(*thing(picked, d).get(), outside(command), command.value);
            }
            break;
        case Action::UseRemoved:
            for (unsigned gone = 0; gone < views_.size(); ++gone) {
                if (!expected_.deviants[gone].alive) {
                    expectRaise_ = true;
                    useRemoved(views_[gone].model, picked, command.value);
                    break;
                }
            }
            break;
        }
    }

    void keepIterator(QOB::Sequence<QOB::ClassObject> const& list, Command const& command) {
        KeptIterator kept{list.begin(), {}};
        for (unsigned steps = command.value; steps != 0 && kept.position != list.end(); --steps) {
            ++kept.position;
        }
        for (auto i = kept.position; i != list.end(); ++i) {
            kept.ahead.push_back((*i).get());
        }
        kept_[command.thing % kept_.size()] = std::move(kept);
    }

    /// Writes that are refused, or change nothing, whatever the deviant allows: the list stays as
    /// it is, and the deviant gets no state of it.
    void beRefused(QOB::Sequence<QOB::ClassObject> const& list, unsigned way) {
        expectRaise_ = way % 3 != 2;
        switch (way % 3) {
        case 0:
            list.push_back(QOB::ClassObject());
            break;
        case 1:
            list.erase(list.size());
            break;
        default:
            if (!list.empty()) {
                list.generic_replace(0, list.generic_back());
                list.push_front(list.back());
            }
        }
    }

    void compareKeptIterators() const {
        for (KeptIterator const& kept : kept_) {
            auto position = kept.position;
            for (auto const* const expected : kept.ahead) {
                if ((*position).get() != expected) {
                    fail("a kept iterator shows another object than it saw");
                }
                ++position;
            }
        }
    }

    QOB::Deviant outside(Command const& command) const { return outside_[command.deviant % 2]; }

    static void
    endStates(sample::NSInterface::ThingIntf& object, QOB::Deviant deviant, unsigned operation) {
        switch (operation % 4) {
        case 0:
            object.destroy(deviant);
            break;
        case 1:
            object.internal_createDeviation(deviant);
            break;
        case 2:
            object.internal_destroyDeviation(deviant);
            break;
        default:
            object.internal_setDeviation(deviant, nullptr);
        }
    }

    void useRemoved(QOB::Model const& model, reference::Thing picked, unsigned operation) const {
        sample::Thing const object =
            picked > 0 ? things_[static_cast<std::size_t>(picked)] : sample::Thing();
        if (object.get() == nullptr || operation % 3 == 0) {
            QOB::Transaction const open(model);
        } else if (operation % 3 == 1) {
            sample::Thing::create(model);
        } else {
            sample::Thing const late = object.in(model.getDeviant());
            sample::Thing(QOB::Object(late)).setNumber(static_cast<int>(operation));
        }
    }

    bool isListedWhereItExists(reference::Thing thing) {
        for (unsigned d = 0; d < views_.size(); ++d) {
            int const e = static_cast<int>(d);
            if (expected_.deviants[d].alive && expected_.exists(e, thing)) {
                std::vector<reference::Thing> const list =
                    expected_.read(e, reference::ModelItself).list;
                if (std::find(list.begin(), list.end(), thing) == list.end()) {
                    return false;
                }
            }
        }
        return true;
    }

    /// A branch that wrote to a thing still reads the root's list of things: without a handle, the
    /// thing ends with its place there.
    bool endsForAll(unsigned d, reference::Thing thing) {
        bool const isHeld = things_[static_cast<std::size_t>(thing)].get() != nullptr;
        return d == 0 && !isHeld && expected_.deviants[0].depth == 0 &&
               std::any_of(expected_.deviants.begin(), expected_.deviants.end(), [&](auto& each) {
                   return !each.isRoot && each.slots[thing].kind == reference::Slot::Real;
               });
    }

    void endOrRestoreFar(unsigned number) {
        bool& exists = expected_.farExists[number];
        if (exists) {
            QOB::Transaction transaction(others_[number]);
            far_[number].destroy();
            transaction.commit();
        } else {
            others_[number].undo();
        }
        exists = !exists;
    }

    void compare() {
        compareKeptIterators();
        for (unsigned d = 0; d < views_.size(); ++d) {
            if (!expected_.deviants[d].alive) {
                continue;
            }
            int const e = static_cast<int>(d);
            for (reference::Thing number = 1; number <= expected_.lastThing; ++number) {
                sample::Thing const seen = thing(number, d);
                bool const exists = expected_.exists(e, number);
                if (seen.isValid() != exists) {
                    fail(place(number, d) + (exists ? " is missing" : " should not exist"));
                }
                if (!exists) {
                    continue;
                }
                reference::Values const values = expected_.read(e, number);
                if (seen.getNumber() != values.number) {
                    fail(place(number, d) + " has number " + std::to_string(seen.getNumber()) +
                         " instead of " + std::to_string(values.number));
                }
                if (!isThing(seen.getLink(), values.link, d)) {
                    fail(place(number, d) + " links to something else than thing " +
                         std::to_string(values.link));
                }
            }
            compareList(d);
            compareIds(d);
            compareReferredModels(d);
        }
    }

    bool isThing(sample::Thing const& seen, reference::Thing number, unsigned d) const {
        if (seen.get() == nullptr || number == reference::None) {
            return seen.get() == nullptr && number == reference::None;
        }
        sample::Thing const expected = thing(number, d);
        return expected.get() != nullptr
                   ? seen == expected
                   : seen.getObjectId() == ids_.at(static_cast<std::size_t>(number));
    }

    /// No deviant has two things under one id, and finds each by its own.
    void compareIds(unsigned d) {
        for (reference::Thing number = 1; number <= expected_.lastThing; ++number) {
            if (expected_.exists(static_cast<int>(d), number) &&
                views_[d].model.findObject(ids_[static_cast<std::size_t>(number)]) !=
                    QOB::ClassObject(thing(number, d))) {
                fail(place(number, d) + " is not found by its id");
            }
        }
    }

    void compareReferredModels(unsigned d) {
        std::set<reference::Thing> const referred = expected_.referred(static_cast<int>(d));
        std::vector<QOB::Model> const models = views_[d].model.getReferredModels();
        bool same = models.size() == referred.size();
        for (reference::Thing const far : referred) {
            QOB::Model const& other = others_[static_cast<std::size_t>(far - reference::FirstFar)];
            same = same && std::find(models.begin(), models.end(), other) != models.end();
        }
        if (!same) {
            fail("deviant " + std::to_string(d) + " refers to other models");
        }
    }

    /// The model's own list of objects, in order of creation.
    void compareList(unsigned d) {
        std::vector<reference::Thing> const list =
            expected_.read(static_cast<int>(d), reference::ModelItself).list;
        std::vector<QOB::Integer> ids;
        for (QOB::ClassObject const& object : views_[d].model.getRootObjects()) {
            ids.push_back(object.getObjectId());
        }
        bool same = ids.size() == list.size();
        for (std::size_t i = 0; same && i < ids.size(); ++i) {
            same = ids[i] == ids_.at(static_cast<std::size_t>(list[i]));
        }
        if (!same) {
            fail("deviant " + std::to_string(d) + " lists other objects");
        }
    }

    static std::string place(reference::Thing number, unsigned d) {
        return "thing " + std::to_string(number) + " in deviant " + std::to_string(d);
    }

    QOB::Model model_;
    QOB::Model stranger_;
    QOB::Deviant outside_[2];
    std::vector<View> views_;
    std::vector<sample::Thing> things_;
    sample::Thing far_[reference::FarCount];
    std::vector<QOB::Model> others_;
    std::vector<QOB::Integer> ids_{QOB::Integer()};
    reference::Model expected_;
    bool expectRaise_ = false;
    std::array<KeptIterator, 3> kept_;
};

void property(std::vector<Command> const& commands) {
    int const states = Alive::states;
    int const objects = Alive::objects;
    {
        Run run;
        for (Command const& command : commands) {
            run.step(command);
        }
    }
    if (Alive::states != states || Alive::objects != objects) {
        RC_FAIL("states or objects are left over");
    }
}

} // namespace

int main(int argc, char** argv) {
    std::string seed = "20261121";
    std::string sequences = "10000";
    std::string length = "60";
    for (int i = 1; i < argc; i += 2) {
        std::string const option = argv[i];
        std::string* const value = option == "--seed"        ? &seed
                                   : option == "--sequences" ? &sequences
                                   : option == "--length"    ? &length
                                                             : nullptr;
        if (value == nullptr || i + 1 == argc) {
            std::cerr << "usage: " << argv[0] << " [--seed S] [--sequences N] [--length L]\n";
            return 2;
        }
        *value = argv[i + 1];
    }
    // The environment wins, so that the line which a failure prints can be used as it stands.
    std::string const params = "seed=" + seed + " max_success=" + sequences + " max_size=" + length;
    setenv("RC_PARAMS", params.c_str(), 0);
    return rc::check("every deviant agrees with plain maps after every step", property) ? 0 : 1;
}
