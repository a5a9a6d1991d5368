#include "support/allocation_count.h"
#include "velum_types/tests/freshmodel.h"
#include "velum_types/types.h"
#include "velum_types/zorvane/metamodel/types/nsimplementation/zorvanemetamodeltypesintegerimpl.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

types::DataSize bits(int count) {
    return {count, types::DataSizeUnitKind::bit};
}

/// A fresh model for each test, ended with it.
class IntegerTest : public testing::Test {
protected:
    IntegerTest() : model(VelumTest::makeModel()) {}
    ~IntegerTest() override { model.destroy(); }

    /// The message of the QOB::Exception that `call` raises.
    template <class Call>
    static std::string messageOf(Call const& call) {
        try {
            call();
        } catch (QOB::Exception const& exception) {
            return exception.what();
        }
        return "nothing was raised";
    }

    QOB::Model model;
};

TEST_F(IntegerTest, NewObjectIsInTheDefaultsOfItsClass) {
    types::Integer const integer = types::Integer::createWithId(model, 7);
    EXPECT_TRUE(integer.isValid());
    EXPECT_TRUE(integer.hasIsSigned());
    EXPECT_EQ(integer.isSigned(), true);
    EXPECT_TRUE(integer.hasLength());
    EXPECT_EQ(integer.getLength(), bits(32));
    EXPECT_TRUE(integer.hasName());
    EXPECT_FALSE(integer.getName().isValid());
    EXPECT_EQ(integer.getObjectId(), 7);
    EXPECT_EQ(integer.getModelQOB(), model);
    EXPECT_STREQ(integer.getLumvoName(false), "Zorvane.metamodel.types.Integer");
    EXPECT_STREQ(integer.getLumvoName(true), "Zorvane.metamodel.types.ImmutableInteger");
}

TEST_F(IntegerTest, CreatorsGiveIdsAndNames) {
    types::Integer const first = types::Integer::create(model);
    types::Integer const second = types::Integer::create(model, "uint8");
    types::Integer const third = types::Integer::createWithId(model, 1000, "sint8");
    types::Integer const fourth = types::Integer::create(model);
    EXPECT_EQ(second.getName(), "uint8");
    EXPECT_EQ(third.getName(), "sint8");
    EXPECT_EQ(third.getObjectId(), 1000);
    EXPECT_NE(first.getObjectId(), second.getObjectId());
    EXPECT_GT(int(fourth.getObjectId()), 1000);
    EXPECT_EQ(types::Integer(model.findObject(1000)), third);
}

TEST_F(IntegerTest, IdThatIsTakenIsRefusedAndLeavesNothing) {
    types::Integer const first = types::Integer::createWithId(model, 7, "first");
    EXPECT_THROW(types::Integer::createWithId(model, 7, "second"), QOB::Exception);
    EXPECT_EQ(types::Integer(model.findObject(7)), first);
    EXPECT_EQ(first.getName(), "first");
}

TEST_F(IntegerTest, WrittenValuesAreReadBackAndRemovalOfMandatoryOnesDoesNothing) {
    types::Integer const integer = types::Integer::create(model, "int");
    integer.setIsSigned(false);
    EXPECT_EQ(integer.isSigned(), false);
    integer.removeIsSigned();
    integer.setIsSigned(QOB::Boolean());
    EXPECT_EQ(integer.isSigned(), false);
    integer.setLength(bits(8));
    integer.removeLength();
    integer.removeOnlyLength();
    EXPECT_EQ(integer.getLength(), bits(8));
    integer.setOnlyLength(bits(16));
    EXPECT_EQ(integer.getLength(), bits(16));
    integer.setLength(types::DataSize());
    EXPECT_EQ(integer.getLength(), types::DataSize()) << "a size is taken as it is given";
    integer.setName("word");
    integer.removeName();
    integer.setName(QOB::String());
    EXPECT_EQ(integer.getName(), "word");
}

TEST_F(IntegerTest, EmptyHandleIsNotValidAndRaises) {
    types::Integer const empty;
    EXPECT_FALSE(empty.isValid());
    std::string const message = messageOf([&] { empty.isSigned(); });
    EXPECT_EQ(message.find("Assertion failed: Cannot access NULL ref. Use isValid() before calling "
                           "methods at include/velum_types/zorvane/metamodel/types/"
                           "zorvanemetamodeltypesinteger.h:"),
              0U)
        << message;
    EXPECT_EQ(message, messageOf([&] { empty.hasIsSigned(); }));
    EXPECT_THROW(empty.setIsSigned(true), QOB::Exception);
    EXPECT_THROW(empty.destroy(), QOB::Exception);
}

TEST_F(IntegerTest, HandlesCountAndTheLastOneEndsTheObject) {
    types::Integer integer = types::Integer::create(model);
    int const before = integer->numRef();
    {
        types::Integer const copy = integer;
        EXPECT_EQ(integer->numRef(), before + 1);
        integer = copy;
        EXPECT_EQ(integer->numRef(), before + 1);
    }
    EXPECT_EQ(integer->numRef(), before);
    auto const& self = integer;
    integer = self;
    EXPECT_EQ(integer->numRef(), before);
}

