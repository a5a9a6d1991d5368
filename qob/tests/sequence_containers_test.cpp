#include "support/allocation_count.h"
#include "support/box.h"
#include "support/counted_element.h"
#include "support/fixture.h"
#include "support/vtable.h"

#include <limits>

using QOB::Deviant;
using QOB::Integer;
using QOB::ListQImpl;
using QOB::MultiIndexImpl;
using QOB::Real;
using QOB::String;
using QOB::Generic::IteratorIntf;
using QOB::Generic::IteratorPtr;
using QOB::Generic::Ref;
using QOB::Generic::SequenceIntf;
using QOB::Generic::toRef;
using sample::Box;
using sample::Thing;
using Things = MultiIndexImpl<Thing>;

namespace {

Deviant const noDeviant;

std::vector<int> numbers(SequenceIntf const& sequence) {
    std::vector<int> result;
    for (IteratorPtr i = sequence.generic_begin(noDeviant);
         !i->generic_sameAs(sequence.generic_end(noDeviant).get());
         i->generic_next(noDeviant)) {
        result.push_back(QOB::Generic::valueOf<Integer>(i->generic_value(noDeviant)));
    }
    return result;
}

/// A value in transit that tells how often it was counted up and down.
struct CountingRef {
    static int ups;
    static int downs;

    static Ref of(int value) {
        ups = downs = 0;
        return {new QOB::Generic::ValueBlock<Integer>(value),
                noDeviant,
                [](void* data, bool up) {
                    ++(up ? ups : downs);
                    QOB::Generic::ValueBlock<Integer>::refFn(data, up);
                },
                &QOB::Generic::ValueBlock<Integer>::equalFn};
    }
    static bool balanced() { return ups > 0 && ups == downs; }
};
int CountingRef::ups = 0;
int CountingRef::downs = 0;

template <class Container>
class NumberContainer : public testing::Test {
protected:
    Container container;

    void fill(std::initializer_list<int> values) {
        for (int const value : values) {
            container.generic_push_back(noDeviant, toRef(Integer(value)));
        }
    }
};
using NumberContainers = testing::Types<ListQImpl<Integer>, MultiIndexImpl<Integer>>;
TYPED_TEST_SUITE(NumberContainer, NumberContainers, );

/// The operations that take a place, by what they do with a bad one.
template <class Container>
std::string atFailure(Container& container, int index) {
    return messageOf([&] { container.generic_at(noDeviant, index); });
}

class ReferenceContainer : public ThingModel {
protected:
    Thing thing(int number = 0) const { return Thing::create(model, number); }
    void push(Thing const& element) { things.generic_push_back(root(), toRef(element)); }
    Deviant root() const { return model.getDeviant(); }
    std::vector<Thing> elements() const {
        QOB::Sequence<Thing> const all(const_cast<Things*>(&things), root());
        return {all.begin(), all.end()};
    }

    Things things;
};

} // namespace

TYPED_TEST(NumberContainer, KeepsTheOrderOfItsOperations) {
    auto& c = this->container;
    this->fill({1, 2, 3});
    c.generic_push_front(noDeviant, toRef(Integer(0)));
    c.generic_insert(noDeviant, 2, toRef(Integer(9)));
    c.generic_insert(noDeviant, c.generic_size(noDeviant), toRef(Integer(8)));
    EXPECT_EQ(numbers(c), (std::vector<int>{0, 1, 9, 2, 3, 8}));
    c.generic_erase(noDeviant, 2);
    c.generic_pop_back(noDeviant);
    c.generic_pop_front(noDeviant);
    c.generic_replace(noDeviant, 0, toRef(Integer(7)));
    EXPECT_EQ(numbers(c), (std::vector<int>{7, 2, 3}));

    IteratorPtr const second = c.generic_begin(noDeviant);
    second->generic_next(noDeviant);
    IteratorPtr const inserted = c.generic_insert(noDeviant, second.get(), toRef(Integer(5)));
    EXPECT_EQ(QOB::Generic::valueOf<Integer>(inserted->generic_value(noDeviant)), 5);
    IteratorPtr const behind = c.generic_erase(noDeviant, inserted.get());
    EXPECT_EQ(QOB::Generic::valueOf<Integer>(behind->generic_value(noDeviant)), 2);
    IteratorPtr const end =
        c.generic_erase(noDeviant, behind.get(), c.generic_end(noDeviant).get());
    EXPECT_TRUE(end->generic_sameAs(c.generic_end(noDeviant).get()));
    EXPECT_EQ(numbers(c), (std::vector<int>{7}));
    EXPECT_TRUE(c.generic_contains(noDeviant, toRef(Integer(7))));
    EXPECT_EQ(c.generic_removeAll(noDeviant, toRef(Integer(1))), 0);
    EXPECT_EQ(c.generic_removeAll(noDeviant, toRef(Integer(7))), 1);
    EXPECT_TRUE(c.generic_empty(noDeviant));
}

