#include "qob/qob/class.h"
#include "support/box.h"
#include "support/fixture.h"

#include <algorithm>
#include <iterator>
#include <numeric>

using QOB::ClassObject;
using QOB::ImmutableSequence;
using QOB::Integer;
using QOB::MakeSequence;
using QOB::Sequence;
using QOB::String;
using sample::Thing;

namespace {

using SequenceHandle = ThingModel;

static_assert(std::bidirectional_iterator<Sequence<Thing>::iterator>);
static_assert(std::bidirectional_iterator<Sequence<Integer>::iterator>);
static_assert(std::ranges::bidirectional_range<Sequence<Thing>>);
static_assert(std::ranges::sized_range<ImmutableSequence<String>>);
static_assert(std::is_convertible_v<Sequence<Thing>, Sequence<ClassObject>>);
static_assert(std::is_convertible_v<Sequence<Thing>, ImmutableSequence<ClassObject>>);
static_assert(!std::is_convertible_v<Sequence<ClassObject>, Sequence<Thing>>);
static_assert(!std::is_convertible_v<ImmutableSequence<Thing>, Sequence<ClassObject>>);

// From elements that may be written to those that may only be read, never back; and no typed
// sequence is taken for an untyped one.
using QOB::Class;
using QOB::ImmutableClass;
using QOB::ImmutableClassObject;
static_assert(std::is_convertible_v<ImmutableSequence<Class>, ImmutableSequence<ImmutableClass>>);
static_assert(std::is_convertible_v<Sequence<Class>, ImmutableSequence<ImmutableClassObject>>);
static_assert(!std::is_constructible_v<Sequence<Class>, Sequence<ImmutableClass>>);
static_assert(
    !std::is_constructible_v<ImmutableSequence<Class>, ImmutableSequence<ImmutableClass>>);
static_assert(!std::is_constructible_v<Sequence<ClassObject>, Sequence<ImmutableClass>>);
static_assert(
    !std::is_constructible_v<ImmutableSequence<ClassObject>, ImmutableSequence<ImmutableClass>>);
static_assert(!std::is_constructible_v<Sequence<Thing>, ImmutableSequence<Thing>>);
static_assert(!std::is_constructible_v<Sequence<Thing>, Sequence<Integer>>);
static_assert(!std::is_constructible_v<Sequence<String>, Sequence<Integer>>);
static_assert(!std::is_constructible_v<ImmutableSequence<Thing>, Sequence<ClassObject>>);
static_assert(std::is_constructible_v<Sequence<Thing>, QOB::Generic::SequenceRef>);
static_assert(sizeof(Sequence<Thing>) == 2 * sizeof(void*));

std::vector<int> values(ImmutableSequence<Integer> const& sequence) {
    return {sequence.begin(), sequence.end()};
}

} // namespace

TEST_F(SequenceHandle, NullOneRefusesEveryOperation) {
    std::string const words = "Cannot access NULL sequence. Use MakeSequence to create sequences."
                              "See testSequenceCreation in qob/kernel/unittest/sequence_tests.";
    Sequence<Integer> const null;
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(messageOf([&] { null.size(); }), words);
    EXPECT_EQ(messageOf([&] { null.empty(); }), words);
    EXPECT_EQ(messageOf([&] { null.begin(); }), words);
    EXPECT_EQ(messageOf([&] { null.at(0); }), words);
    EXPECT_EQ(messageOf([&] { null.push_back(1); }), words);
    EXPECT_EQ(messageOf([&] { null.clear(); }), words);
    EXPECT_EQ(messageOf([&] { null.contains(1); }), words);
    EXPECT_EQ(messageOf([&] { MakeSequence<Integer>().assign(null); }), words);
    EXPECT_EQ(messageOf([&] { Sequence<ClassObject> const wide = Sequence<Thing>(); }), words);
    EXPECT_NE(failureOf([&] {
                  null.size();
              }).find("qob/export/include/qob/kernel/containers/sequence/sequenceref"),
              std::string::npos);
}

TEST_F(SequenceHandle, HasTheOperationsOfAContainer) {
    Sequence<Integer> const s = MakeSequence<Integer>({}, {1, 2, 3});
    s.push_back(4);
    s.push_front(0);
    s.insert(1, 9);
    s.erase(2);
    s.replace(0, 7);
    EXPECT_EQ(values(s), (std::vector<int>{7, 9, 2, 3, 4}));
    EXPECT_EQ(s.front(), 7);
    EXPECT_EQ(s.back(), 4);
    EXPECT_EQ(s[2], 2);
    EXPECT_TRUE(s.contains(3));
    s.push_back(9);
    EXPECT_EQ(s.removeAll(9), 2);
    auto const behind = s.erase(s.begin());
    EXPECT_EQ(behind, s.begin());
    EXPECT_EQ(*s.insert(s.end(), 5), 5);
    s.erase(s.begin(), std::next(s.begin()));
    s.pop_back();
    s.pop_front();
    EXPECT_EQ(values(s), (std::vector<int>{4}));
    s.clear();
    EXPECT_TRUE(s.empty());
}

TEST_F(SequenceHandle, WorksWithTheStandardAlgorithms) {
    Thing const a = Thing::create(model, 1);
    Thing const b = Thing::create(model, 2);
    Sequence<Thing> const things = MakeSequence<Thing>(model.getDeviant(), {a, b});
    int sum = 0;
    for (Thing const& thing : things) {
        sum += thing.getNumber();
    }
    EXPECT_EQ(sum, 3);
    EXPECT_EQ(std::ranges::find(things, b)->getNumber(), 2);
    EXPECT_EQ(std::ranges::distance(things), 2);
    EXPECT_EQ(*std::ranges::prev(things.end()), b);
    EXPECT_TRUE(
        std::any_of(things.begin(), things.end(), [&](Thing const& thing) { return thing == a; }));
    auto i = things.begin();
    auto const old = i++;
    EXPECT_EQ(*old, a);
    EXPECT_EQ(*i--, b);
    EXPECT_EQ(i, old);
    EXPECT_EQ(Sequence<Thing>::iterator(), Sequence<Thing>::iterator());
}

