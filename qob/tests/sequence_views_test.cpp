#include "qob/kernel/containers/sequence/views/propertytosequenceproxy.h"
#include "support/allocation_count.h"
#include "support/box.h"
#include "support/fixture.h"

using QOB::ClassObject;
using QOB::Deviant;
using QOB::Integer;
using QOB::Sequence;
using QOB::String;
using sample::Box;
using sample::NSImplementation::Alive;

namespace {

class SequenceView : public ThingModel {
protected:
    Box box() const { return Box::create(model); }
    static std::vector<Box> all(Sequence<Box> const& boxes) { return {boxes.begin(), boxes.end()}; }
    using Boxes = std::vector<Box>;
};

std::vector<int> numbersIn(Box const& box) {
    auto const numbers = box.getNumbers();
    return {numbers.begin(), numbers.end()};
}

} // namespace

TEST_F(SequenceView, ShowsTheStateAtEachCall) {
    Box const b = box();
    auto const first = b.getNumbers();
    auto const second = b.getNumbers();
    EXPECT_NE(first.get(), second.get());
    EXPECT_TRUE(first.empty());
    second.push_back(1);
    EXPECT_EQ(first.size(), 1);
    EXPECT_EQ(first.at(0), 1);
}

TEST_F(SequenceView, EachDeviantSeesItsOwnElements) {
    Box const root = box();
    root.getNumbers().push_back(1);
    root.getNames().push_back("a");
    Box const inBranch = root.in(model.createDeviant());
    auto numbers = inBranch.getNumbers();
    numbers.push_back(2);
    inBranch.getNames().push_back("a");
    EXPECT_EQ(numbersIn(root), (std::vector<int>{1}));
    EXPECT_EQ(numbersIn(inBranch), (std::vector<int>{1, 2}));
    EXPECT_EQ(inBranch.getNames().size(), 2);
    EXPECT_EQ(root.getNames().size(), 1);
    numbers.setDeviant(model.getDeviant());
    EXPECT_EQ(numbers.size(), 1) << "the same view, asked in another deviant";
}

TEST_F(SequenceView, WriteThatFailsOrChangesNothingMakesNoState) {
    Box const root = box();
    Box const member = box();
    root.getNumbers().push_back(1);
    root.getItems().push_back(member);
    Deviant const branch = model.createDeviant();
    Box const b = root.in(branch);
    b.getNumbers().push_back(1);
    b.getNumbers().push_front(1);
    b.getNumbers().insert(0, 1);
    b.getNumbers().replace(0, 1);
    b.getNumbers().removeAll(9);
    b.getNames().clear();
    b.getNames().removeAll("none");
    b.getItems().push_back(member.in(branch));
    EXPECT_EQ(messageOf([&] { b.getNumbers().erase(1); }), "sequence index out of bounds");
    EXPECT_EQ(messageOf([&] { b.getNumbers().insert(-1, 5); }), "sequence index must be positive");
    EXPECT_EQ(messageOf([&] { b.getNames().pop_back(); }), "sequence is empty");
    EXPECT_EQ(messageOf([&] { b.getItems().push_back(Box()); }),
              "null object while inserting into sample.SequenceOfBox");
    EXPECT_FALSE(b.hasState(branch));
    EXPECT_FALSE(member.hasState(branch));
    b.getNumbers().push_back(2);
    EXPECT_TRUE(b.hasState(branch));
}