TYPED_TEST(NumberContainer, RefusesBadPlacesWithTheSameWordsAndStaysAsItIs) {
    auto& c = this->container;
    char const* const negative = "sequence index must be positive";
    char const* const tooLarge = "sequence index out of bounds";
    char const* const empty = "sequence is empty";
    Ref const value = toRef(Integer(1));

    EXPECT_EQ(messageOf([&] { c.generic_front(noDeviant); }), empty);
    EXPECT_EQ(messageOf([&] { c.generic_back(noDeviant); }), empty);
    EXPECT_EQ(messageOf([&] { c.generic_pop_back(noDeviant); }), empty);
    EXPECT_EQ(messageOf([&] { c.generic_pop_front(noDeviant); }), empty);
    EXPECT_EQ(messageOf([&] { c.generic_at(noDeviant, 0); }), tooLarge);
    EXPECT_EQ(messageOf([&] { c.generic_at(noDeviant, -1); }), negative);
    EXPECT_EQ(messageOf([&] { c.generic_erase(noDeviant, 0); }), tooLarge);
    EXPECT_EQ(messageOf([&] { c.generic_insert(noDeviant, 1, value); }), tooLarge);
    EXPECT_EQ(messageOf([&] { c.generic_insert(noDeviant, -1, value); }), negative);
    EXPECT_EQ(messageOf([&] { c.generic_replace(noDeviant, 0, value); }), tooLarge);
    EXPECT_EQ(messageOf([&] { c.generic_replace(noDeviant, -1, value); }), negative);
    EXPECT_EQ(messageOf([&] { c.generic_erase(noDeviant, -1); }), negative);
    EXPECT_TRUE(c.generic_begin(noDeviant)->generic_sameAs(c.generic_end(noDeviant).get()));

    c.generic_insert(noDeviant, 0, value);
    EXPECT_EQ(messageOf([&] { c.generic_at(noDeviant, 1); }), tooLarge);
    EXPECT_EQ(messageOf([&] { c.generic_erase(noDeviant, 1); }), tooLarge);
    EXPECT_EQ(numbers(c), (std::vector<int>{1}));
}

TYPED_TEST(NumberContainer, GivesBackEveryRefThatItIsGiven) {
    auto& c = this->container;
    c.generic_push_back(noDeviant, CountingRef::of(1));
    EXPECT_TRUE(CountingRef::balanced());
    c.generic_push_back(noDeviant, CountingRef::of(1)); // a second one: kept or refused
    EXPECT_TRUE(CountingRef::balanced());
    c.generic_push_front(noDeviant, CountingRef::of(2));
    EXPECT_TRUE(CountingRef::balanced());
    c.generic_insert(noDeviant, 0, CountingRef::of(3));
    EXPECT_TRUE(CountingRef::balanced());
    c.generic_insert(noDeviant, c.generic_begin(noDeviant).get(), CountingRef::of(4));
    EXPECT_TRUE(CountingRef::balanced());
    c.generic_replace(noDeviant, 0, CountingRef::of(5));
    EXPECT_TRUE(CountingRef::balanced());
    EXPECT_THROW(c.generic_replace(noDeviant, -1, CountingRef::of(6)), QOB::Exception);
    EXPECT_TRUE(CountingRef::balanced());
    EXPECT_THROW(c.generic_insert(noDeviant, 99, CountingRef::of(6)), QOB::Exception);
    EXPECT_TRUE(CountingRef::balanced());
    c.generic_contains(noDeviant, CountingRef::of(5));
    EXPECT_TRUE(CountingRef::balanced());
    c.generic_removeAll(noDeviant, CountingRef::of(5));
    EXPECT_TRUE(CountingRef::balanced());
}

