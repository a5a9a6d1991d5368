#include "support/box.h"
#include "support/fixture.h"

#include <functional>
#include <iterator>
#include <optional>

using QOB::ClassObject;
using QOB::Deviant;
using QOB::Sequence;
using QOB::Generic::IteratorPtr;
using QOB::Generic::Ref;
using QOB::Generic::sameElement;
using QOB::Generic::SequenceRef;
using QOB::Generic::toRef;
using sample::Box;

namespace {

/// Each kind of view that a getter gives: what it shows of a box.
struct Kind {
    char const* name;
    SequenceRef (*of)(Box const&);
    bool isOfParts = false; ///< an iterator sees each part when it gets there
};

SequenceRef boxed(Sequence<Box> const& boxes) {
    using QOB::filtered_sequence_internal::GenericFilter;
    using QOB::filtered_sequence_internal::GenericFilteredSequence;
    return {new GenericFilteredSequence(boxes.pointer(), GenericFilter::boxedObjects()),
            boxes.getDeviant()};
}

Kind const Kinds[] = {
    {"list of values", [](Box const& b) -> SequenceRef { return b.getNames(); }},
    {"unique values", [](Box const& b) -> SequenceRef { return b.getNumbers(); }},
    {"objects, one end",
     [](Box const& b) -> SequenceRef { return b.getItemsWithoutAssociation(); }},
    {"objects with an owner", [](Box const& b) -> SequenceRef { return b.getItems(); }},
    {"many to many", [](Box const& b) -> SequenceRef { return b.getPeers(); }},
    {"wider class",
     [](Box const& b) -> SequenceRef { return Sequence<ClassObject>(b.getItems()); }},
    {"boxed values", [](Box const& b) { return QOB::asObjects(b.getNumbers()); }},
    {"boxed objects", [](Box const& b) { return boxed(b.getItems()); }},
    {"combination", [](Box const& b) -> SequenceRef { return b.getContainees(); }, true},
    {"combination, one end",
     [](Box const& b) -> SequenceRef { return b.getContaineesWithoutAssociation(); },
     true},
    {"nothing combined",
     [](Box const& b) -> SequenceRef {
         return Sequence<Box>(QOB::SequenceCombination<Box>(b.getDeviant(), 0));
     }},
};

std::vector<Ref> elementsOf(SequenceRef const& sequence) {
    std::vector<Ref> result;
    result.reserve(static_cast<std::size_t>(sequence.generic_size()));
    for (int i = 0; i < sequence.generic_size(); ++i) {
        result.push_back(sequence.generic_at(i));
    }
    return result;
}

/// An iterator for each place, the end included.
std::vector<IteratorPtr> places(SequenceRef const& sequence) {
    std::vector<IteratorPtr> result;
    IteratorPtr const position = sequence.generic_begin();
    for (int rest = sequence.generic_size(); rest != 0; --rest) {
        result.push_back(position->generic_clone());
        position->generic_next(sequence.getDeviant());
    }
    result.push_back(position->generic_clone());
    return result;
}

bool sameElements(std::vector<Ref> const& a, std::vector<Ref> const& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameElement);
}

class SequenceIterator : public ThingModel {
protected:
    /// A box with something in each of its lists: in an array, or in so many as chunks hold.
    Box filled(int size) const {
        Box b = Box::create(model);
        for (int i = 0; i < size; ++i) {
            b.getNumbers().push_back(i);
            b.getNames().push_back(std::to_string(i));
            b.getItems().push_back(Box::create(model));
            b.getPeers().push_back(Box::create(model));
        }
        b.setOnlyLid(Box::create(model));
        return b;
    }
    /// Writes each list of the box: what was first is gone, what comes is last.
    static void change(Box const& b, QOB::Model const& in) {
        b.getNumbers().pop_front();
        b.getNumbers().push_back(-b.getNumbers().size());
        b.getNames().pop_front();
        b.getNames().push_back("new");
        b.getItems().pop_front();
        b.getItems().push_back(Box::create(in));
        b.getPeers().pop_front();
        b.getPeers().push_back(Box::create(in));
        b.setOnlyLid(Box::create(in));
    }
};

