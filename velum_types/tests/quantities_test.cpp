#include "qob/qob/model.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/valueobjectfactory.h"
#include "support/allocation_count.h"
#include "support/failure.h"
#include "velum_types/zorvane/metamodel/types/initialize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"

#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>
#include <unordered_set>

namespace types = Zorvane::metamodel::types;
using types::DataSize;
using types::DataSizeTypeInfo;
using types::DataSizeUnitKind;
using types::Time;
using types::TimeTypeInfo;
using types::TimeUnitKind;
using VelumTest::failureOf;
using VelumTest::messageOf;

static_assert(sizeof(DataSize) == 8 && std::is_trivially_copyable_v<DataSize>);
static_assert(sizeof(Time) == 16 && std::is_trivially_copyable_v<Time>);
static_assert(std::is_nothrow_move_constructible_v<DataSize>);
static_assert(DataSize(8, DataSizeUnitKind::bit) != DataSize(1, DataSizeUnitKind::byte));
static_assert(DataSize(1, DataSizeUnitKind::GB) < DataSize(2, DataSizeUnitKind::bit));
static_assert(DataSize(2, DataSizeUnitKind::bit) <=> DataSize(2, DataSizeUnitKind::byte) < 0);
static_assert(std::three_way_comparable<DataSize> && !std::three_way_comparable<Time>);

namespace {

constexpr char const* InternalFailure =
    "Internal assertion without a message detected in FTL generated code! Please fix me asap";

template <class Value>
class Quantities : public testing::Test {
public:
    static constexpr bool isSize = std::is_same_v<Value, DataSize>;

    static Value sample() { return {3, 2}; }
    static std::string sampleText() { return isSize ? "3|KB" : "3|us"; }
    static std::string source() {
        return std::string("velum_types/zorvane/metamodel/types/zorvanemetamodeltypes") +
               (isSize ? "datasize.cpp:" : "time.cpp:");
    }
    /// The action fails with the internal failure, in the source of the class.
    template <class Action>
    static void expectInternalFailure(Action const& action) {
        EXPECT_EQ(messageOf(action), InternalFailure);
        EXPECT_NE(failureOf(action).find(" at " + source()), std::string::npos);
    }

protected:
    Quantities() { types::initialize(); }
};

} // namespace

using AllQuantities = testing::Types<DataSize, Time>;
TYPED_TEST_SUITE(Quantities, AllQuantities);

TYPED_TEST(Quantities, MembersAreKeptAsGivenAndNeverRemoved) {
    TypeParam value;
    EXPECT_FALSE(value.getValue().isValid());
    EXPECT_EQ(value.getUnit(), 0);
    EXPECT_TRUE(value.isValid() && value.hasValue() && value.hasUnit());
    EXPECT_EQ(value, TypeParam());
    value = this->sample();
    value.removeValue();
    value.removeUnit();
    value.removeObjectFirstValue();
    value.removeObjectFirstUnit();
    EXPECT_EQ(value, this->sample());
    value.setUnit(7);
    value.setValue(typename TypeParam::Number());
    EXPECT_EQ(value.getUnit(), 7);
    EXPECT_FALSE(value.getValue().isValid());
}

TYPED_TEST(Quantities, CompareByNumberThenByUnitWithoutConversion) {
    TypeParam const less(1, 4);
    TypeParam const more(2, 0);
    EXPECT_TRUE(less < more && less <= more && !(less > more) && !(less >= more));
    EXPECT_TRUE(TypeParam(2, 0) < TypeParam(2, 1) && TypeParam(2, -1) < TypeParam(2, 0));
    EXPECT_TRUE(more <= more && more >= more && !(more < more) && !(more > more));
    EXPECT_TRUE(TypeParam() < TypeParam(-5, 0) && TypeParam() == TypeParam());
}

TYPED_TEST(Quantities, TextIsNumberBarUnit) {
    TypeParam const value = this->sample();
    EXPECT_EQ(std::string(value.toString()), this->sampleText());
    EXPECT_EQ(TypeParam::fromString(this->sampleText()), value);
    EXPECT_EQ(std::string(TypeParam().toString()), this->isSize ? "|bit" : "|s");
    EXPECT_EQ(TypeParam::fromString(TypeParam().toString()), TypeParam());
    TypeParam const odd(-3, 77);
    EXPECT_EQ(std::string(odd.toString()), "-3|77");
    EXPECT_EQ(TypeParam::fromString("-3|77"), odd);
    std::ostringstream out;
    out << value;
    EXPECT_EQ(out.str(), this->sampleText());
}