TYPED_TEST(NumberContainer, IteratorsCompareOnlyWithTheirKind) {
    auto& c = this->container;
    this->fill({1, 2});
    IteratorPtr const begin = c.generic_begin(noDeviant);
    EXPECT_FALSE(begin->generic_sameAs(nullptr));
    EXPECT_FALSE(begin->generic_sameAs(ListQImpl<String>().generic_begin(noDeviant).get()));
    IteratorPtr const copy = begin->generic_clone();
    EXPECT_TRUE(begin->generic_sameAs(copy.get()));
    copy->generic_next(noDeviant);
    EXPECT_FALSE(begin->generic_sameAs(copy.get()));
    copy->generic_prev(noDeviant);
    EXPECT_TRUE(begin->generic_sameAs(copy.get()));
}

TYPED_TEST(NumberContainer, CopyIsItsOwn) {
    this->fill({1, 2});
    TypeParam copy(this->container);
    copy.generic_push_back(noDeviant, toRef(Integer(3)));
    EXPECT_EQ(numbers(this->container), (std::vector<int>{1, 2}));
    this->container = copy;
    copy.generic_clear(noDeviant);
    EXPECT_EQ(numbers(this->container), (std::vector<int>{1, 2, 3}));
    copy.incRef();
    copy.decRef();
    EXPECT_EQ(copy.numRef(), 0) << "a member of an object is not freed by its count";
}

TEST(ListSequence, SharesOneEmptyBlockUntilItIsReadByPositionOrWritten) {
    ListQImpl<Integer> const first; // the first of the type may make the shared block
    std::size_t const before = VelumTest::allocationCount();
    ListQImpl<Integer> list;
    EXPECT_EQ(list.generic_size(noDeviant), 0);
    EXPECT_TRUE(list.generic_empty(noDeviant));
    EXPECT_EQ(&list.values(), &first.values());
    EXPECT_EQ(VelumTest::allocationCount(), before);
    list.generic_begin(noDeviant);
    EXPECT_NE(&list.values(), &first.values());
    EXPECT_EQ(&ListQImpl<Integer>().values(), &first.values());
    list.generic_push_back(noDeviant, toRef(Integer(1)));
    auto const* const own = &list.values();
    list.generic_clear(noDeviant);
    EXPECT_EQ(&list.values(), own) << "clearing keeps the block";
}

TEST(ListSequence, MayHoldAValueMoreThanOnce) {
    ListQImpl<String> list;
    for (char const* const text : {"a", "b", "a", "a", "c"}) {
        list.generic_push_back(noDeviant, toRef(String(text)));
    }
    EXPECT_EQ(list.generic_removeAll(noDeviant, toRef(String("a"))), 3);
    EXPECT_EQ(list.values(), (std::vector<String>{"b", "c"}));
    EXPECT_STREQ(list.generic_getLumvoName(true, true, "fallback"), "fallback");
}

TEST(UniqueValueSequence, RefusesASecondEqualValueAndKeepsTheFirstInItsPlace) {
    MultiIndexImpl<Integer> cells;
    for (int const value : {1, 2, 1}) {
        cells.generic_push_back(noDeviant, toRef(Integer(value)));
    }
    cells.generic_insert(noDeviant, 0, toRef(Integer(2)));
    cells.generic_push_front(noDeviant, toRef(Integer(2)));
    EXPECT_EQ(numbers(cells), (std::vector<int>{1, 2}));
    IteratorPtr const existing =
        cells.generic_insert(noDeviant, cells.generic_begin(noDeviant).get(), toRef(Integer(2)));
    EXPECT_EQ(QOB::Generic::valueOf<Integer>(existing->generic_value(noDeviant)), 2);
    existing->generic_next(noDeviant);
    EXPECT_TRUE(existing->generic_sameAs(cells.generic_end(noDeviant).get()));
    cells.generic_replace(noDeviant, 0, toRef(Integer(2)));
    EXPECT_EQ(numbers(cells), (std::vector<int>{1, 2})) << "a refused replacement changes nothing";
}

