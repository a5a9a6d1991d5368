#include "fixture.h"

using sample::Thing;
using sample::NSImplementation::Alive;

using Deviations = ThingModel;

namespace {
QOB::NSInterface::ObjectIntf* marker(void* const sentinel) {
    return static_cast<QOB::NSInterface::ObjectIntf*>(sentinel);
}
} // namespace

TEST_F(Deviations, BranchReadsTheRootUntilItWrites) {
    Thing const root = Thing::create(model, 1);
    Thing const branch = root.in(model.createDeviant());
    EXPECT_EQ(branch.getNumber(), 1);
    root.setNumber(2);
    EXPECT_EQ(branch.getNumber(), 2);
    branch.setNumber(3);
    root.setNumber(4);
    EXPECT_EQ(branch.getNumber(), 3);
    EXPECT_EQ(root.getNumber(), 4);
}

TEST_F(Deviations, FirstWriteCopiesTheWholeRootState) {
    Thing const root = Thing::create(model, 1);
    root.setText("kept");
    Thing const branch = root.in(model.createDeviant());
    int const states = Alive::states;
    branch.setNumber(1);
    EXPECT_EQ(Alive::states, states) << "a write of the same value makes no state";
    branch.setNumber(2);
    EXPECT_EQ(Alive::states, states + 1);
    root.setText("changed");
    EXPECT_EQ(branch.getText(), "kept");
    branch.setNumber(3);
    EXPECT_EQ(Alive::states, states + 1);
}

TEST_F(Deviations, BranchDoesNotSeeAnOpenTransactionOfTheRoot) {
    Thing const root = Thing::create(model, 1);
    Thing const branch = root.in(model.createDeviant());
    QOB::Transaction transaction(model);
    root.setNumber(2);
    EXPECT_EQ(root.getNumber(), 2);
    EXPECT_EQ(branch.getNumber(), 1);
    transaction.commit();
    EXPECT_EQ(branch.getNumber(), 1) << "the commit left it a copy of what it read";
}

TEST_F(Deviations, CommitEndsAtABranchWhoseSavedOldStateIsFallbackToRoot) {
    Thing const root = Thing::create(model, 1);
    QOB::Model const first = branch();
    QOB::Model const second = branch();
    QOB::Transaction inFirst(first);
    root.in(first.getDeviant()).setNumber(5);
    EXPECT_EQ(first.getDeviant().getSavedOldStateOfObject(root.get()),
              marker(QOB::Deviant::FallbackToRoot));
    {
        QOB::Transaction transaction(model);
        root.setNumber(2);
        transaction.commit();
    }
    EXPECT_EQ(root.in(second.getDeviant()).getNumber(), 2)
        << "the loop ended before the second branch";
    inFirst.rollback();
    EXPECT_EQ(root.in(first.getDeviant()).getNumber(), 1)
        << "the first branch goes back to what it read before the root's commit";
}

TEST_F(Deviations, DestructionInABranchStaysThere) {
    Thing const root = Thing::create(model, 1);
    Thing const branch = root.in(model.createDeviant());
    Thing const other = root.in(model.createDeviant());
    branch.destroy();
    EXPECT_FALSE(branch.isValid());
    EXPECT_TRUE(root.isValid());
    EXPECT_TRUE(other.isValid());
    EXPECT_EQ(messageOf([&] { branch.getNumber(); }),
              "Cannot access the object (sample.Thing, id " +
                  std::string(root.getObjectId().toString()) +
                  "): it does not exist in the deviant.");
    branch.destroy();
    EXPECT_EQ(root.getNumber(), 1);
}

TEST_F(Deviations, ObjectOfABranchIsNowhereElse) {
    QOB::Model const inBranch = branch();
    Thing const thing = Thing::create(inBranch, 1);
    EXPECT_TRUE(thing.isValid());
    EXPECT_FALSE(thing.in(model.getDeviant()).isValid());
    EXPECT_FALSE(thing.in(model.createDeviant()).isValid());
    EXPECT_TRUE(inBranch.findObject(thing.getObjectId()).isValid());
    EXPECT_FALSE(model.findObject(thing.getObjectId()).isValid());
}

TEST_F(Deviations, DeviantOfAnotherModelMeansTheRoot) {
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    Thing const thing = Thing::create(model, 1);
    thing->setNumber(other.getDeviant(), 2);
    EXPECT_EQ(thing.getNumber(), 2);
    EXPECT_EQ(thing->getNumber(other.createDeviant()), 2);
    EXPECT_FALSE(thing->deviant_isValid(QOB::Deviant()));
    other.destroy();
}

TEST_F(Deviations, AccessAfterTheEndRaises) {
    Thing const thing = Thing::create(model, 1);
    Thing const branch = thing.in(model.createDeviant());
    model.removeDeviant(branch.getDeviant());
    EXPECT_FALSE(branch.isValid());
    EXPECT_EQ(messageOf([&] { branch.getNumber(); }),
              "object accessed after its deviant has been removed");
    EXPECT_EQ(messageOf([&] { branch.setNumber(2); }),
              "object accessed after its deviant has been removed");
    model.destroy();
    EXPECT_FALSE(thing.isValid());
    EXPECT_EQ(messageOf([&] { thing.getNumber(); }),
              "object accessed after its model has been destroyed");
    EXPECT_EQ(messageOf([&] { thing.setNumber(2); }),
              "object accessed after its model has been destroyed");
    EXPECT_EQ(messageOf([&] { model.createDeviant(); }),
              "object accessed after its model has been destroyed");
    thing.setDeviant(branch.getDeviant());
    EXPECT_FALSE(thing.getDeviant().isNotNull());
}

TEST_F(Deviations, ObjectWithoutAModelRaisesOnAccess) {
    auto* const loose = new sample::NSImplementation::ThingImpl();
    Thing const thing(loose, model.getDeviant());
    EXPECT_EQ(messageOf([&] { loose->getText(model.getDeviant()); }),
              "Internal assertion without a message detected! Please fix me asap");
    EXPECT_EQ(messageOf([&] { thing.getNumber(); }),
              "object accessed after its deviant has been removed");
}

TEST_F(Deviations, FirstStateIsMadeOnceAndRootStatesInRootsOnly) {
    Thing const thing = Thing::create(model, 1);
    EXPECT_EQ(thing->internal_createDeviation(model.getDeviant()), nullptr);
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_EQ(messageOf([&] {
                  sample::NSImplementation::ThingImpl::createRootDeviation(model.createDeviant());
              }),
              "no root deviant passed to ThingImpl::createRootDeviation");
}

TEST_F(Deviations, IdIsTheObjectsOwn) {
    Thing const thing = Thing::createWithId(model, 42);
    EXPECT_EQ(thing.getObjectId(), 42);
    EXPECT_EQ(model.findObject(42), QOB::ClassObject(thing));
    thing->removeObjectId(model.getDeviant());
    EXPECT_EQ(thing.getObjectId(), QOB::Integer());
    sample::NSImplementation::ThingImpl loose;
    EXPECT_EQ(loose.getObjectId(QOB::Deviant()), -1);
}
