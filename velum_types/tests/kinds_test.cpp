#include "qob/qob/model.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/valueobjectfactory.h"
#include "support/failure.h"
#include "support/vtable.h"
#include "velum_foundation/zorvane/metamodel/specificenumtype.h"
#include "velum_types/zorvane/metamodel/types/initialize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethodcategory.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasizeunitkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestimeunitkind.h"

#include <climits>
#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>
#include <unordered_set>
#include <vector>

namespace types = Zorvane::metamodel::types;
using types::CompuMethodCategory;
using types::DataSizeUnitKind;
using types::FloatingPointKind;
using types::TimeUnitKind;
using VelumTest::messageOf;

static_assert(sizeof(DataSizeUnitKind) == 4 && std::is_trivially_copyable_v<DataSizeUnitKind>);
static_assert(std::is_nothrow_move_constructible_v<TimeUnitKind>);
static_assert(DataSizeUnitKind(DataSizeUnitKind::GB) == 4 && DataSizeUnitKind() < 1);
static_assert(TimeUnitKind(TimeUnitKind::us) == 2 && TimeUnitKind::yrs == 8);
static_assert(CompuMethodCategory() == CompuMethodCategory::Identical);
static_assert(FloatingPointKind() == FloatingPointKind::IEEE_Double);

namespace {

template <class Kind>
class Kinds : public testing::Test {
public:
    static std::string name();
    static std::vector<std::string> literals();

protected:
    Kinds() { types::initialize(); }
};
template <>
std::string Kinds<DataSizeUnitKind>::name() {
    return "DataSizeUnitKind";
}
template <>
std::string Kinds<TimeUnitKind>::name() {
    return "TimeUnitKind";
}
template <>
std::string Kinds<FloatingPointKind>::name() {
    return "FloatingPointKind";
}
template <>
std::string Kinds<CompuMethodCategory>::name() {
    return "CompuMethodCategory";
}
template <>
std::vector<std::string> Kinds<DataSizeUnitKind>::literals() {
    return {"bit", "byte", "KB", "MB", "GB"};
}
template <>
std::vector<std::string> Kinds<TimeUnitKind>::literals() {
    return {"s", "ms", "us", "min", "hrs", "dys", "wks", "mos", "yrs"};
}
template <>
std::vector<std::string> Kinds<FloatingPointKind>::literals() {
    return {"IEEE_Double", "IEEE_Single"};
}
template <>
std::vector<std::string> Kinds<CompuMethodCategory>::literals() {
    return {"Identical", "Linear", "RatFunc", "TextTable", "LinearAndTextTable"};
}

} // namespace

using AllKinds =
    testing::Types<DataSizeUnitKind, TimeUnitKind, FloatingPointKind, CompuMethodCategory>;
TYPED_TEST_SUITE(Kinds, AllKinds);

TYPED_TEST(Kinds, LiteralsStandInTheOrderOfTheirNumbers) {
    std::vector<std::string> texts;
    for (auto const& [kind, text] : TypeParam::getLiterals()) {
        EXPECT_EQ(kind(), static_cast<int>(texts.size()));
        EXPECT_EQ(std::string(kind.toString()), text);
        EXPECT_EQ(TypeParam::fromString(text), kind);
        texts.push_back(text);
    }
    EXPECT_EQ(texts, this->literals());
    EXPECT_EQ(TypeParam::getTypeName(), "Zorvane.metamodel.types." + this->name());
    EXPECT_TRUE(QOB::TypeInfoRegistry::isRegistered(TypeParam::getTypeName()));
}