TEST(UniqueValueSequence, NotANumberIsOneValueAmongOthers) {
    MultiIndexImpl<Real> reals;
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (double const value : {nan, 1.0, nan, 0.5}) {
        reals.generic_push_back(noDeviant, toRef(Real(value)));
    }
    EXPECT_EQ(reals.generic_size(noDeviant), 3);
    EXPECT_TRUE(reals.generic_contains(noDeviant, toRef(Real(0.5))));
}

TEST(UniqueValueSequence, EmptyOneAllocatesNothing) {
    std::size_t const before = VelumTest::allocationCount();
    MultiIndexImpl<Real> const empty;
    MultiIndexImpl<Real> copy(empty);
    copy.generic_clear(noDeviant);
    EXPECT_TRUE(copy.generic_empty(noDeviant));
    EXPECT_EQ(VelumTest::allocationCount(), before);
}

TEST(SequenceNames, FollowTheElementAndTheTwoForms) {
    MultiIndexImpl<Integer> const integers;
    EXPECT_STREQ(integers.generic_getLumvoName(false, false, ""), "QOB.SequenceOfInteger");
    EXPECT_STREQ(integers.generic_getLumvoName(false, true, ""), "QOB.SequenceOfInteger");
    EXPECT_STREQ(integers.generic_getLumvoName(true, true, ""), "QOB.ImmutableSequenceOfInteger");
    EXPECT_STREQ(MultiIndexImpl<QOB::ExternalToolInfo>().generic_getLumvoName(false, false, ""),
                 "QOB.SequenceOfExternalToolInfo");
    Things const things;
    EXPECT_STREQ(things.generic_getLumvoName(false, false, ""), "sample.SequenceOfThing");
    EXPECT_STREQ(things.generic_getLumvoName(false, true, ""), "sample.SequenceOfImmutableThing");
    EXPECT_STREQ(things.generic_getLumvoName(true, false, ""), "sample.ImmutableSequenceOfThing");
    EXPECT_STREQ(things.generic_getLumvoName(true, true, ""),
                 "sample.ImmutableSequenceOfImmutableThing");
}

TEST_F(ReferenceContainer, HoldsAnObjectOnceWhateverItsDeviant) {
    Thing const a = thing(1);
    Thing const b = thing(2);
    push(a);
    push(b);
    push(a.in(model.createDeviant()));
    things.generic_insert(root(), 0, toRef(b));
    EXPECT_EQ(elements(), (std::vector<Thing>{a, b}));
    EXPECT_TRUE(things.generic_contains(root(), toRef(b)));
    Ref const first = things.generic_at(root(), 0);
    EXPECT_EQ(first.data, static_cast<QOB::NSInterface::ClassObjectIntf*>(a.get()));
    EXPECT_EQ(first.deviant, root());
    EXPECT_EQ(things.generic_removeAll(root(), toRef(thing())), 0);
    EXPECT_EQ(things.generic_removeAll(root(), toRef(a)), 1);
    EXPECT_EQ(elements(), (std::vector<Thing>{b}));
}

