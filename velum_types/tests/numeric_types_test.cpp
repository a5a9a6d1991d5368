#include "freshmodel.h"
#include "support/failure.h"

#include <limits>

namespace types = Zorvane::metamodel::types;
using types::DataSize;
using types::DataSizeUnitKind;
using VelumTest::isWrittenIn;

namespace {

class NumericTypesTest : public VelumTest::FreshModel {
protected:
    /// One of each class whose bounds nobody has given.
    std::vector<types::Real> unboundedTypes() const {
        auto const floatingPoint = types::FloatingPoint::create(model);
        floatingPoint.setName("floating point");
        return {types::Integer::create(model, "integer"),
                types::FixedPoint::create(model, "fixed point"),
                floatingPoint,
                types::Enumeration::create(model, "enumeration")};
    }
};

TEST_F(NumericTypesTest, BoundsAreWhatTheUserStoredAndNothingElse) {
    for (types::Real const& type : unboundedTypes()) {
        SCOPED_TRACE(type.getName());
        type.setMinValue(5);
        type.setMaxValue(-5);
        EXPECT_TRUE(type.hasMinValue());
        EXPECT_EQ(type.getMinValue(), 5.0);
        EXPECT_EQ(type.getMaxValue(), -5.0) << "below the other bound";
        EXPECT_EQ(type.getGroundValue(), 0.0) << "outside the bounds";

        type.setIsMinOpen(false);
        type.removeIsMinOpen();
        type.setIsMinOpen(QOB::Boolean());
        EXPECT_EQ(type.isMinOpen(), false);

        type.setMinValue(QOB::Real());
        EXPECT_FALSE(type.hasMinValue());
        EXPECT_FALSE(type.getMinValue().isValid());
        type.removeMaxValue();
        EXPECT_FALSE(type.hasMaxValue());
        EXPECT_FALSE(type.getMaxValue().isValid());
    }
    types::Integer const byte = types::Integer::create(model);
    byte.setLength(DataSize(8, DataSizeUnitKind::bit));
    byte.setIsSigned(false);
    EXPECT_FALSE(byte.getMaxValue().isValid()) << "no bound follows from the width";
}

TEST_F(NumericTypesTest, FixedPointStartsInItsDefaultsAndFallsBackToThem) {
    auto const type = types::FixedPoint::create(model);
    EXPECT_EQ(type.getLength(), DataSize(16, DataSizeUnitKind::bit));
    EXPECT_EQ(type.isSigned(), true);
    DataSize const half(15, DataSizeUnitKind::bit);
    for (bool const written : {false, true}) {
        if (written) {
            type.setFractionLength(DataSize(2, DataSizeUnitKind::byte));
            type.setBias(3);
            type.setFractionalSlope(0.5);
        }
        EXPECT_TRUE(type.hasFractionLength());
        EXPECT_TRUE(type.hasBias());
        EXPECT_TRUE(type.hasFractionalSlope());
        type.removeFractionLength();
        type.removeBias();
        type.setFractionalSlope(QOB::Real());
        EXPECT_FALSE(type.hasFractionLength());
        EXPECT_EQ(type.getFractionLength(), half);
        EXPECT_FALSE(type.hasBias());
        EXPECT_EQ(type.getBias(), 0.0);
        EXPECT_FALSE(type.hasFractionalSlope());
        EXPECT_EQ(type.getFractionalSlope(), 1.0);
        EXPECT_EQ(type.getSlope(), 32768.0);
    }
}

TEST_F(NumericTypesTest, SlopeTakesTheFractionLengthAsExponent) {
    struct Case {
        DataSize fractionLength;
        double fractionalSlope;
        double slope;
    };
    double const infinity = std::numeric_limits<double>::infinity();
    Case const cases[] = {
        {{15, DataSizeUnitKind::bit}, 1, 32768},
        {{0, DataSizeUnitKind::bit}, 0.75, 0.75},
        {{-3, DataSizeUnitKind::bit}, 2, 0.25},
        {{2, DataSizeUnitKind::GB}, 1, 4}, // the unit is not looked at
        {{10, DataSizeUnitKind::bit}, 0, 0},
        {{10, DataSizeUnitKind::bit}, -1, -1024},
        {{2000, DataSizeUnitKind::bit}, 1, infinity},
        {{-2000, DataSizeUnitKind::bit}, 1, 0},
        {DataSize(), 1, 0}, // a size without a number is a very small one
    };
    auto const type = types::FixedPoint::create(model);
    for (Case const& one : cases) {
        SCOPED_TRACE(one.slope);
        type.setFractionLength(one.fractionLength);
        type.setFractionalSlope(one.fractionalSlope);
        EXPECT_EQ(type.getSlope(), one.slope);
    }
}

TEST_F(NumericTypesTest, SlopeIsThatOfTheDeviant) {
    auto const type = types::FixedPoint::create(model);
    QOB::Deviant const branch = model.createDeviant();
    type.inDeviant(branch).setFractionLength(DataSize(1, DataSizeUnitKind::bit));
    EXPECT_EQ(type.inDeviant(branch).getSlope(), 2.0);
    EXPECT_EQ(type.getSlope(), 32768.0);
}

TEST_F(NumericTypesTest, FloatingPointIsOfDoublePrecisionUnlessToldOtherwise) {
    auto const type = types::FloatingPoint::create(model);
    EXPECT_TRUE(type.hasKind());
    EXPECT_EQ(type.getKind(), types::FloatingPointKind::IEEE_Double);
    auto const single =
        types::FloatingPoint::create(model, types::FloatingPointKind::IEEE_Single, "single");
    single.removeKind();
    single.removeOnlyKind();
    EXPECT_EQ(single.getKind(), types::FloatingPointKind::IEEE_Single);
    EXPECT_TRUE(single.hasKind());
}

TEST_F(NumericTypesTest, BooleanHasClosedBoundsAndFallsBackToThem) {
    auto const flag = types::Boolean::create(model);
    types::Real const real = flag;
    EXPECT_TRUE(real.hasMinValue());
    EXPECT_EQ(real.getMinValue(), 0.0);
    EXPECT_TRUE(real.hasMaxValue());
    EXPECT_EQ(real.getMaxValue(), 1.0);
    EXPECT_EQ(real.isMinOpen(), false);
    EXPECT_EQ(real.isMaxOpen(), false);

    flag.setMinValue(-1);
    flag.setMaxValue(2);
    real.removeMinValue();
    flag.setMaxValue(QOB::Real());
    EXPECT_FALSE(flag.hasMinValue());
    EXPECT_EQ(flag.getMinValue(), 0.0);
    EXPECT_FALSE(flag.hasMaxValue());
    EXPECT_EQ(flag.getMaxValue(), 1.0);

    flag.setMinValue(0);
    EXPECT_TRUE(flag.hasMinValue()) << "given anew, though it is what the type falls back to";
}

} // namespace