TEST_F(IntegerTest, CountBelowZeroIsRaised) {
    types::NSImplementation::IntegerImpl object;
    EXPECT_EQ(object.numRef(), 0);
    std::string const message = messageOf([&] { object.decRef(); });
    EXPECT_EQ(message.find(
                  "Assertion failed: Decrementing the ref count of a ref with count already 0 at"),
              0U)
        << message;
    EXPECT_EQ(object.numRef(), 0);
}

TEST_F(IntegerTest, RootDeviationNeedsARootDeviant) {
    using types::NSImplementation::IntegerImpl;
    QOB::Deviant const branch = model.createDeviant();
    std::string const message = messageOf([&] { delete IntegerImpl::createRootDeviation(branch); });
    EXPECT_EQ(message.find("Assertion failed: no root deviant passed to "
                           "IntegerImpl::createRootDeviation at "),
              0U)
        << message;
    types::NSImplementation::IntegerDeviantImpl* const state =
        IntegerImpl::createRootDeviation(model.getDeviant());
    EXPECT_EQ(state->isSigned(model.getDeviant()), true);
    delete state;
}

TEST_F(IntegerTest, AccessAfterTheEndOfModelOrDeviantRaises) {
    QOB::Model other = types::NSInterface::FactoryIntf::createNewModel();
    types::Integer const orphan = types::Integer::create(other);
    other.destroy();
    EXPECT_FALSE(orphan.isValid());
    for (std::string const& message : {messageOf([&] { orphan.isSigned(); }),
                                       messageOf([&] { orphan.setIsSigned(false); }),
                                       messageOf([&] { orphan.getName(); })}) {
        EXPECT_EQ(message.find(
                      "Assertion failed: object accessed after its model has been destroyed at "),
                  0U)
            << message;
    }

    types::Integer const integer = types::Integer::create(model);
    QOB::Deviant const branch = model.createDeviant();
    types::Integer const inBranch(integer.get(), branch);
    inBranch.setIsSigned(false);
    model.removeDeviant(branch);
    EXPECT_FALSE(inBranch.isValid());
    std::string const message = messageOf([&] { inBranch.isSigned(); });
    EXPECT_EQ(
        message.find("Assertion failed: object accessed after its deviant has been removed at "),
        0U)
        << message;
    EXPECT_EQ(integer.isSigned(), true);
}

TEST_F(IntegerTest, BranchReadsTheRootUntilItWrites) {
    types::Integer const integer = types::Integer::create(model, "int");
    QOB::Deviant const branch = model.createDeviant();
    types::Integer const inBranch(integer.get(), branch);
    EXPECT_EQ(inBranch, integer);

    inBranch.setIsSigned(true);
    inBranch.setName("int");
    EXPECT_EQ(integer->internal_getDeviation(branch), nullptr) << "a write that changes nothing";
    inBranch.setIsSigned(false);
    EXPECT_NE(integer->internal_getDeviation(branch), nullptr);
    EXPECT_EQ(inBranch.getName(), "int");
    EXPECT_EQ(integer.isSigned(), true);
    integer.setName("root");
    EXPECT_EQ(inBranch.getName(), "int");
}

TEST_F(IntegerTest, ObjectMadeInABranchExistsOnlyThereUntilItIsMerged) {
    QOB::Deviant const branch = model.createDeviant();
    types::Integer const inBranch = types::Integer::create(model.inDeviant(branch), "made");
    EXPECT_TRUE(inBranch.isValid());
    types::Integer const inRoot(inBranch.get(), model.getDeviant());
    EXPECT_FALSE(inRoot.isValid());
    inBranch.setIsSigned(false);
    model.mergeDeviant(branch);
    ASSERT_TRUE(inRoot.isValid());
    EXPECT_EQ(inRoot.getName(), "made");
    EXPECT_EQ(inRoot.isSigned(), false);
}

TEST_F(IntegerTest, MergeBringsEveryPropertyOfAChangedObject) {
    types::Integer const integer = types::Integer::create(model, "int");
    QOB::Deviant const branch = model.createDeviant();
    types::Integer const inBranch(integer.get(), branch);
    inBranch.setName("merged");
    inBranch.setLength(bits(8));
    inBranch.setIsSigned(false);
    model.mergeDeviant(branch);
    EXPECT_EQ(integer.getName(), "merged");
    EXPECT_EQ(integer.getLength(), bits(8));
    EXPECT_EQ(integer.isSigned(), false);
}

TEST_F(IntegerTest, AssignmentFromAnotherClassIsRefused) {
    types::Integer const integer = types::Integer::create(model, "int");
    EXPECT_THROW(
        integer->internal_deviationAssign(model.getDeviant(), model.get(), model.getDeviant()),
        QOB::Exception);
    EXPECT_EQ(integer.getName(), "int");
}