TEST_F(SequenceHandle, IteratorKeepsASequenceOfItsOwnAlive) {
    auto i = MakeSequence<Integer>({}, {1, 2}).begin();
    EXPECT_EQ(*++i, 2);
}

TEST_F(SequenceHandle, CopiesCountTheSequenceAndShareIt) {
    Sequence<Integer> const s = MakeSequence<Integer>();
    EXPECT_EQ(s.get()->numRef(), 1);
    {
        Sequence<Integer> copy(s);
        EXPECT_EQ(s.get()->numRef(), 2);
        Sequence<Integer> other = MakeSequence<Integer>();
        other = copy;
        copy = Sequence<Integer>(other);
        EXPECT_EQ(s.get()->numRef(), 3);
        other.push_back(1);
    }
    EXPECT_EQ(s.get()->numRef(), 1);
    EXPECT_EQ(s.size(), 1);
}

TEST_F(SequenceHandle, ShowsElementsAsABaseClassAndWritesThroughIt) {
    Thing const a = Thing::create(model, 1);
    Thing const b = Thing::create(model, 2);
    sample::Box const other = sample::Box::create(model);
    Sequence<Thing> const things = MakeSequence<Thing>(model.getDeviant(), {a});
    Sequence<ClassObject> const objects = things;
    objects.push_back(b);
    EXPECT_EQ(things.back(), b);
    EXPECT_EQ(objects.back(), ClassObject(b));
    EXPECT_TRUE(objects.contains(a));
    EXPECT_FALSE(objects.contains(other)) << "it can't hold one of another class";
    EXPECT_EQ(objects.removeAll(other), 0);
    EXPECT_EQ(messageOf([&] { objects.push_back(other); }),
              "null object while inserting into sample.SequenceOfThing");
    EXPECT_EQ(objects.removeAll(b), 1);
    EXPECT_EQ(things.size(), 1);
    EXPECT_STREQ(objects.generic_getLumvoName(false, false, "fallback"), "fallback");
}

TEST_F(SequenceHandle, ElementsOfAnotherTypeAreRefused) {
    char const* const words = "The sequence holds elements of another type.";
    QOB::Generic::SequenceRef const integers = MakeSequence<Integer>({}, {1});
    QOB::Generic::SequenceRef const things =
        MakeSequence<Thing>(model.getDeviant(), {Thing::create(model)});
    EXPECT_EQ(Sequence<Integer>(integers).front(), 1);
    EXPECT_EQ(messageOf([&] { Sequence<String>(integers).front(); }), words);
    EXPECT_EQ(messageOf([&] { *ImmutableSequence<Thing>(integers).begin(); }), words);
    EXPECT_EQ(messageOf([&] { Sequence<Integer>(things).at(0); }), words);
    EXPECT_EQ(messageOf([&] { Sequence<String>(integers).push_back("2"); }), words);
    EXPECT_EQ(messageOf([&] { Sequence<String>(integers).contains("1"); }), words);
    EXPECT_EQ(Sequence<sample::Box>(things).front().get(), nullptr) << "of another class";
    EXPECT_EQ(integers.generic_size(), 1);
}

TEST_F(SequenceHandle, IsTheSameSequenceForHandlesOfOneClass) {
    Sequence<Class> const classes = MakeSequence<Class>(model.getDeviant(), {Class::create(model)});
    ImmutableSequence<ImmutableClass> const readOnly = classes;
    EXPECT_EQ(readOnly.get(), classes.get());
    EXPECT_EQ(readOnly.front(), classes.front());
}

TEST_F(SequenceHandle, ComparesAndAssignsElementByElement) {
    Sequence<Integer> const a = MakeSequence<Integer>({}, {1, 2});
    Sequence<Integer> const b = MakeSequence<Integer>({}, {1});
    EXPECT_FALSE(a.generic_equal(b));
    b.push_back(3);
    EXPECT_FALSE(a.generic_equal(b));
    b.assign(a);
    EXPECT_TRUE(a.generic_equal(b));
    b.assign(b);
    EXPECT_EQ(values(b), (std::vector<int>{1, 2})) << "assigned to itself";
    EXPECT_FALSE(MakeSequence<String>({}, {"1", "2"}).generic_equal(a)) << "of another type";
    EXPECT_FALSE(a.get()->generic_equal({}, nullptr, {}));

    Thing const one = Thing::create(model);
    Sequence<Thing> const here = MakeSequence<Thing>(model.getDeviant(), {one});
    Sequence<Thing> const there =
        MakeSequence<Thing>(model.createDeviant(), {one.in(model.createDeviant())});
    EXPECT_TRUE(here.generic_equal(there)) << "an object is the same in every deviant";
}

TEST_F(SequenceHandle, NoReferenceIsLeftOver) {
    Thing const a = Thing::create(model);
    int const before = a.count();
    {
        Sequence<Thing> const s = MakeSequence<Thing>(model.getDeviant(), {a});
        Sequence<ClassObject> const wide = s;
        s.push_back(a);
        EXPECT_EQ(s.front(), a);
        EXPECT_TRUE(wide.contains(a));
        for (ClassObject const& object : wide) {
            EXPECT_EQ(object, ClassObject(a));
        }
        EXPECT_EQ(a.count(), before + 1);
    }
    EXPECT_EQ(a.count(), before);
}
