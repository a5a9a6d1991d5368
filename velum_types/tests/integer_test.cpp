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

TEST_F(IntegerTest, ReadsAndWritesThatChangeNothingAllocateNothing) {
    types::Integer const integer =
        types::Integer::create(model, "a name that no small buffer holds");
    QOB::String const name = integer.getName();
    QOB::Deviant const fresh = model.createDeviant();
    QOB::Deviant const written = model.createDeviant();
    types::Integer(integer.get(), written).setIsSigned(false);
    types::Integer(integer.get(), written).setIsSigned(true);
    foundation::NamedElement const first = integer; // makes the table of casts of the class
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
