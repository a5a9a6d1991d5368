#include "samples.h"
#include "tessel/enumtype.h"
#include "tessel/typeinfo.h"

#include <climits>
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Samples::Unit;
using Samples::UnitType;
using Tessel::any;
using Tessel::any_cast;
using Tessel::ByteArray;
using Tessel::ErrorHolder;

UnitType unitType() {
    UnitType type;
    type.addLiteral(0, "bit");
    type.addLiteral(1, "byte");
    type.addLiteral(-3, "none");
    return type;
}

TEST(EnumType, LiteralsAndNumbersTranslateIntoEachOther) {
    const UnitType type = unitType();
    for (const auto& [number, literal] : type.getLiterals()) {
        ErrorHolder errors;
        EXPECT_EQ(type.convertToString(Unit(number)), literal);
        EXPECT_EQ(type.convertFromString(literal, errors), any(Unit(number)));
        EXPECT_EQ(type.convertFromUString(type.convertToUString(Unit(number)), errors),
                  any(Unit(number)));
        EXPECT_FALSE(errors.hasError());
    }
    EXPECT_THROW(type.convertToString(1), Tessel::bad_any_cast);
    EXPECT_THROW(type.convertToString({}), Tessel::bad_any_cast);
}

TEST(EnumType, NumberWithoutLiteralIsWrittenInDecimalAndReadsBack) {
    const UnitType type = unitType();
    for (const int number : {7, 2, -1, INT_MAX, INT_MIN}) {
        ErrorHolder errors;
        const std::string text = type.convertToString(Unit(number));
        EXPECT_EQ(text, std::to_string(number));
        EXPECT_EQ(type.convertFromString(text, errors), any(Unit(number)));
        EXPECT_FALSE(errors.hasError());
    }
}

TEST(EnumType, UnknownLiteralNamesItselfItsTypeAndTheKnownOnes) {
    const UnitType type = unitType();
    for (const std::string text :
         {"Bit", "", " bit", "bit ", "7x", "7 ", "+7", "0x7", "1.0", "2147483648", "-2147483649"}) {
        ErrorHolder errors;
        EXPECT_TRUE(type.convertFromString(text, errors).empty()) << text;
        EXPECT_TRUE(errors.hasError()) << text;
        EXPECT_EQ(errors.getError(),
                  "Literal (" + text +
                      ") is unknown to the type (Unit), whose literals are (none, bit, byte).");
    }
}

TEST(EnumType, BytesHoldTheNumberLowestFirst) {
    const UnitType type = unitType();
    const auto bytes = [](std::vector<int> const& values) {
        std::vector<std::byte> all;
        all.reserve(values.size());
        for (const int value : values) {
            all.push_back(static_cast<std::byte>(value));
        }
        return ByteArray(all);
    };
    EXPECT_EQ(type.convertToByteArray(Unit(0x01020384)), bytes({0x84, 3, 2, 1}));
    for (const int number : {0, 1, -3, 300, INT_MAX, INT_MIN}) {
        ErrorHolder errors;
        EXPECT_EQ(type.convertFromByteArray(type.convertToByteArray(Unit(number)), errors),
                  any(Unit(number)));
        EXPECT_FALSE(errors.hasError());
    }
    ErrorHolder errors;
    EXPECT_TRUE(type.convertFromByteArray(bytes({1, 2, 3}), errors).empty());
    EXPECT_EQ(errors.getError(),
              "Byte array of size (3) is no value of the type (Unit), which has the size (4).");
}

TEST(EnumType, TableRefusesWhatWouldNotReadBack) {
    UnitType type = unitType();
    EXPECT_THROW(type.addLiteral(0, "again"), std::invalid_argument);
    EXPECT_THROW(type.addLiteral(5, "bit"), std::invalid_argument);
    // 7 without a literal is written "7", which must not read as 5.
    EXPECT_THROW(type.addLiteral(5, "7"), std::invalid_argument);
    EXPECT_EQ(type.getLiterals().size(), 3U);
    type.addLiteral(7, "7");
    EXPECT_EQ(type.getLiterals().size(), 4U);
    try {
        type.addLiteral(9, "byte");
        FAIL();
    } catch (std::invalid_argument const& error) {
        EXPECT_STREQ(error.what(),
                     "Literal (byte) with the number (9) cannot enter the type (Unit): "
                     "the literal has the number (1).");
    }
}

TEST(EnumType, DefaultIsTheNumberZeroAlsoWithoutALiteral) {
    EXPECT_EQ(UnitType().defaultConstruct(), any(Unit(0)));
    EXPECT_TRUE(UnitType().isValid(Unit(12)));
    EXPECT_FALSE(UnitType().isValid(12));
}

TEST(EnumType, CloneAndComparisonCoverNameAndTable) {
    UnitType type = unitType();
    const std::unique_ptr<Tessel::Type> copy(type.clone());
    EXPECT_TRUE(type.isEqualTo(copy.get()));
    EXPECT_EQ(copy->convertToString(Unit(1)), "byte");

    UnitType longer = unitType();
    longer.addLiteral(4, "GB");
    UnitType renamed("Volume");
    Samples::TextType text;
    for (Tessel::Type* other : {static_cast<Tessel::Type*>(&longer),
                                static_cast<Tessel::Type*>(&renamed),
                                static_cast<Tessel::Type*>(&text)}) {
        EXPECT_FALSE(type.isEqualTo(other));
        EXPECT_FALSE(other->isEqualTo(&type));
        EXPECT_NE(type.isLessThan(other), other->isLessThan(&type));
    }
    EXPECT_FALSE(type.isLessThan(copy.get()));
    EXPECT_TRUE(type.isLessThan(&renamed));
}

TEST(EnumType, TypeInfoGivesAnEmptyAnyForAnUnknownLiteral) {
    const Tessel::TypeInfo info = Tessel::Type::CreateTypeInfo(unitType().clone());
    EXPECT_EQ(any_cast<Unit>(info.convertFromString("byte")), Unit(1));
    EXPECT_THROW(any_cast<Unit>(info.convertFromString("bytes")), Tessel::bad_any_cast);
    EXPECT_EQ(info.convertToString(Unit(0)), "bit");
}

} // namespace
