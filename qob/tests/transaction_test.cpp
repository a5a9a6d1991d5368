#include "fixture.h"

using sample::Thing;
using sample::NSImplementation::Alive;

using Transaction = ThingModel;

TEST_F(Transaction, RollbackRestoresEverything) {
    Thing const thing = Thing::create(model, 1);
    Thing const doomed = Thing::create(model, 2);
    int const objects = Alive::objects;
    int const states = Alive::states;
    Thing made;
    {
        QOB::Transaction transaction(model);
        thing.setNumber(3);
        thing.setNumber(4);
        doomed.destroy();
        made = Thing::create(model, 5);
        thing.setLink(made);
        transaction.rollback();
    }
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_FALSE(thing.getLink().isValid());
    EXPECT_EQ(doomed.getNumber(), 2);
    EXPECT_FALSE(made.isValid());
    made = Thing();
    EXPECT_EQ(Alive::objects, objects);
    EXPECT_EQ(Alive::states, states);
}

TEST_F(Transaction, OneThatGoesOutOfScopeRollsBack) {
    Thing const thing = Thing::create(model, 1);
    try {
        QOB::Transaction transaction(model);
        thing.setNumber(2);
        throw std::runtime_error("out");
    } catch (std::runtime_error const&) {
    }
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_FALSE(model.getDeviant().isWithinTransaction());
}

TEST_F(Transaction, OldStateIsSavedOnceAndKeptUntilTheEnd) {
    Thing const thing = Thing::create(model, 1);
    EXPECT_FALSE(model.getDeviant().hasUndoStack());
    int const states = Alive::states;
    QOB::Transaction transaction(model);
    EXPECT_TRUE(model.getDeviant().hasUndoStack());
    EXPECT_EQ(model.getDeviant().getSavedOldStateOfObject(thing.get()), nullptr);
    thing.setNumber(1);
    EXPECT_EQ(Alive::states, states) << "a write of the same value saves nothing";
    thing.setNumber(2);
    thing.setNumber(3);
    EXPECT_EQ(Alive::states, states + 1);
    transaction.commit();
    EXPECT_EQ(Alive::states, states) << "without undo the old state goes with the commit";
    EXPECT_EQ(thing.getNumber(), 3);
}

TEST_F(Transaction, InnerOneJoinsTheOuter) {
    Thing const thing = Thing::create(model, 1);
    QOB::Transaction outer(model);
    thing.setNumber(2);
    {
        QOB::Transaction inner(model);
        thing.setNumber(3);
        EXPECT_EQ(messageOf([&] { outer.commit(); }),
                  "Cannot commit the transaction: a transaction inside it is still open.");
        inner.commit();
        EXPECT_EQ(messageOf([&] { inner.commit(); }),
                  "Cannot commit the transaction: it has ended.");
    }
    EXPECT_TRUE(model.getDeviant().isWithinTransaction());
    outer.rollback();
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_EQ(messageOf([&] { outer.rollback(); }),
              "Cannot roll back the transaction: it has ended.");
}

TEST_F(Transaction, RollbackOfAnInnerOneTakesTheOuterBack) {
    Thing const thing = Thing::create(model, 1);
    QOB::Transaction outer(model);
    thing.setNumber(2);
    {
        QOB::Transaction const inner(model);
        thing.setNumber(3);
    }
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_FALSE(outer.isOpen());
    EXPECT_EQ(messageOf([&] { outer.commit(); }),
              "Cannot commit the transaction: it has ended by the rollback of another one or with "
              "its deviant.");
}

TEST_F(Transaction, DeviantsHaveTheirOwn) {
    Thing const root = Thing::create(model, 1);
    QOB::Model const inBranch = branch();
    Thing const other = root.in(inBranch.getDeviant());
    QOB::Transaction onRoot(model);
    QOB::Transaction onBranch(inBranch);
    root.setNumber(2);
    other.setNumber(3);
    onBranch.rollback();
    EXPECT_EQ(other.getNumber(), 1);
    onRoot.commit();
    EXPECT_EQ(root.getNumber(), 2);
    EXPECT_EQ(other.getNumber(), 1);
}

TEST_F(Transaction, RemovingADeviantRollsBackWhatIsOpenThere) {
    QOB::Model const inBranch = branch();
    int const objects = Alive::objects;
    QOB::Transaction open(inBranch);
    Thing::create(inBranch, 1);
    model.removeDeviant(inBranch.getDeviant());
    EXPECT_EQ(Alive::objects, objects);
    EXPECT_FALSE(open.isOpen());
}

TEST_F(Transaction, NeedsAModelThatIsThere) {
    EXPECT_EQ(messageOf([] { QOB::Transaction const none{QOB::Model()}; }),
              "Cannot access NULL ref. Use isValid() before calling methods");
    QOB::Model const inBranch = branch();
    model.removeDeviant(inBranch.getDeviant());
    EXPECT_EQ(messageOf([&] { QOB::Transaction const late(inBranch); }),
              "object accessed after its deviant has been removed");
}

TEST_F(Transaction, WritesThatAreNotAllowedChangeNothing) {
    Thing const thing = Thing::createWithId(model, 7);
    std::string const subject = "Cannot write the object (sample.Thing, id 7): ";
    model.setReadOnly(true);
    EXPECT_EQ(messageOf([&] { thing.setNumber(2); }), subject + "its deviant is read-only.");
    EXPECT_EQ(messageOf([&] { Thing::create(model); }),
              "Cannot write the model: its deviant is read-only.");
    EXPECT_EQ(messageOf([&] { thing.destroy(); }), subject + "its deviant is read-only.");
    thing.in(model.createDeviant()).setNumber(5);
    model.setReadOnly(false);
    model.setUndoEnabled(true);
    EXPECT_EQ(messageOf([&] { thing.setNumber(2); }),
              subject + "its deviant has undo enabled and no transaction is open.");
    EXPECT_EQ(thing.getNumber(), 0);
    bool const before = QOB::DeviantAssertions::enableAssertions(false);
    thing.setNumber(3);
    EXPECT_FALSE(QOB::DeviantAssertions::enableAssertions(before));
    EXPECT_EQ(thing.getNumber(), 3);
    EXPECT_EQ(
        messageOf([&] { QOB::DeviantAssertions(model.getDeviant()).assertWritable(nullptr); }),
        "Cannot write the model: its deviant has undo enabled and no transaction is open.");
}