/// What happens between the taking of an iterator and its use.
struct Scene {
    QOB::Model root;
    Box box;          ///< in the deviant in which the iterators are taken
    QOB::Model model; ///< the same
    std::optional<QOB::Transaction> transaction{};
    std::function<void()> act{};
};

struct Event {
    char const* name;
    void (*prepare)(Scene& scene, void (*change)(Box const&, QOB::Model const&));
};

void intoBranch(Scene& scene) {
    scene.model = scene.root.inDeviant(scene.root.createDeviant());
    scene.box = scene.box.in(scene.model.getDeviant());
}

Event const Events[] = {
    {"write", [](Scene& s, auto change) { s.act = [&s, change] { change(s.box, s.model); }; }},
    {"rollback",
     [](Scene& s, auto change) {
         s.transaction.emplace(s.root);
         change(s.box, s.model);
         s.act = [&s] { s.transaction->rollback(); };
     }},
    {"commit, seen from a branch",
     [](Scene& s, auto change) {
         s.transaction.emplace(s.root);
         change(s.box, s.root);
         intoBranch(s);
         s.act = [&s] { s.transaction->commit(); };
     }},
    {"undo and redo",
     [](Scene& s, auto change) {
         s.root.setUndoEnabled(true);
         QOB::Transaction step(s.root);
         change(s.box, s.model);
         step.commit();
         s.act = [&s] {
             s.root.undo();
             s.root.redo();
             s.root.setUndoEnabled(false);
         };
     }},
    {"undo",
     [](Scene& s, auto change) {
         s.root.setUndoEnabled(true);
         QOB::Transaction step(s.root);
         change(s.box, s.model);
         step.commit();
         s.act = [&s] {
             s.root.undo();
             s.root.setUndoEnabled(false);
         };
     }},
    {"first write of a branch",
     [](Scene& s, auto change) {
         intoBranch(s);
         s.act = [&s, change] {
             change(s.box, s.model);
             change(s.box.in(s.root.getDeviant()), s.root);
         };
     }},
    {"end of a branch",
     [](Scene& s, auto change) {
         intoBranch(s);
         change(s.box, s.model);
         s.act = [&s] { s.root.removeDeviant(s.model.getDeviant()); };
     }},
    {"destruction", [](Scene& s, auto) { s.act = [&s] { s.box->destroy(s.box.getDeviant()); }; }},
    {"end of the model", [](Scene& s, auto) { s.act = [&s] { s.root.destroy(); }; }},
};

class IteratorAfter : public SequenceIterator,
                      public testing::WithParamInterface<std::tuple<Kind, Event, int>> {};

} // namespace

