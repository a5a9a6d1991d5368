#include "fixture.h"
#include "qob/kernel/value/valuebox.h"
#include "qob/qob/boolean.h"
#include "qob/qob/integer.h"
#include "qob/qob/real.h"
#include "qob/qob/string.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/valueobjectfactory.h"
#include "support/allocation_count.h"

#include <string>

using QOB::Boolean;
using QOB::ImmutableObject;
using QOB::ImmutableValueObject;
using QOB::Integer;
using QOB::Object;
using QOB::Real;
using QOB::String;
using QOB::TypeInfoRegistry;
using QOB::ValueObject;
using QOB::ValueObjectFactory;

namespace {

template <class Value>
class Boxing : public testing::Test {
public:
    static Value sample();
};
template <>
Integer Boxing<Integer>::sample() {
    return 7;
}
template <>
Real Boxing<Real>::sample() {
    return 0.5;
}
template <>
Boolean Boxing<Boolean>::sample() {
    return true;
}
template <>
String Boxing<String>::sample() {
    return "seven";
}

/// A value object of somebody else, which only offers its value in an any.
class ForeignValue final : public QOB::NSInterface::ValueObjectIntf {
public:
    void getValue(Tessel::any& value) const override { value = Tessel::any(Integer(9)); }
    std::string getValueTypeName() const override { return "foreign"; }
};

} // namespace

using Values = testing::Types<Integer, Real, Boolean, String>;
TYPED_TEST_SUITE(Boxing, Values);

TYPED_TEST(Boxing, ValueComesBackOutOfEachHandle) {
    TypeParam const value = this->sample();
    Object const boxed = value;
    EXPECT_TRUE(boxed.isValid());
    EXPECT_EQ(TypeParam(boxed), value);
    EXPECT_EQ(TypeParam(ImmutableObject(boxed)), value);
    EXPECT_EQ(TypeParam(ValueObject(boxed)), value);
    EXPECT_EQ(TypeParam(ImmutableValueObject(boxed)), value);
    EXPECT_EQ(TypeParam(Object(TypeParam())), TypeParam());
    EXPECT_EQ(boxed.getLumvoName(true), TypeParam::getTypeName());
    EXPECT_EQ(ValueObject(boxed).getValueTypeName(), TypeParam::getTypeName());
}

TYPED_TEST(Boxing, OneAllocationInAtMostAndNoneOut) {
    TypeParam const value = this->sample();
    std::size_t const ofNewBox = std::is_same_v<TypeParam, Boolean> ? 0 : 1; // those are shared
    // Takes the block that an earlier box has left, and the first conversion fills a table.
    Object const first = value;
    EXPECT_EQ(TypeParam(first), value);
    std::size_t const before = VelumTest::allocationCount();
    {
        Object const second = value;
        std::size_t const after = VelumTest::allocationCount();
        EXPECT_EQ(after - before, ofNewBox);
        EXPECT_EQ(TypeParam(second), value);
        EXPECT_EQ(VelumTest::allocationCount(), after);
    }
    Object const third = value;
    EXPECT_EQ(VelumTest::allocationCount() - before, ofNewBox) << "the third takes what was left";
    EXPECT_EQ(TypeParam(third), value);
    EXPECT_EQ(TypeParam(first), value);
}

TYPED_TEST(Boxing, FactoryMakesEachByName) {
    std::string const name = TypeParam::getTypeName();
    TypeParam const value = this->sample();
    EXPECT_TRUE(ValueObjectFactory::isValueObjectType(name));
    EXPECT_TRUE(TypeInfoRegistry::isRegistered(name));
    EXPECT_EQ(TypeParam(ValueObjectFactory::create(name)), TypeParam());
    EXPECT_EQ(TypeParam(ValueObjectFactory::create(name, value)), value);
    String const text = Object(value).toString();
    ValueObject const read = ValueObjectFactory::createFromString(name, text);
    EXPECT_EQ(TypeParam(read), value);
    EXPECT_EQ(TypeParam(read->convertFromString(QOB::Deviant(), text)), value);
    EXPECT_EQ(TypeInfoRegistry::getTypeInfo(name)->convertToString(value), std::string(text));
    EXPECT_THROW(ValueObjectFactory::create(name, 'x'), Tessel::bad_any_cast);
}

TYPED_TEST(Boxing, WrongObjectsAreRefused) {
    std::string const expected = "The object holds no value (" + TypeParam::getTypeName() + "): ";
    EXPECT_EQ(messageOf([] { TypeParam{Object()}; }), expected + "it is null.");
    EXPECT_EQ(messageOf([] { TypeParam{ImmutableValueObject()}; }), expected + "it is null.");
    QOB::Model const model = QOB::NSInterface::FactoryIntf::createNewModel();
    EXPECT_EQ(messageOf([&] { TypeParam{Object(model)}; }), expected + "it is no value object.");
    model.destroy();
    Object const other = std::is_same_v<TypeParam, Integer> ? Object(Real(1)) : Object(Integer(1));
    EXPECT_THROW(TypeParam{other}, Tessel::bad_any_cast);
}

TEST(BoxedValues, LiveAsLongAsTheirHandles) {
    Object const boxed = String("text");
    EXPECT_EQ(boxed->numRef(), 1);
    {
        ValueObject const second(boxed);
        EXPECT_EQ(boxed->numRef(), 2);
    }
    EXPECT_EQ(boxed->numRef(), 1);
    EXPECT_EQ(String(boxed), "text");
}

TEST(BoxedValues, OfAnotherMakersClassAreRead) {
    ForeignValue const value;
    Object const handle(const_cast<ForeignValue*>(&value), QOB::Deviant());
    EXPECT_EQ(Integer(handle), 9);
    EXPECT_THROW(Real{handle}, Tessel::bad_any_cast);
}

TEST(TypeNames, UnknownOnesAreNamed) {
    EXPECT_FALSE(ValueObjectFactory::isValueObjectType("QOB.Nothing"));
    EXPECT_EQ(messageOf([] { ValueObjectFactory::create("QOB.Nothing"); }),
              "The name (QOB.Nothing) is none of a value type.");
    EXPECT_FALSE(TypeInfoRegistry::getTypeInfo("QOB.Nothing").has_value());
    EXPECT_EQ(messageOf([] { ValueObjectFactory::createFromString("QOB.Integer", "7 "); }),
              "The text \"7 \" is not a whole number of 32 bits.");
}

TEST(TypeNames, AreEnteredOnceAndTakenOutAgain) {
    Tessel::TypeInfo const info = *TypeInfoRegistry::getTypeInfo("QOB.Real");
    EXPECT_EQ(messageOf([&] { TypeInfoRegistry::registerTypeInfo("QOB.Integer", info); }),
              "The type name (QOB.Integer) is in use in the registry of type infos.");
    EXPECT_EQ(messageOf([&] { ValueObjectFactory::registerType<Real>(info); }),
              "The type name (QOB.Real) is in use in the factory of value objects.");
    TypeInfoRegistry::registerTypeInfo("Test.IteratorOfReal", info);
    EXPECT_TRUE(TypeInfoRegistry::isRegistered("Test.IteratorOfReal"));
    TypeInfoRegistry::unregisterTypeInfo("Test.IteratorOfReal");
    EXPECT_FALSE(TypeInfoRegistry::isRegistered("Test.IteratorOfReal"));
    TypeInfoRegistry::unregisterTypeInfo("Test.IteratorOfReal");
}
