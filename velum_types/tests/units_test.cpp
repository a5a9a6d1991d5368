#include "freshmodel.h"
#include "support/failure.h"

#include <functional>
#include <string>

namespace types = Zorvane::metamodel::types;
using VelumTest::elementsOf;
using VelumTest::isWrittenIn;
using VelumTest::list;

namespace {

class UnitsTest : public VelumTest::FreshModel {
protected:
    types::Unit const second = types::Unit::create(model, "second");
    types::Dimension const time = types::Dimension::create(model, "time");
};

TEST_F(UnitsTest, BaseUnitIsAUnitOfItsDimension) {
    time.setBaseUnit(second);
    EXPECT_EQ(time.getBaseUnit(), second);
    EXPECT_EQ(second.getDimension(), time);
    EXPECT_EQ(elementsOf(time.getUnits()), list(second));

    auto const other = types::Dimension::create(model);
    other.setBaseUnit(second);
    EXPECT_EQ(second.getDimension(), other);
    EXPECT_TRUE(time.getUnits().empty()) << "a unit has one dimension";
    EXPECT_EQ(time.getBaseUnit(), second) << "nobody takes the base unit away";

    other.removeBaseUnit();
    EXPECT_FALSE(other.hasBaseUnit());
    EXPECT_EQ(second.getDimension(), other) << "still one of its units";

    auto const minute = types::Unit::create(model);
    other.setOnlyBaseUnit(minute);
    EXPECT_FALSE(minute.hasDimension()) << "one end only";
}

TEST_F(UnitsTest, BaseUnitBringsItsOtherEndsInStepWhereverTheyWere) {
    using types::NSInterface::DimensionIntf;
    types::initialize(); // names lead to properties by the live classes
    auto const other = types::Dimension::create(model);
    for (int const start : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}) {
        for (int const way : {0, 1, 2}) {
            SCOPED_TRACE(std::to_string(start) + " " + std::to_string(way));
            time.removeBaseUnit();
            second.removeDimension();
            time.getUnitsWithoutAssociation().clear();
            if (start % 3 != 0) {
                second.setDimension(start % 3 == 1 ? time : other);
            }
            if ((start / 3) % 2 != 0) { // one end, whatever the other says
                time.getUnitsWithoutAssociation().push_back(second);
            }
            if (start / 6 != 0) {
                time.setOnlyBaseUnit(second);
            }
            if (way == 0) {
                time.setBaseUnit(second);
            } else if (way == 1) {
                DimensionIntf::sIntrospectiveMethods.setSingleValued(
                    QOB::Object(time).get(), model.getDeviant(), 2, second);
            } else {
                time.setOrAdd("BaseUnit", second);
            }
            EXPECT_EQ(time.getBaseUnit(), second);
            EXPECT_EQ(second.getDimension(), time);
            EXPECT_EQ(elementsOf(time.getUnits()), list(second));
            EXPECT_TRUE(other.getUnits().empty());
        }
    }
}

TEST_F(UnitsTest, BaseUnitOfAnotherModelIsRefusedAndLeavesAllAsItWas) {
    QOB::Model const other = types::NSInterface::FactoryIntf::createNewModel();
    auto const foreign = types::Unit::create(other);
    time.setBaseUnit(second);
    EXPECT_EQ(VelumTest::messageOf([&] { time.setBaseUnit(foreign); }),
              "Cross-model bi-directional associations are currently disallowed!");
    EXPECT_EQ(time.getBaseUnit(), second);
    EXPECT_EQ(elementsOf(time.getUnits()), list(second));
    EXPECT_FALSE(foreign.hasDimension());
    second.setConvUnit(foreign);
    EXPECT_EQ(second.getConvUnit(), foreign) << "a reference without another end may go anywhere";
    second.removeConvUnit();
    other.destroy();
}