TEST_F(ReferenceContainer, CountsEachElementOnceAndGivesTheCountBack) {
    Thing const a = thing();
    Thing const b = thing();
    int const before = a.count();
    push(a);
    push(a);
    EXPECT_EQ(a.count(), before + 1);
    things.generic_replace(root(), 0, toRef(a));
    EXPECT_EQ(a.count(), before + 1) << "the same element is no replacement";
    things.generic_replace(root(), 0, toRef(b));
    EXPECT_EQ(a.count(), before);
    EXPECT_EQ(b.count(), before + 1);
    things.generic_push_front(root(), toRef(a));
    things.generic_pop_front(root());
    EXPECT_EQ(a.count(), before);
    things.generic_insert(root(), things.generic_end(root()).get(), toRef(a));
    things.generic_erase(
        root(), things.generic_begin(root()).get(), things.generic_end(root()).get());
    push(a);
    push(b);
    things.generic_erase(root(), 0);
    things.generic_erase(root(), things.generic_begin(root()).get());
    push(a);
    things.generic_clear(root());
    push(b);
    things.generic_pop_back(root());
    EXPECT_EQ(a.count(), before);
    EXPECT_EQ(b.count(), before);
    {
        Things other;
        other.generic_push_back(root(), toRef(a));
        bool handled = false;
        things.specialized_assign(root(), &other, root(), handled);
        EXPECT_TRUE(handled);
        EXPECT_EQ(a.count(), before + 2);
        EXPECT_TRUE(things.generic_equal(root(), &other, root()));
    }
    EXPECT_EQ(a.count(), before + 1);
}

TEST_F(ReferenceContainer, RefusedReplacementCostsTheOldElementOneCount) {
    Thing const a = thing();
    Thing const b = thing();
    push(a);
    push(b);
    int const before = a.count();
    int const other = b.count();
    things.generic_replace(root(), 0, toRef(b));
    EXPECT_EQ(elements(), (std::vector<Thing>{a, b}));
    EXPECT_EQ(a.count(), before - 1);
    EXPECT_EQ(b.count(), other);
    a.get()->incRef(); // what the test took away

    QOB::Sequence<Thing>(&things, root()).replace(0, b);
    EXPECT_EQ(a.count(), before) << "the typed operation looks first";
    EXPECT_EQ(elements(), (std::vector<Thing>{a, b}));
}

TEST(ReferenceContainerOrder, ReplacementCountsTheOldElementDownBeforeTheNewOneUp) {
    std::string log;
    WatchedElement a('a', log);
    WatchedElement b('b', log);
    MultiIndexImpl<QOB::ClassObject> objects;
    objects.storage().push_back(&a);
    Ref element = QOB::Generic::objectRef(&b, noDeviant);
    log.clear();
    objects.generic_replace(noDeviant, 0, std::move(element));
    EXPECT_EQ(log, "-a+b-b") << "the last one is the Ref's";
    log.clear();
    objects.generic_erase(noDeviant, 0);
    EXPECT_EQ(log, "-b");
}

TEST_F(ReferenceContainer, RefusesNullAndObjectsOfAnotherClass) {
    char const* const words = "null object while inserting into sample.SequenceOfThing";
    Thing const a = thing();
    push(a);
    Ref const null = toRef(Thing());
    Ref const other = toRef(Box::create(model));
    for (Ref const& bad : {null, other}) {
        EXPECT_EQ(messageOf([&] { things.generic_push_back(root(), bad); }), words);
        EXPECT_EQ(messageOf([&] { things.generic_push_front(root(), bad); }), words);
        EXPECT_EQ(messageOf([&] { things.generic_insert(root(), 0, bad); }), words);
        EXPECT_EQ(messageOf([&] { things.generic_replace(root(), 0, bad); }), words);
        EXPECT_EQ(messageOf([&] { things.generic_contains(root(), bad); }), words);
        EXPECT_EQ(messageOf([&] { things.generic_removeAll(root(), bad); }), words);
        IteratorPtr const begin = things.generic_begin(root());
        EXPECT_EQ(messageOf([&] { things.generic_insert(root(), begin.get(), bad); }), words);
    }
    EXPECT_EQ(elements(), (std::vector<Thing>{a}));
    EXPECT_EQ(messageOf([&] { things.generic_at(root(), 1); }), "sequence index out of bounds");
    EXPECT_EQ(messageOf([&] { things.generic_at(root(), -1); }), "sequence index must be positive");
}