TYPED_TEST(Kinds, AnyNumberIsStored) {
    for (int const number : {0, 7, 1000, -1, INT_MAX, INT_MIN}) {
        TypeParam const kind(number);
        EXPECT_TRUE(kind.isValid());
        EXPECT_EQ(kind(), number);
        EXPECT_EQ(types::hash_value(kind), static_cast<unsigned>(number));
        EXPECT_EQ(TypeParam::fromString(kind.toString()), kind);
        EXPECT_EQ(TypeParam(QOB::Object(kind)), kind);
        EXPECT_LE(kind, TypeParam(INT_MAX));
    }
    EXPECT_EQ(std::string(TypeParam(-1).toString()), "-1");
    EXPECT_THROW(TypeParam::fromString("Nonesuch"), Tessel::bad_any_cast);
    EXPECT_THROW(TypeParam::fromString(""), Tessel::bad_any_cast);
    std::unordered_set<TypeParam> const set{TypeParam(1), TypeParam(2), TypeParam(1)};
    EXPECT_EQ(set.size(), 2U);
    std::ostringstream out;
    out << TypeParam(1) << TypeParam(99);
    EXPECT_EQ(out.str(), this->literals()[1] + "99");
}

TYPED_TEST(Kinds, ComeBackOutOfABox) {
    TypeParam const kind(1);
    QOB::Object const object = kind;
    QOB::ValueObject const value = kind;
    EXPECT_EQ(TypeParam(object), kind);
    EXPECT_EQ(TypeParam(value), kind);
    EXPECT_EQ(TypeParam(QOB::ImmutableObject(object)), kind);
    EXPECT_EQ(TypeParam(QOB::ImmutableValueObject(value)), kind);
    EXPECT_EQ(value.getValueTypeName(), TypeParam::getTypeName());
    using Factory = QOB::ValueObjectFactory;
    EXPECT_EQ(TypeParam(Factory::create(TypeParam::getTypeName())), TypeParam());
    EXPECT_EQ(TypeParam(Factory::create(TypeParam::getTypeName(), kind)), kind);
    EXPECT_EQ(TypeParam(Factory::createFromString(TypeParam::getTypeName(), kind.toString())),
              kind);
}

TYPED_TEST(Kinds, InvalidObjectsAreQuietlyTheDefault) {
    EXPECT_EQ(TypeParam(QOB::Object()), TypeParam());
    EXPECT_EQ(TypeParam(QOB::ImmutableObject()), TypeParam());
    EXPECT_EQ(TypeParam(QOB::ValueObject()), TypeParam());
    EXPECT_EQ(TypeParam(QOB::ImmutableValueObject()), TypeParam());
    EXPECT_THROW(TypeParam(QOB::Object(QOB::Integer(1))), Tessel::bad_any_cast);
    QOB::Model const model = QOB::NSInterface::FactoryIntf::createNewModel();
    EXPECT_EQ(messageOf([&] { TypeParam{QOB::Object(model)}; }),
              "Internal assertion without a message detected in FTL generated code! Please fix me "
              "asap");
    model.destroy();
    EXPECT_EQ(TypeParam(QOB::Object(model)), TypeParam());
}

TYPED_TEST(Kinds, AreDescribedByASpecificEnumType) {
    using Type = Zorvane::metamodel::SpecificEnumType<TypeParam>;
    auto* const type = dynamic_cast<Type*>(Tessel::Type::GetBaseType(TypeParam::getTypeInfo()));
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->getLiterals().size(), this->literals().size());
    EXPECT_EQ(type->toInteger(TypeParam(5)), 5);
    EXPECT_EQ(Tessel::any_cast<TypeParam>(type->fromInteger(77)), TypeParam(77));
    EXPECT_THROW(type->toInteger(Tessel::any(5)), Tessel::bad_any_cast);
    EXPECT_TRUE(type->isValid(TypeParam(77)));
    EXPECT_FALSE(type->isValid(Tessel::any()));
    EXPECT_FALSE(type->isValid(Tessel::any(1)));
    EXPECT_EQ(Tessel::any(TypeParam(1)), Tessel::any(TypeParam(1)));
    EXPECT_NE(Tessel::any(TypeParam(1)), Tessel::any(TypeParam(2)));
    std::unique_ptr<Tessel::Type> const copy(type->clone());
    EXPECT_TRUE(type->isEqualTo(copy.get()));

    EXPECT_EQ(VelumTest::slotOf(&Type::clone), 10U);
    EXPECT_EQ(VelumTest::slotOf(&Type::toInteger), 13U); // the destructor takes two
    EXPECT_EQ(VelumTest::slotOf(&Type::fromInteger), 14U);
}