TEST_F(UnitsTest, WhatIsNotBuiltYetSaysSoAndChangesNothing) {
    using Methods = QOB::IntrospectiveMethods;
    QOB::Deviant const root = model.getDeviant();
    QOB::NSInterface::ObjectIntf* const unitObject = QOB::Object(second).get();
    QOB::NSInterface::ObjectIntf* const dimensionObject = QOB::Object(time).get();
    Methods const& ofUnit = types::NSInterface::UnitIntf::sIntrospectiveMethods;
    Methods const& ofDimension = types::NSInterface::DimensionIntf::sIntrospectiveMethods;
    QOB::Real number = 2;
    QOB::Object const text = QOB::String("ms-1");

    std::string const unitExpression =
        "The Unit.UnitExpression derived property is not yet implemented!";
    std::string const dimensionExpression =
        "The Dimension.DimensionExpression derived property is not yet implemented!";
    struct Case {
        std::function<void()> call;
        std::string message;
    };
    Case const cases[] = {
        {[&] { second.convert(number, second); },
         "The Unit.convert operation is not yet implemented!"},
        {[&] { second.convertToBase(number); },
         "The Unit.convertToBase operation is not yet implemented!"},
        {[&] { second.getFactorAndOffsetToBase(); },
         "The Unit.getFactorAndOffsetToBase operation is not yet implemented!"},
        {[&] { second.hasSameDimensions(second); },
         "The Unit.hasSameDimensions operation is not yet implemented!"},
        {[&] { second.getBaseDimensionExponents(); },
         "The Unit.getBaseDimensionExponents operation is not yet implemented!"},
        {[&] { second.getUnitExpression(); }, unitExpression},
        {[&] { second.setUnitExpression("s"); }, unitExpression},
        {[&] { second.setUnitExpression(QOB::String()); }, unitExpression},
        {[&] { ofUnit.getSingleValued(unitObject, root, 6); }, unitExpression},
        {[&] { ofUnit.setSingleValued(unitObject, root, 6, text); }, unitExpression},
        {[&] { time.getDimensionExpression(); }, dimensionExpression},
        {[&] { time.setDimensionExpression("T"); }, dimensionExpression},
        {[&] { ofDimension.getSingleValued(dimensionObject, root, 6); }, dimensionExpression},
        {[&] { ofDimension.setSingleValued(dimensionObject, root, 6, text); }, dimensionExpression},
    };
    for (Case const& one : cases) {
        EXPECT_THROW(one.call(), QOB::UnImplementedException) << one.message;
        EXPECT_EQ(VelumTest::messageOf(one.call), one.message);
    }
    EXPECT_EQ(number, 2.0);
    EXPECT_FALSE(second.hasSymbol());
    EXPECT_TRUE(second.getBaseUnits().empty());
    EXPECT_FALSE(ofUnit.hasSingleValued(unitObject, root, 6));
    EXPECT_FALSE(ofDimension.hasSingleValued(dimensionObject, root, 6));
    EXPECT_NE(VelumTest::failureOf([&] { second.convertToBase(number); })
                  .find(" at velum_types/zorvane/metamodel/types/nshandmaintained/"
                        "zorvanemetamodeltypesunitimplhand.cpp:"),
              std::string::npos);
}

TEST_F(UnitsTest, BaseUnitsOfAnotherModelAreReferredToAsLongAsTheyAreListed) {
    QOB::Model const other = types::NSInterface::FactoryIntf::createNewModel();
    types::Unit const metre = types::Unit::create(other, "metre");
    types::Unit const gram = types::Unit::create(other, "gram");
    auto const refers = [&] { return model.getReferredModels().size() == 1U; };
    QOB::Sequence<types::Unit> const units = second.getBaseUnits();

    units.push_back(metre);
    units.push_back(metre); // it is there already
    units.push_front(gram);
    EXPECT_TRUE(refers());
    units.erase(0);
    EXPECT_TRUE(refers());
    units.replace(0, second);
    EXPECT_FALSE(refers());
    units.insert(1, metre);
    EXPECT_TRUE(refers());
    units.removeAll(metre);
    EXPECT_FALSE(refers());
    units.push_back(gram);
    units.clear();
    EXPECT_FALSE(refers());
    units.push_back(metre);
    second.setConvUnit(gram);
    second.destroy();
    EXPECT_FALSE(refers()) << "each reference is taken back once";
    other.destroy();
}

} // namespace
