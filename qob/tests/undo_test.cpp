#include "fixture.h"

using sample::Thing;
using sample::NSImplementation::Alive;

class Undo : public ThingModel {
protected:
    Undo() { model.setUndoEnabled(true); }

    template <class Action>
    void step(Action const& action) {
        QOB::Transaction transaction(model);
        action();
        transaction.commit();
    }
};

TEST_F(Undo, WalksStepsInBothDirections) {
    Thing thing;
    step([&] { thing = Thing::create(model, 1); });
    step([&] { thing.setNumber(2); });
    step([&] { thing.setNumber(3); });
    EXPECT_TRUE(model.undo());
    EXPECT_EQ(thing.getNumber(), 2);
    EXPECT_TRUE(model.undo());
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_TRUE(model.redo());
    EXPECT_EQ(thing.getNumber(), 2);
    step([&] { thing.setNumber(9); });
    EXPECT_FALSE(model.redo()) << "a new step ends the way forward";
    EXPECT_TRUE(model.undo());
    EXPECT_EQ(thing.getNumber(), 2);
}

TEST_F(Undo, ExchangesStatesAndCopiesNone) {
    Thing thing;
    step([&] { thing = Thing::create(model, 1); });
    step([&] { thing.setNumber(2); });
    int const states = Alive::states;
    model.undo();
    model.redo();
    model.undo();
    EXPECT_EQ(Alive::states, states);
}

TEST_F(Undo, CreationGoesAndComesBackAsTheSameObject) {
    Thing thing;
    step([&] { thing = Thing::create(model, 1); });
    QOB::Integer const id = thing.getObjectId();
    EXPECT_TRUE(model.undo());
    EXPECT_FALSE(thing.isValid());
    EXPECT_FALSE(model.findObject(id).isValid());
    EXPECT_TRUE(model.redo());
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_EQ(thing.getObjectId(), id);
    EXPECT_EQ(model.findObject(id), QOB::ClassObject(thing));
}

TEST_F(Undo, DestructionIsUndoneAndRedone) {
    Thing thing;
    step([&] { thing = Thing::create(model, 1); });
    step([&] { thing.destroy(); });
    EXPECT_FALSE(thing.isValid());
    EXPECT_TRUE(model.undo());
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_TRUE(model.redo());
    EXPECT_FALSE(thing.isValid());
}

TEST_F(Undo, ObjectsThatOnlyTheStackKnowsGoWithIt) {
    int const before = Alive::objects;
    step([&] { Thing::create(model, 1); });
    EXPECT_EQ(Alive::objects, before + 1);
    model.undo();
    EXPECT_EQ(Alive::objects, before + 1);
    step([&] { Thing::create(model, 2); });
    EXPECT_EQ(Alive::objects, before + 1) << "the way forward is gone, and what it held";
    model.undo();
    model.setUndoEnabled(false);
    EXPECT_EQ(Alive::objects, before);
}

TEST_F(Undo, EmptyStepIsNone) {
    step([] {});
    EXPECT_FALSE(model.undo());
    EXPECT_FALSE(model.redo());
}

TEST_F(Undo, WaitsForTheEndOfATransactionAndOfReadOnly) {
    step([&] { Thing::create(model, 1); });
    {
        QOB::Transaction const open(model);
        EXPECT_EQ(messageOf([&] { model.undo(); }),
                  "Undo and redo wait for the end of the open transaction.");
    }
    model.setReadOnly(true);
    EXPECT_EQ(messageOf([&] { model.undo(); }), "A read-only deviant has no undo and no redo.");
    model.setReadOnly(false);
    EXPECT_TRUE(model.undo());
}

TEST_F(Undo, OtherDeviantsKeepWhatTheyRead) {
    Thing thing;
    step([&] { thing = Thing::create(model, 1); });
    step([&] { thing.setNumber(2); });
    Thing const branch = thing.in(model.createDeviant());
    model.undo();
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_EQ(branch.getNumber(), 2);
    Thing const late = thing.in(model.createDeviant());
    model.undo();
    EXPECT_FALSE(thing.isValid());
    EXPECT_EQ(late.getNumber(), 1);
    Thing const never = thing.in(model.createDeviant());
    model.redo();
    EXPECT_TRUE(thing.isValid());
    EXPECT_FALSE(never.isValid()) << "a branch without the object stays without it";
}

TEST_F(Undo, BranchHasItsOwnSteps) {
    Thing thing;
    step([&] { thing = Thing::create(model, 1); });
    QOB::Model const inBranch = branch();
    inBranch.setUndoEnabled(true);
    Thing const other = thing.in(inBranch.getDeviant());
    {
        QOB::Transaction transaction(inBranch);
        other.setNumber(5);
        Thing::create(inBranch, 6);
        transaction.commit();
    }
    EXPECT_TRUE(inBranch.undo());
    EXPECT_EQ(other.getNumber(), 1);
    step([&] { thing.setNumber(7); });
    EXPECT_TRUE(inBranch.redo());
    EXPECT_EQ(other.getNumber(), 5);
    EXPECT_EQ(thing.getNumber(), 7);
    model.removeDeviant(inBranch.getDeviant());
}