TEST_F(ReferenceContainer, InsertionOfADuplicateByPositionGivesThePlaceOfTheFirst) {
    Thing const a = thing();
    Thing const b = thing();
    push(a);
    push(b);
    IteratorPtr const found =
        things.generic_insert(root(), things.generic_begin(root()).get(), toRef(b));
    EXPECT_EQ(found->generic_value(root()).data,
              static_cast<QOB::NSInterface::ClassObjectIntf*>(b.get()));
    EXPECT_EQ(elements(), (std::vector<Thing>{a, b}));
}

TEST(SequenceInterface, KeepsTheOrderOfItsVirtualOperations) {
    using VelumTest::slotOf;
    using S = SequenceIntf;
    using D = Deviant const&;
    using I = IteratorIntf const*;
    // The destructor takes 0 and 1; counting, the list of references, the visitor and the cast
    // follow it.
    std::size_t slot = slotOf(&QOB::ReferenceCountingIntf::incRef);
    EXPECT_EQ(slot, 2U);
    slot = slotOf(&QOB::ReferenceCountingIntf::cast);
    EXPECT_EQ(slot, 7U);
    std::size_t const expected[] = {
        slotOf(&S::generic_at),
        slotOf(&S::generic_front),
        slotOf(&S::generic_back),
        slotOf(&S::generic_begin),
        slotOf(&S::generic_end),
        slotOf(&S::generic_clear),
        slotOf(&S::generic_size),
        slotOf(&S::generic_empty),
        slotOf(static_cast<IteratorPtr (S::*)(D, I, Ref)>(&S::generic_insert)),
        slotOf(static_cast<void (S::*)(D, int, Ref)>(&S::generic_insert)),
        slotOf(static_cast<void (S::*)(D, int)>(&S::generic_erase)),
        slotOf(static_cast<IteratorPtr (S::*)(D, I, I)>(&S::generic_erase)),
        slotOf(static_cast<IteratorPtr (S::*)(D, I)>(&S::generic_erase)),
        slotOf(&S::generic_pop_back),
        slotOf(&S::generic_pop_front),
        slotOf(&S::generic_push_back),
        slotOf(&S::generic_push_front),
        slotOf(&S::generic_replace),
        slotOf(&S::generic_contains),
        slotOf(&S::generic_getLumvoName),
        slotOf(&S::generic_removeAll),
        slotOf(&S::specialized_equal),
        slotOf(&S::specialized_assign)};
    for (std::size_t const actual : expected) {
        EXPECT_EQ(actual, ++slot);
    }
    slot = 7;
    for (std::size_t const actual : {slotOf(&IteratorIntf::generic_value),
                                     slotOf(&IteratorIntf::generic_next),
                                     slotOf(&IteratorIntf::generic_prev),
                                     slotOf(&IteratorIntf::generic_clone),
                                     slotOf(&IteratorIntf::generic_sameAs)}) {
        EXPECT_EQ(actual, ++slot);
    }
}

TEST(CountedViews, FailOnACountBelowZero) {
    char const* const words = "Internal assertion without a message detected! Please fix me asap";
    ListQImpl<Integer> list;
    IteratorPtr const iterator = list.generic_begin(noDeviant);
    EXPECT_EQ(iterator->numRef(), 0);
    EXPECT_EQ(messageOf([&] { iterator->decRef(); }), words);
    EXPECT_EQ(messageOf([&] { iterator->incRef(); }), words);
    QOB::OwnedSequence<ListQImpl<Integer>> view;
    EXPECT_EQ(messageOf([&] { view.decRef(); }), words);
    EXPECT_EQ(messageOf([&] { view.incRef(); }), words);
    std::string const source = "qob/export/include/qob/kernel/containers/sequence/sequenceproxy";
    EXPECT_NE(failureOf([&] { view.incRef(); }).find(" at " + source), std::string::npos);
    IteratorIntf* const counted = list.generic_begin(noDeviant).release();
    counted->incRef();
    counted->incRef();
    counted->decRef();
    EXPECT_EQ(counted->numRef(), 1);
    counted->decRef(); // frees it: the leak check sees to it
}