TYPED_TEST(Quantities, BadTextsAreNamed) {
    EXPECT_EQ(messageOf([] { TypeParam::fromString("1|2|3"); }), "Incorrect parameters count!");
    EXPECT_EQ(messageOf([] { TypeParam::fromString("1\\x|bit"); }),
              "Failed to convert string to type!");
    EXPECT_NE(failureOf([] { TypeParam::fromString("1|2|3"); }).find(this->source()),
              std::string::npos);
    std::string const known = this->isSize
                                  ? "DataSizeUnitKind), whose literals are (bit, byte, KB, MB, GB)."
                                  : "TimeUnitKind), whose literals are (s, ms, us, min, hrs, dys, "
                                    "wks, mos, yrs).";
    for (std::string const text : {"1", "", "1|"}) {
        EXPECT_EQ(messageOf([&] { TypeParam::fromString(text); }),
                  "Literal () is unknown to the type (Zorvane.metamodel.types." + known);
    }
    EXPECT_EQ(messageOf([] { TypeParam::fromString("1|parsec"); }),
              "Literal (parsec) is unknown to the type (Zorvane.metamodel.types." + known);
    EXPECT_EQ(messageOf([] { TypeParam::fromString("x|1"); }).rfind("The text \"x\" is not a ", 0),
              0U);
    EXPECT_EQ(messageOf([] {
                  TypeParam::fromString("1|\xff");
              }).rfind("The text is not well-formed UTF-8: ", 0),
              0U);
}

TYPED_TEST(Quantities, ComeBackOutOfABox) {
    TypeParam const value = this->sample();
    QOB::Object const object = value;
    QOB::ValueObject const box = value;
    EXPECT_EQ(TypeParam(object), value);
    EXPECT_EQ(TypeParam(box), value);
    EXPECT_EQ(TypeParam(QOB::ImmutableObject(object)), value);
    EXPECT_EQ(TypeParam(QOB::ImmutableValueObject(box)), value);
    EXPECT_EQ(TypeParam(value.toQOBObject()), TypeParam(value.toQOBValueObject()));
    EXPECT_EQ(box.getValueTypeName(), TypeParam::getTypeName());
    using Factory = QOB::ValueObjectFactory;
    EXPECT_EQ(TypeParam(Factory::create(TypeParam::getTypeName())), TypeParam());
    EXPECT_EQ(TypeParam(Factory::create(TypeParam::getTypeName(), value)), value);
    EXPECT_EQ(TypeParam(Factory::createFromString(TypeParam::getTypeName(), this->sampleText())),
              value);
    EXPECT_EQ(std::string(object.toString()), this->sampleText());
}

TYPED_TEST(Quantities, OnlyBoxingAllocates) {
    // Takes the memory that an earlier box has left; makes the tables of the classes.
    QOB::Object const first = this->sample();
    EXPECT_EQ(TypeParam(first), this->sample());
    std::size_t const before = VelumTest::allocationCount();
    TypeParam const value = this->sample();
    TypeParam const copy(value);
    bool const same = value == copy && !(value < copy) && hash_value(value) != 0;
    EXPECT_EQ(VelumTest::allocationCount(), before);
    QOB::Object const boxed = value;
    EXPECT_EQ(VelumTest::allocationCount(), before + 1);
    EXPECT_TRUE(same && TypeParam(boxed) == value);
    EXPECT_EQ(VelumTest::allocationCount(), before + 1);
}

TYPED_TEST(Quantities, EmptyHandlesAndOtherValuesAreRefused) {
    this->expectInternalFailure([] { TypeParam{QOB::Object()}; });
    this->expectInternalFailure([] { TypeParam{QOB::ImmutableObject()}; });
    this->expectInternalFailure([] { TypeParam{QOB::ValueObject()}; });
    this->expectInternalFailure([] { TypeParam{QOB::ImmutableValueObject()}; });
    QOB::Model const model = QOB::NSInterface::FactoryIntf::createNewModel();
    this->expectInternalFailure([&] { TypeParam{QOB::Object(model)}; });
    model.destroy();
    EXPECT_THROW(TypeParam(QOB::Object(QOB::String("3|KB"))), Tessel::bad_any_cast);
}