TEST_F(IntegerTest, RollbackAndUndoBringBackValuesAndCreations) {
    types::Integer const integer = types::Integer::create(model, "int");
    {
        QOB::Transaction transaction(model);
        integer.setIsSigned(false);
        integer.setName("changed");
    }
    EXPECT_EQ(integer.isSigned(), true);
    EXPECT_EQ(integer.getName(), "int");

    model.setUndoEnabled(true);
    types::Integer made;
    {
        QOB::Transaction transaction(model);
        made = types::Integer::create(model, "made");
        integer.setIsSigned(false);
        transaction.commit();
    }
    EXPECT_TRUE(model.undo());
    EXPECT_FALSE(made.isValid());
    EXPECT_EQ(integer.isSigned(), true);
    EXPECT_TRUE(model.redo());
    EXPECT_TRUE(made.isValid());
    EXPECT_EQ(integer.isSigned(), false);
}

TEST_F(IntegerTest, DestroyedObjectIsGoneInItsDeviantOnly) {
    types::Integer const integer = types::Integer::create(model, "int");
    QOB::Deviant const branch = model.createDeviant();
    types::Integer const inBranch(integer.get(), branch);
    inBranch.destroy();
    EXPECT_FALSE(inBranch.isValid());
    EXPECT_TRUE(integer.isValid());
    EXPECT_THROW(inBranch.isSigned(), QOB::Exception);
    inBranch.destroy();
}

TEST_F(IntegerTest, HandleConvertsToItsBasesAndBack) {
    types::Integer const integer = types::Integer::create(model, "int");
    foundation::NamedElement const named = integer;
    foundation::ImmutableElement const element = named;
    QOB::ClassObject const object = integer;
    QOB::ImmutableObject const any = integer;
    EXPECT_EQ(named.getName(), "int");
    EXPECT_EQ(types::Integer(object), integer);
    EXPECT_EQ(types::Integer(named), integer);
    EXPECT_EQ(types::ImmutableInteger(element), integer);
    EXPECT_EQ(types::ImmutableInteger(any), integer);
    EXPECT_EQ(QOB::ClassObject(integer), object);

    QOB::Deviant const branch = model.createDeviant();
    types::Integer const inBranch(integer.get(), branch);
    EXPECT_EQ(foundation::NamedElement(inBranch).getDeviant(), branch);
    EXPECT_FALSE(types::Integer(QOB::ClassObject(model)).isValid());
    EXPECT_FALSE(foundation::NamedElement(types::Integer()).isValid());

    static_assert(std::is_convertible_v<types::Integer, types::ImmutableInteger>);
    static_assert(std::is_convertible_v<types::Integer, foundation::ImmutableNamedElement>);
    static_assert(!std::is_convertible_v<foundation::NamedElement, types::Integer>);
    static_assert(!std::is_constructible_v<types::Integer, types::ImmutableInteger>);
    static_assert(!std::is_constructible_v<types::Integer, foundation::ImmutableNamedElement>);
    static_assert(sizeof(types::Integer) == 2 * sizeof(void*));
}

TEST_F(IntegerTest, HandleWithADeviantOfAnotherModelIsInTheRoot) {
    QOB::Model const other = types::NSInterface::FactoryIntf::createNewModel();
    types::Integer const integer = types::Integer::create(model);
    types::Integer const moved(integer.get(), other.getDeviant());
    EXPECT_EQ(moved.getDeviant(), model.getDeviant());
    other.destroy();
}

TEST_F(IntegerTest, StatesAreNotCountedAndHaveNoStatesOfTheirOwn) {
    types::Integer const integer = types::Integer::create(model);
    QOB::Deviant const root = model.getDeviant();
    types::NSInterface::IntegerIntf const* const state = integer->getReadDeviant(root);
    ASSERT_NE(state, nullptr);
    EXPECT_EQ(state->numRef(), 0);
    EXPECT_EQ(state->getReadDeviant(root), nullptr);
    EXPECT_EQ(state->getWriteDeviant(root), nullptr);
    EXPECT_FALSE(state->deviant_isValid(root));
    EXPECT_THROW(state->getLumvoName(false), QOB::Exception);
    EXPECT_THROW(state->getObjectId(root), QOB::Exception);
    EXPECT_EQ(integer->This(root), integer);
}

TEST_F(IntegerTest, ReadsAndWritesThatChangeNothingAllocateNothing) {
    types::Integer const integer =
        types::Integer::create(model, "a name that no small buffer holds");
    QOB::String const name = integer.getName();
    QOB::Deviant const fresh = model.createDeviant();
    QOB::Deviant const written = model.createDeviant();
    types::Integer(integer.get(), written).setIsSigned(false);
    types::Integer(integer.get(), written).setIsSigned(true);
    for (QOB::Deviant const deviant : {model.getDeviant(), fresh, written}) {
        types::Integer const handle(integer.get(), deviant);
        std::size_t const before = VelumTest::allocationCount();
        bool const all = handle.isSigned() == true && handle.getLength() == bits(32) &&
                         handle.hasIsSigned() && handle.hasName() && handle.getName() == name &&
                         handle.isValid();
        handle.setIsSigned(true);
        handle.setLength(bits(32));
        handle.setName(name);
        handle.removeName();
        foundation::NamedElement const base = handle;
        std::size_t const after = VelumTest::allocationCount();
        EXPECT_TRUE(all);
        EXPECT_EQ(after - before, 0U);
    }
}

} // namespace