TEST_F(SequenceView, PositionsHoldAcrossTheFirstWriteInADeviant) {
    Box const root = box();
    for (int const i : {1, 2, 3, 4}) {
        root.getNumbers().push_back(i);
        root.getNames().push_back(std::to_string(i));
        root.getItems().push_back(box());
    }
    auto const twice = [&](auto const& sequence, auto const& inserted) {
        auto place = std::next(sequence.begin(), 2);
        place = sequence.insert(place, inserted);
        EXPECT_EQ(*place, inserted);
        place = sequence.erase(place);
        EXPECT_EQ(sequence.size(), 4);
        EXPECT_EQ(*place, sequence.at(2));
    };
    twice(root.in(model.createDeviant()).getNumbers(), Integer(9));
    twice(root.in(model.createDeviant()).getNames(), String("x"));
    twice(root.in(model.createDeviant()).getItems(), box());
    auto const numbers = root.in(model.createDeviant()).getNumbers();
    EXPECT_EQ(*numbers.erase(std::next(numbers.begin()), std::next(numbers.begin(), 3)), 4);
    EXPECT_EQ(numbersIn(root), (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(SequenceView, KeepsItsObjectAlive) {
    Box b = box();
    b.getNumbers().push_back(1);
    auto const numbers = b.getNumbers();
    int const count = b.count();
    { auto const other = b.getNumbers(); }
    EXPECT_EQ(b.count(), count);
    b = Box();
    EXPECT_EQ(numbers.size(), 1);
}

TEST_F(SequenceView, ReadsOfSizeAndMembershipAllocateOnlyTheViewItself) {
    Box const b = box();
    b.getItems().push_back(box());
    auto const items = b.getItems();
    Box const member = items.at(0);
    std::size_t const before = VelumTest::allocationCount();
    EXPECT_EQ(items.size(), 1);
    EXPECT_TRUE(items.contains(member));
    EXPECT_EQ(items.front(), member);
    EXPECT_EQ(VelumTest::allocationCount(), before);
}

TEST_F(SequenceView, AssociationKeepsASingleOppositeInStep) {
    Box const owner = box();
    Box const a = box();
    Box const b = box();
    Box const c = box();
    auto const items = owner.getItems();
    items.push_back(a);
    items.insert(0, b);
    items.insert(items.end(), c);
    EXPECT_EQ(all(items), (Boxes{b, a, c}));
    for (Box const& item : items) {
        EXPECT_EQ(item.getOwner(), owner);
    }
    items.push_back(a);
    EXPECT_EQ(items.size(), 3);
    items.erase(0);
    EXPECT_FALSE(b.getOwner().isValid());
    items.replace(0, b);
    EXPECT_EQ(b.getOwner(), owner);
    EXPECT_FALSE(a.getOwner().isValid());
    items.erase(items.begin());
    EXPECT_FALSE(b.getOwner().isValid());
    EXPECT_EQ(items.removeAll(c), 1);
    EXPECT_FALSE(c.getOwner().isValid());
    for (Box const& item : {a, b, c}) {
        items.push_front(item);
    }
    items.pop_back();
    items.pop_front();
    EXPECT_FALSE(a.getOwner().isValid());
    EXPECT_FALSE(c.getOwner().isValid());
    items.push_back(a);
    items.erase(items.begin(), items.end());
    EXPECT_FALSE(a.getOwner().isValid());
    items.push_back(a);
    items.clear();
    EXPECT_FALSE(a.getOwner().isValid());
    owner.getItemsWithoutAssociation().push_back(a);
    EXPECT_FALSE(a.getOwner().isValid()) << "one end only";
}

TEST_F(SequenceView, AnItemMovesFromOneOwnerToTheNext) {
    Box const first = box();
    Box const second = box();
    Box const item = box();
    first.getItems().push_back(item);
    second.getItems().push_back(item);
    EXPECT_TRUE(first.getItems().empty());
    EXPECT_EQ(item.getOwner(), second);
    first.getItemsWithoutAssociation().push_back(item);
    first.getItems().removeAll(item);
    EXPECT_EQ(item.getOwner(), second) << "only an owner is taken away that is one";
}

TEST_F(SequenceView, AssociationKeepsAManyValuedOppositeInStep) {
    Box const a = box();
    Box const b = box();
    a.getPeers().push_back(b);
    EXPECT_EQ(all(b.getPeers()), (Boxes{a}));
    b.getPeers().push_back(a);
    EXPECT_EQ(a.getPeers().size(), 1);
    b.getPeers().removeAll(a);
    EXPECT_TRUE(a.getPeers().empty());
}

TEST_F(SequenceView, AssociationRefusesAnotherModelBeforeAnythingHasChanged) {
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    Box const a = box();
    Box const foreign = Box::create(other);
    EXPECT_EQ(messageOf([&] { a.getItems().push_back(foreign); }),
              "Cross-model bi-directional associations are currently disallowed!");
    EXPECT_EQ(messageOf([&] { a.getPeers().insert(0, foreign); }),
              "Cross-model bi-directional associations are currently disallowed!");
    EXPECT_TRUE(a.getItems().empty());
    EXPECT_TRUE(a.getPeers().empty());
    other.destroy();
}

TEST_F(SequenceView, SingleValueIsASequenceOfNoneOrOne) {
    Box const b = box();
    Box const lid = box();
    QOB::GenericPropertyToSequenceProxy* const proxy = new QOB::GenericPropertyToSequenceProxy(
        QOB::ImmutableClassObject(QOB::Object(b)),
        &sample::NSInterface::BoxIntf::sIntrospectiveMethods,
        sample::NSInterface::BoxIntf::LidId,
        0);
    Sequence<Box> const lids(proxy, model.getDeviant());
    EXPECT_EQ(lids.size(), 0);
    EXPECT_TRUE(lids.empty());
    EXPECT_EQ(lids.begin(), lids.end());
    EXPECT_EQ(messageOf([&] { lids.at(0); }), "sequence index out of bounds");
    EXPECT_EQ(messageOf([&] { lids.at(-1); }), "sequence index must be positive");
    EXPECT_EQ(messageOf([&] { lids.front(); }), "sequence is empty");
    EXPECT_EQ(messageOf([&] { lids.pop_front(); }), "sequence is empty");
    EXPECT_EQ(messageOf([&] { lids.insert(1, lid); }), "sequence index out of bounds");

    lids.push_back(lid);
    EXPECT_EQ(b.getLid(), lid);
    EXPECT_EQ(all(lids), (Boxes{lid}));
    EXPECT_TRUE(lids.contains(lid));
    EXPECT_EQ(lids.removeAll(b), 0);
    EXPECT_EQ(lids.removeAll(lid), 1);
    EXPECT_FALSE(b.getLid().isValid());
    lids.insert(0, lid);
    lids.erase(lids.begin());
    EXPECT_TRUE(lids.empty());
    lids.insert(lids.begin(), lid);
    lids.erase(0);
    EXPECT_TRUE(lids.empty());
    EXPECT_EQ(messageOf([&] { lids.push_back(Box()); }),
              "null object while inserting into QOB.SequenceOfClassObject");
}

TEST_F(SequenceView, CombinationShowsItsPartsInTheirOrder) {
    Box const b = box();
    auto const containees = b.getContainees();
    EXPECT_EQ(containees.size(), 0);
    EXPECT_TRUE(containees.empty());
    EXPECT_EQ(containees.begin(), containees.end());
    EXPECT_EQ(messageOf([&] { containees.at(0); }), "sequence index out of bounds");
    EXPECT_EQ(messageOf([&] { containees.at(-1); }), "sequence index must be positive");
    EXPECT_EQ(messageOf([&] { containees.back(); }), "sequence is empty");

    Box const lid = box();
    b.setOnlyLid(lid);
    EXPECT_EQ(*containees.begin(), ClassObject(lid)) << "the first part is empty";
    Box const first = box();
    Box const second = box();
    b.getItems().push_back(first);
    b.getItems().push_back(second);
    std::vector<ClassObject> const expected{first, second, lid};
    EXPECT_EQ(std::vector<ClassObject>(containees.begin(), containees.end()), expected);
    EXPECT_EQ(std::vector<ClassObject>(std::reverse_iterator(containees.end()),
                                       std::reverse_iterator(containees.begin())),
              std::vector<ClassObject>(expected.rbegin(), expected.rend()));
    EXPECT_EQ(containees.at(2), ClassObject(lid));
    EXPECT_EQ(containees.front(), ClassObject(first));
    EXPECT_EQ(containees.back(), ClassObject(lid));
    EXPECT_TRUE(containees.contains(second));
    EXPECT_FALSE(containees.contains(b));
    EXPECT_FALSE(containees.contains(sample::Thing::create(model))) << "no part can hold it";
}

TEST_F(SequenceView, RemovalFromACombinationGoesToThePartThatHoldsTheElement) {
    Box const b = box();
    Box const item = box();
    Box const lid = box();
    b.getItems().push_back(item);
    b.setOnlyLid(lid);
    lid->setOnlyContainerQOB(model.getDeviant(), b);
    EXPECT_EQ(b.getContainees().removeAll(sample::Thing::create(model)), 0);
    EXPECT_EQ(b.getContainees().removeAll(lid), 1);
    EXPECT_FALSE(b.getLid().isValid());
    EXPECT_FALSE(lid.getOwner().isValid());
    EXPECT_EQ(b.getContaineesWithoutAssociation().removeAll(item), 1);
    EXPECT_TRUE(b.getItems().empty());
    EXPECT_EQ(item.getOwner(), b) << "one end only";

    char const* const words =
        "A combined sequence cannot be written; only a given element can be removed.";
    b.setOnlyLid(lid);
    auto const containees = b.getContainees();
    EXPECT_EQ(messageOf([&] { containees.clear(); }), words);
    EXPECT_EQ(messageOf([&] { containees.push_back(item); }), words);
    EXPECT_EQ(messageOf([&] { containees.push_front(item); }), words);
    EXPECT_EQ(messageOf([&] { containees.insert(0, item); }), words);
    EXPECT_EQ(messageOf([&] { containees.insert(containees.begin(), item); }), words);
    EXPECT_EQ(messageOf([&] { containees.erase(0); }), words);
    EXPECT_EQ(messageOf([&] { containees.erase(containees.begin()); }), words);
    EXPECT_EQ(messageOf([&] { containees.erase(containees.begin(), containees.end()); }), words);
    EXPECT_EQ(messageOf([&] { containees.pop_back(); }), words);
    EXPECT_EQ(messageOf([&] { containees.pop_front(); }), words);
    EXPECT_EQ(messageOf([&] { containees.replace(0, item); }), words);
    EXPECT_EQ(b.getLid(), lid);
}

TEST_F(SequenceView, ValuesSeenAsObjectsAreBoxedAndWrittenThrough) {
    Box const b = box();
    b.getNumbers().push_back(1);
    Sequence<QOB::Object> const objects(QOB::asObjects(b.getNumbers()));
    EXPECT_EQ(Integer(objects.at(0)), 1);
    objects.push_back(Integer(2));
    EXPECT_EQ(numbersIn(b), (std::vector<int>{1, 2}));
    EXPECT_TRUE(objects.contains(Integer(2)));
    EXPECT_EQ(Integer(*std::next(objects.begin())), 2);
    EXPECT_TRUE(objects.generic_equal(QOB::asObjects(b.getNumbers())));
    objects.erase(objects.begin());
    EXPECT_EQ(*b.getNumbers().begin(), 2);
    objects.insert(objects.begin(), Integer(5));
    EXPECT_EQ(numbersIn(b), (std::vector<int>{5, 2}));
}

TEST_F(SequenceView, AssignmentThroughAnAssociationMovesTheOtherEnds) {
    Box const source = box();
    Box const target = box();
    Box const a = box();
    Box const b = box();
    target.getItems().push_back(a);
    source.getItemsWithoutAssociation().push_back(b);
    target.getItems().assign(source.getItems());
    EXPECT_EQ(all(target.getItems()), (Boxes{b}));
    EXPECT_EQ(b.getOwner(), target);
    EXPECT_FALSE(a.getOwner().isValid());
}

TEST_F(SequenceView, TransactionRestoresTheElements) {
    Box const b = box();
    Box const item = box();
    b.getItems().push_back(item);
    b.getNames().push_back("kept");
    {
        QOB::Transaction transaction(model);
        b.getItems().clear();
        b.getItems().push_back(box());
        b.getNames().clear();
        transaction.rollback();
    }
    EXPECT_EQ(all(b.getItems()), (Boxes{item}));
    EXPECT_EQ(item.getOwner(), b);
    EXPECT_EQ(b.getNames().front(), "kept");
}

TEST_F(SequenceView, NothingIsLeftOfObjectsAndStates) {
    int const objects = Alive::objects;
    int const states = Alive::states;
    {
        QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
        Box const b = Box::create(other);
        for (int i = 0; i < 200; ++i) {
            b.getItems().push_back(Box::create(other));
            b.getPeers().push_back(Box::create(other));
        }
        Box const branched = b.in(other.createDeviant());
        branched.getItems().erase(100);
        branched.getPeers().clear();
        EXPECT_EQ(b.getItems().size(), 200);
        other.destroy();
    }
    EXPECT_EQ(Alive::objects, objects);
    EXPECT_EQ(Alive::states, states);
}