TYPED_TEST(Quantities, MembersAreReachedByGenericCode) {
    using Number = typename TypeParam::Number;
    using Unit = typename TypeParam::Unit;
    TypeParam value = this->sample();
    EXPECT_TRUE(value.hasObjectValue() == true && value.hasObjectUnit() == true);
    EXPECT_EQ(Number(value.getValueAsImmutableObject()), value.getValue());
    EXPECT_EQ(Unit(value.getUnitAsImmutableObject()), value.getUnit());
    value.removeObjectValue(value.getValueAsImmutableObject());
    value.removeObjectUnit(value.getUnitAsImmutableObject());
    EXPECT_EQ(value, this->sample());
    value.setOrAddObjectValue(Number(5));
    value.setOrAddObjectUnit(Unit(1));
    EXPECT_EQ(value, TypeParam(5, 1));

    this->expectInternalFailure([&] { value.setOrAddObjectValue(QOB::Object()); });
    this->expectInternalFailure([&] { value.setOrAddObjectUnit(QOB::Object()); });
    this->expectInternalFailure([&] { value.removeObjectValue(QOB::ImmutableObject()); });
    this->expectInternalFailure([&] { value.removeObjectUnit(QOB::ImmutableObject()); });
    EXPECT_THROW(value.setOrAddObjectValue(Unit(1)), Tessel::bad_any_cast);
    EXPECT_THROW(value.setOrAddObjectUnit(Number(1)), Tessel::bad_any_cast);
    EXPECT_THROW(value.removeObjectValue(QOB::Object(Unit(1))), Tessel::bad_any_cast);
    EXPECT_THROW(value.removeObjectUnit(QOB::Object(Number(1))), Tessel::bad_any_cast);
    EXPECT_EQ(value, TypeParam(5, 1));
}

TYPED_TEST(Quantities, AreDescribedByTheirTypeInfo) {
    using Adapter = std::conditional_t<TestFixture::isSize, DataSizeTypeInfo, TimeTypeInfo>;
    using Other = std::conditional_t<TestFixture::isSize, TimeTypeInfo, DataSizeTypeInfo>;
    Tessel::TypeInfo const& info = TypeParam::getTypeInfo();
    EXPECT_TRUE(Adapter::Is(info) && !Other::Is(info) && !Adapter::Is(Other::Create()));
    EXPECT_TRUE(QOB::TypeInfoRegistry::isRegistered(TypeParam::getTypeName()));
    Adapter* const type = Adapter::GetType(info);
    Tessel::ErrorHolder errors;
    EXPECT_EQ(Tessel::any_cast<TypeParam>(type->convertFromUString(L"3|2", errors)),
              this->sample());
    EXPECT_EQ(type->convertToString(this->sample()), this->sampleText());
    EXPECT_EQ(Tessel::any_cast<TypeParam>(type->defaultConstruct()), TypeParam());
    EXPECT_TRUE(type->isValid(this->sample()) && !type->isValid(Tessel::any(1)));
    EXPECT_THROW(type->convertToString(Tessel::any(1)), Tessel::bad_any_cast);
    std::unique_ptr<Tessel::Type> const copy(type->clone());
    EXPECT_TRUE(Adapter::Is(copy.get()) && type->isEqualTo(copy.get()));
    EXPECT_EQ(Tessel::any(this->sample()), Tessel::any(this->sample()));
    EXPECT_NE(Tessel::any(this->sample()), Tessel::any(TypeParam()));
    errors.setError("earlier");
    this->expectInternalFailure([&] { type->convertFromString("3|2", errors); });
}

// The numbers are worked out by hand: ((hash of the number + 177573) * 33 + unit) mod 2^31, in 32
// bits.
TEST(DataSizes, HashFollowsItsFormula) {
    EXPECT_EQ(hash_value(DataSize(0, 0)), 5859909U);
    EXPECT_EQ(hash_value(DataSize(32, DataSizeUnitKind::bit)), 5860965U);
    EXPECT_EQ(hash_value(DataSize(1, DataSizeUnitKind::GB)), 5859946U);
    EXPECT_EQ(hash_value(DataSize(-1, DataSizeUnitKind::byte)), 5859877U);
    // 2000000000 * 33 + 5859909 = 66005859909, modulo 2^32 1581350469, whose top bit is clear.
    EXPECT_EQ(hash_value(DataSize(2000000000, 0)), 1581350469U);
    // 70000000 * 33 + 5859909 = 2315859909, less 2^31 for the top bit.
    EXPECT_EQ(hash_value(DataSize(70000000, 0)), 168376261U);
    std::unordered_set<DataSize> const set{DataSize(1, 0), DataSize(1, 1), DataSize(1, 0)};
    EXPECT_EQ(set.size(), 2U);
}

TEST(Times, KeepTheirFractionInText) {
    EXPECT_EQ(Time::fromString("1.5|ms"), Time(1.5, TimeUnitKind::ms));
    EXPECT_EQ(std::string(Time(0.1, TimeUnitKind::yrs).toString()), "0.1|yrs");
    EXPECT_EQ(hash_value(Time(1.5, 1)),
              ((QOB::hash_value(QOB::Real(1.5)) + 177573U) * 33U + 1U) & 0x7fffffffU);
    EXPECT_EQ(std::hash<Time>()(Time(0.0, 0)), std::hash<Time>()(Time(-0.0, 0)));
}