TEST_P(IteratorAfter, GoesOnShowingWhatItSaw) {
    auto const& [kind, event, size] = GetParam();
    Scene scene{model, filled(size), model};
    event.prepare(scene, &change);
    SequenceRef const sequence = kind.of(scene.box);
    Deviant const in = sequence.getDeviant();
    std::vector<Ref> const seen = elementsOf(sequence);
    std::vector<IteratorPtr> const taken = places(sequence);
    scene.act();
    for (std::size_t place = 0; place<taken.size(); place += size> 10 ? 37 : 1) {
        std::vector<Ref> ahead;
        IteratorPtr const position = taken[place]->generic_clone();
        std::string const failure = failureOf([&] {
            for (std::size_t rest = seen.size() - place; rest != 0; --rest) {
                ahead.push_back(position->generic_value(in));
                position->generic_next(in);
            }
            position->generic_value(in);
        });
        EXPECT_NE(failure, "") << "read beyond the end";
        if (kind.isOfParts) {
            continue; // the next part is another one by now, or gone
        }
        EXPECT_TRUE(sameElements(ahead, {seen.begin() + static_cast<int>(place), seen.end()}));
        for (std::size_t rest = seen.size(); rest != 0; --rest) {
            position->generic_prev(in);
            EXPECT_TRUE(sameElement(position->generic_value(in), seen[rest - 1]));
        }
        EXPECT_EQ(messageOf([&] { position->generic_prev(in); }),
                  "sequence iterator is at the begin");
    }
    // To write at an old place is refused, or does what the place says; nothing is one-sided.
    for (std::size_t i = 0; i < seen.size(); ++i) {
        IteratorPtr const& position = taken[i];
        failureOf([&] { sequence.generic_insert(position.get(), seen[0]); });
        failureOf([&] { sequence.generic_erase(position.get()); });
        failureOf([&] { sequence.generic_erase(taken.front().get(), position.get()); });
    }
    if (scene.box->deviant_isValid(in)) {
        for (Box const& item : scene.box.getItems()) {
            EXPECT_TRUE(std::string(kind.name).ends_with("one end") ||
                        item.getOwner() == scene.box);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind,
                         IteratorAfter,
                         testing::Combine(testing::ValuesIn(Kinds),
                                          testing::ValuesIn(Events),
                                          testing::Values(3, 150)));

TEST_F(SequenceIterator, IsTheSameAtTheSamePlaceWhicheverCallGaveIt) {
    for (int const size : {0, 1, 3, 150}) {
        Box const b = filled(size);
        for (Kind const& kind : Kinds) {
            std::vector<IteratorPtr> const first = places(kind.of(b));
            std::vector<IteratorPtr> const second = places(kind.of(b));
            ASSERT_EQ(first.size(), second.size()) << kind.name;
            for (std::size_t i = 0; i < first.size(); ++i) {
                for (std::size_t j = 0; j < second.size(); ++j) {
                    ASSERT_EQ(first[i]->generic_sameAs(second[j].get()), i == j)
                        << kind.name << ", " << i << " and " << j << " of " << size;
                }
            }
            EXPECT_FALSE(first[0]->generic_sameAs(nullptr));
        }
    }
    Box const b = filled(3);
    int visited = 0;
    for (auto i = b.getContainees().begin(); i != b.getContainees().end() && visited < 9; ++i) {
        ++visited;
    }
    EXPECT_EQ(visited, 4);
}

TEST_F(SequenceIterator, StopsAtBothEndsAndWalksBack) {
    Box const b = filled(3);
    for (Kind const& kind : Kinds) {
        SCOPED_TRACE(kind.name);
        SequenceRef const sequence = kind.of(b);
        Deviant const in = sequence.getDeviant();
        std::vector<Ref> const seen = elementsOf(sequence);
        IteratorPtr const position = sequence.generic_end();
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(messageOf([&] { position->generic_next(in); }),
                      "sequence iterator is at the end");
            EXPECT_EQ(messageOf([&] { position->generic_value(in); }),
                      "sequence iterator is at the end");
        }
        for (auto expected = seen.rbegin(); expected != seen.rend(); ++expected) {
            position->generic_prev(in);
            EXPECT_TRUE(sameElement(position->generic_value(in), *expected));
        }
        EXPECT_EQ(messageOf([&] { position->generic_prev(in); }),
                  "sequence iterator is at the begin");
        EXPECT_TRUE(position->generic_sameAs(sequence.generic_begin().get()));
    }
    auto const items = b.getItems();
    EXPECT_EQ(*std::prev(items.end()), items.back());
    auto position = items.end();
    std::advance(position, -2);
    EXPECT_EQ(*position, items.at(1));
    EXPECT_THROW(*Sequence<Box>::iterator(), QOB::Exception);
    EXPECT_THROW(items.erase(Sequence<Box>::iterator()), QOB::Exception);
}

TEST_F(SequenceIterator, IsUsedUpByTheWriteThatItIsGivenTo) {
    Box const b = filled(3);
    for (Kind const& kind : Kinds) {
        SCOPED_TRACE(kind.name);
        SequenceRef const sequence = kind.of(b);
        if (kind.isOfParts || sequence.generic_empty()) {
            continue;
        }
        Deviant const in = sequence.getDeviant();
        std::vector<Ref> const seen = elementsOf(sequence);
        IteratorPtr const first = sequence.generic_begin();
        IteratorPtr const copy = first->generic_clone();
        IteratorPtr const behind = sequence.generic_erase(first.get());
        EXPECT_TRUE(sameElement(behind->generic_value(in), seen[1]));
        EXPECT_THROW(first->generic_value(in), QOB::Exception);
        EXPECT_THROW(sequence.generic_erase(first.get()), QOB::Exception);
        EXPECT_TRUE(sameElement(copy->generic_value(in), seen[0])) << "a copy is its own";
        EXPECT_THROW(sequence.generic_erase(copy.get()), QOB::Exception) << "it is no longer there";
        EXPECT_THROW(sequence.generic_erase(sequence.generic_end().get(), behind.get()),
                     QOB::Exception);
        IteratorPtr const again = sequence.generic_insert(behind.get(), seen[0]);
        EXPECT_THROW(behind->generic_value(in), QOB::Exception);
        EXPECT_TRUE(sameElement(again->generic_value(in), seen[0]));
        EXPECT_TRUE(sameElements(elementsOf(sequence), seen));
    }
}

TEST_F(SequenceIterator, ALoopMayTakeEachElementOutThatItVisits) {
    Box const from = filled(150);
    Box const to = Box::create(model);
    for (auto i = from.getItems().begin(); i != from.getItems().end(); ++i) {
        to.getItems().push_back(*i);
    }
    EXPECT_EQ(to.getItems().size(), 150);
    EXPECT_TRUE(from.getItems().empty());
    for (auto i = to.getItems().begin(); i != to.getItems().end();) {
        i = to.getItems().erase(i);
    }
    EXPECT_TRUE(to.getItems().empty());
}

namespace {

/// The ways to bring in an element; `at` is a place that exists.
using Insertion = void (*)(SequenceRef const& sequence, int at, Ref const& element);
Insertion const Insertions[] = {
    [](SequenceRef const& s, int, Ref const& e) { s.generic_push_back(e); },
    [](SequenceRef const& s, int, Ref const& e) { s.generic_push_front(e); },
    [](SequenceRef const& s, int at, Ref const& e) { s.generic_insert(at, e); },
    [](SequenceRef const& s, int, Ref const& e) { s.generic_insert(s.generic_begin().get(), e); },
    [](SequenceRef const& s, int at, Ref const& e) { s.generic_replace(at, e); },
    [](SequenceRef const& s, int, Ref const& e) {
        SequenceRef const other = QOB::MakeSequence<ClassObject>(s.getDeviant());
        other.generic_push_back(s.generic_back());
        other.generic_push_back(e);
        s.generic_assign(other);
    },
};

} // namespace

TEST_F(SequenceIterator, RefusedElementLeavesListAndEndsAsTheyWere) {
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    Box const root = filled(3);
    Box const rival = filled(3);
    QOB::Model const in = branch();
    Box const b = root.in(in.getDeviant());
    Box const elsewhere = Box::create(branch());
    Ref const bad[] = {toRef(Box()),
                       toRef(sample::Thing::create(in)),
                       toRef(Box::create(other)),
                       toRef(elsewhere.in(in.getDeviant()))};
    for (SequenceRef const& sequence : {SequenceRef(b.getItems()),
                                        SequenceRef(b.getPeers()),
                                        SequenceRef(Sequence<ClassObject>(b.getItems()))}) {
        std::vector<Ref> const before = elementsOf(sequence);
        for (Insertion const insert : Insertions) {
            for (Ref const& element : bad) {
                if (insert == Insertions[5] && element.data == nullptr) {
                    continue; // no list holds it
                }
                EXPECT_THROW(insert(sequence, 1, element), QOB::Exception);
                EXPECT_TRUE(sameElements(elementsOf(sequence), before));
                EXPECT_FALSE(b.hasState(in.getDeviant()));
            }
        }
        for (Ref const& element : before) {
            EXPECT_FALSE(Box(QOB::Object(QOB::Generic::objectOf(element), in.getDeviant()))
                             .hasState(in.getDeviant()));
        }
    }
    other.destroy();
}

TEST_F(SequenceIterator, ReplacementByWhatIsThereTouchesNothing) {
    Box const root = filled(3);
    Deviant const deviant = model.createDeviant();
    Box const b = root.in(deviant);
    for (Kind const& kind : Kinds) {
        SequenceRef const sequence = kind.of(b);
        if (kind.isOfParts || sequence.generic_empty()) {
            continue;
        }
        std::vector<Ref> const before = elementsOf(sequence);
        sequence.generic_replace(1, before[1]);
        if (kind.of != Kinds[0].of) {
            sequence.generic_replace(1, before[2]);
        }
        EXPECT_TRUE(sameElements(elementsOf(sequence), before)) << kind.name;
        EXPECT_FALSE(b.hasState(deviant)) << kind.name;
    }
    EXPECT_EQ(root.getItems().at(1).count(), root.getItems().at(2).count());
}
