#include "fixture.h"
#include "qob/qob/class.h"
#include "qob/qob/factoryobject.h"
#include "qob/qob/introspection.h"
#include "support/allocation_count.h"

using sample::Thing;
namespace visitor = QOB::CooperativeVisitor::internal;

using Handle = ThingModel;

TEST_F(Handle, EmptyOneIsInvalidAndRaisesOnAccess) {
    Thing const empty;
    EXPECT_FALSE(empty.isValid());
    EXPECT_FALSE(static_cast<bool>(empty));
    EXPECT_EQ(messageOf([&] { empty.getNumber(); }),
              "Cannot access NULL ref. Use isValid() before calling methods");
    std::string const place = "Assertion failed: Cannot access NULL ref. Use isValid() before "
                              "calling methods at qob/export/include/qob/qob/";
    EXPECT_EQ(failureOf([] { QOB::Model().undo(); }).find(place + "model.h:"), 0U);
    EXPECT_EQ(failureOf([] { QOB::Model().destroy(); }).find(place + "model.h:"), 0U);
    EXPECT_EQ(failureOf([] { QOB::ImmutableClass().getName(); }).find(place + "class.h:"), 0U);
    EXPECT_EQ(failureOf([] { QOB::Object().toString(); }).find(place + "object.h:"), 0U);
    empty.setDeviant(model.getDeviant());
    EXPECT_FALSE(empty.getDeviant().isNotNull());
}

TEST_F(Handle, CountsItsObjectAndIsTwoWords) {
    static_assert(sizeof(Thing) == 2 * sizeof(void*));
    Thing thing = Thing::create(model);
    int const count = thing.count();
    {
        Thing const copy = thing; // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(thing.count(), count + 1);
    }
    EXPECT_EQ(thing.count(), count);
    Thing const& self = thing;
    thing = self;
    EXPECT_EQ(thing.count(), count);
    thing = Thing();
    EXPECT_FALSE(thing.isValid());
}

TEST_F(Handle, EqualityLooksAtTheObjectOnly) {
    Thing const thing = Thing::create(model);
    QOB::Deviant const branch = model.createDeviant();
    EXPECT_EQ(thing, thing.in(branch));
    EXPECT_NE(thing, Thing::create(model));
    EXPECT_EQ(std::hash<QOB::ClassObject>()(thing),
              std::hash<QOB::ClassObject>()(thing.in(branch)));
}

TEST_F(Handle, DeviantOfAnotherModelBecomesTheObjectsRoot) {
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    Thing const thing = Thing::create(model);
    EXPECT_EQ(thing.in(other.getDeviant()).getDeviant(), model.getDeviant());
    EXPECT_EQ(thing.in(QOB::Deviant()).getDeviant(), model.getDeviant());
    QOB::Deviant const branch = model.createDeviant();
    EXPECT_EQ(thing.in(branch).getDeviant(), branch);
    other.destroy();
}

TEST_F(Handle, MoveTakesThePointerAndTheDeviantTogether) {
    Thing const first = Thing::create(model);
    Thing const second = Thing::create(model);
    QOB::Deviant const branch = model.createDeviant();
    Thing from = first.in(branch);
    Thing to = second;
    int const firstCount = first.count();
    int const secondCount = second.count();
    to = std::move(from);
    EXPECT_EQ(to, first);
    EXPECT_EQ(to.getDeviant(), branch);
    EXPECT_EQ(from.get(), nullptr); // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(from.getDeviant().isNotNull());
    EXPECT_EQ(first.count(), firstCount);
    EXPECT_EQ(second.count(), secondCount - 1) << "let go at once";

    Thing& self = to;
    to = std::move(self);
    EXPECT_EQ(to, first);
    EXPECT_EQ(to.getDeviant(), branch);
    Thing const taken(std::move(to));
    EXPECT_EQ(taken.getDeviant(), branch);
    EXPECT_EQ(to.get(), nullptr); // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(to.getDeviant().isNotNull());
    EXPECT_EQ(first.count(), firstCount);
}

TEST_F(Handle, ConvertsUpAndDownByClass) {
    Thing const thing = Thing::create(model, 7);
    QOB::ClassObject const upward = thing;
    QOB::Object const object = upward;
    EXPECT_EQ(Thing(object).getNumber(), 7);
    QOB::Object const modelObject = model;
    EXPECT_FALSE(Thing(modelObject).isValid()) << "a model is no thing";
    EXPECT_EQ(Thing(modelObject).get(), nullptr);
}

TEST_F(Handle, DecrementBelowZeroRaisesAndChangesNothing) {
    auto* const loose = new sample::NSImplementation::ThingImpl();
    EXPECT_EQ(messageOf([&] { loose->decRef(); }),
              "Decrementing the ref count of a ref with count already 0");
    EXPECT_EQ(loose->numRef(), 0);
    loose->incRef();
    loose->decRef();
}

TEST_F(Handle, ChainOfAMillionReferencesIsFreedWithoutRecursion) {
    constexpr int length = 1'000'000;
    int const before = sample::NSImplementation::Alive::objects;
    Thing last;
    {
        Thing next;
        for (int i = 0; i < length; ++i) {
            Thing const thing = Thing::create(model);
            if (next.isValid()) {
                thing.setLink(next);
            }
            model->internal_removeRootObject(model.getDeviant(), thing.get());
            next = thing;
        }
        last = next;
    }
    EXPECT_EQ(sample::NSImplementation::Alive::objects, before + length);
    last = Thing();
    EXPECT_EQ(sample::NSImplementation::Alive::objects, before);
}

TEST_F(Handle, ReadingAllocatesNothingInAnyDeviant) {
    Thing const thing = Thing::create(model, 1);
    Thing const inBranch = thing.in(model.createDeviant());
    Thing const inChanged = thing.in(model.createDeviant());
    inChanged.setNumber(2);
    QOB::Transaction open(model);
    thing.setNumber(3);

    std::size_t const before = VelumTest::allocationCount();
    int sum = 0;
    for (Thing const* const view : {&thing, &inBranch, &inChanged}) {
        sum += view->getNumber();
        sum += view->isValid() ? 1 : 0;
        sum += view->getLink().isValid() ? 1 : 0;
        view->setNumber(view->getNumber());
        Thing const copy = *view;
        sum += copy.getObjectId();
    }
    EXPECT_EQ(VelumTest::allocationCount(), before);
    EXPECT_GT(sum, 0);
}

TEST_F(Handle, StateHasNoIdNoCountAndNoReadPath) {
    sample::NSImplementation::ThingDeviantImpl state;
    EXPECT_EQ(messageOf([&] { state.getObjectId(QOB::Deviant()); }), "this code should not be hit");
    EXPECT_EQ(messageOf([&] { state.getLumvoName(false); }), "Internal Error");
    state.incRef();
    EXPECT_EQ(state.numRef(), 0);
    EXPECT_EQ(state.getReadDeviantI(model.getDeviant(), &state), nullptr);
    EXPECT_FALSE(state.deviant_isValid(model.getDeviant()));
}

namespace {
void visitThing() {
}
void visitClassObject() {
}

visitor::MethodTable tableWith(visitor::ClassInfo const& info, visitor::Method method) {
    visitor::MethodTable table;
    table.grow(info.domain + 1U);
    table[info.domain].grow(info.tag + 1U);
    table[info.domain][info.tag] = method;
    return table;
}
} // namespace

TEST_F(Handle, VisitorFindsOwnMethodThenTheNearestAncestors) {
    Thing const thing = Thing::create(model);
    auto const& own = visitor::classInfo<sample::NSInterface::ThingIntf>();
    auto const& base = visitor::classInfo<QOB::NSInterface::ClassObjectIntf>();
    EXPECT_NE(own.domain, base.domain);
    EXPECT_EQ(thing->getVisitMethod(tableWith(own, &visitThing)).method, &visitThing);
    auto const found = thing->getVisitMethod(tableWith(base, &visitClassObject));
    EXPECT_EQ(found.method, &visitClassObject);
    EXPECT_EQ(found.object, QOB::ClassObject(thing).get());
    EXPECT_EQ(thing->getVisitMethod({}).method, nullptr);
    EXPECT_EQ(thing->getVisitMethod({}).object, nullptr);
    EXPECT_EQ(thing->cast({1000, 1000}), nullptr);
    EXPECT_EQ(thing->cast(visitor::classInfo<QOB::NSInterface::ModelIntf>()), nullptr);
    visitor::BindTagToName("sample.Thing", own);
    EXPECT_EQ(visitor::findClassByName("sample.Thing"), own);
    EXPECT_EQ(visitor::findClassByName("sample.Nothing"), visitor::ClassInfo());
}

TEST_F(Handle, ConvertsToAnotherClassOrComesOutEmpty) {
    Thing const thing = Thing::create(model);
    EXPECT_FALSE(QOB::FactoryObject(QOB::ClassObject(thing)).isValid());
    EXPECT_EQ(QOB::FactoryObject(QOB::ClassObject(thing)).get(), nullptr);
}

TEST_F(Handle, ConvertsWithoutAskingWhereTheCompilerKnowsTheClass) {
    static_assert(std::is_convertible_v<QOB::Model, QOB::ClassObject>);
    static_assert(std::is_convertible_v<QOB::Model, QOB::ImmutableObject>);
    static_assert(!std::is_convertible_v<QOB::Object, QOB::Model>);
    static_assert(std::is_constructible_v<QOB::Model, QOB::Object>);
    static_assert(!std::is_constructible_v<QOB::Object, QOB::ImmutableModel>);
    QOB::ClassObject const object = model;
    EXPECT_EQ(QOB::Model(object), model);
    EXPECT_FALSE(QOB::Model(QOB::Object(Thing::create(model))).isValid());
}
