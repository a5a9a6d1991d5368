#include "samples.h"
#include "tessel/encoding.h"
#include "tessel/type.h"
#include "tessel/typeinfo.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using Samples::TextType;
using Samples::UnitType;
using Tessel::any;
using Tessel::any_cast;
using Tessel::ByteArray;
using Tessel::ErrorHolder;
using Tessel::Type;
using Tessel::TypeInfo;

TEST(Type, InheritedConversionsGoThroughTheNarrowText) {
    const TextType type;
    ErrorHolder errors;
    EXPECT_EQ(any_cast<std::string>(type.convertFromUString(L"Größe", errors)),
              "Gr\xC3\xB6\xC3\x9F"
              "e");
    EXPECT_EQ(type.convertToUString(std::string("Gr\xC3\xB6\xC3\x9F"
                                                "e")),
              L"Größe");
    EXPECT_EQ(type.convertToByteArray(std::string("a\0b", 3)),
              ByteArray::fromText(std::string("a\0b", 3)));
    EXPECT_EQ(
        any_cast<std::string>(type.convertFromByteArray(ByteArray::fromText("\xFFx"), errors)),
        "\xFFx");
    EXPECT_FALSE(errors.hasError());
    EXPECT_THROW(type.convertToUString(1), Tessel::bad_any_cast);
    EXPECT_THROW(type.convertToByteArray(1), Tessel::bad_any_cast);
}

TEST(Type, MalformedWideTextIsAnErrorOfTheConversion) {
    const TextType type;
    ErrorHolder errors;
    EXPECT_TRUE(
        type.convertFromUString(std::wstring(1, static_cast<wchar_t>(0xD800)), errors).empty());
    EXPECT_EQ(errors.getError(),
              "Wide character (0xD800) at index (0) is a surrogate that belongs to no pair.");
    EXPECT_THROW(type.convertToUString(std::string("\xFF")), Tessel::EncodingError);
}

TEST(Type, ValueIsValidIfItHasTheTypeOfTheDefault) {
    const TextType type;
    EXPECT_TRUE(type.isValid(std::string("text")));
    EXPECT_FALSE(type.isValid(1));
    EXPECT_FALSE(type.isValid({}));
}

TEST(Type, ClassesAreComparedAndOrdered) {
    TextType first;
    TextType second;
    UnitType unit;
    EXPECT_TRUE(first.isEqualTo(&second));
    EXPECT_FALSE(first.isEqualTo(&unit));
    EXPECT_FALSE(first.isEqualTo(nullptr));
    EXPECT_FALSE(first.isLessThan(&second));
    EXPECT_FALSE(first.isLessThan(nullptr));
    EXPECT_NE(first.isLessThan(&unit), unit.isLessThan(&first));
}

TEST(TypeInfo, CopiesShareTheTypeUntilTheLastIsGone) {
    int destroyed = 0;
    {
        auto info = std::make_unique<TypeInfo>(Type::CreateTypeInfo(new TextType(&destroyed)));
        const TypeInfo copy = *info;
        // Moving copies: a handle without a type does not exist.
        const TypeInfo moved = std::move(*info); // NOLINT(performance-move-const-arg)
        EXPECT_EQ(Type::GetBaseType(*info), Type::GetBaseType(moved));
        info.reset();
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(copy.convertToString(std::string("x")), "x");
    }
    EXPECT_EQ(destroyed, 1);
    EXPECT_THROW(Type::CreateTypeInfo(nullptr), std::invalid_argument);
}

TEST(TypeInfo, ConversionInErrorGivesAnEmptyAny) {
    const TypeInfo info = Type::CreateTypeInfo(new TextType());
    EXPECT_EQ(info.convertFromString("good"), any(std::string("good")));
    EXPECT_TRUE(info.convertFromString("bad").empty());
    ErrorHolder errors;
    EXPECT_TRUE(info.convertFromString("bad", errors).empty());
    EXPECT_EQ(errors.getError(), "Text (bad) is refused.");
}

TEST(TypeInfo, ComparesTheDescribedTypes) {
    const TypeInfo text = Type::CreateTypeInfo(new TextType());
    const TypeInfo unit = Type::CreateTypeInfo(new UnitType());
    EXPECT_TRUE(text == Type::CreateTypeInfo(new TextType()));
    EXPECT_FALSE(text == unit);
    EXPECT_NE(text < unit, unit < text);
}

TEST(ErrorHolder, AnEmptyTextIsAnErrorTooUntilCleared) {
    ErrorHolder errors;
    EXPECT_FALSE(errors.hasError());
    EXPECT_EQ(errors.getError(), "");
    errors.setError("");
    EXPECT_TRUE(errors.hasError());
    errors.setError("later");
    EXPECT_EQ(errors.getError(), "later");
    errors.clear();
    EXPECT_FALSE(errors.hasError());
}

TEST(ByteArray, KeepsBytesOfATextAndOrdersThemUnsigned) {
    const ByteArray bytes = ByteArray::fromText(std::string("a\0\xFF", 3));
    EXPECT_EQ(bytes.size(), 3U);
    EXPECT_EQ(bytes[2], std::byte{0xFF});
    EXPECT_EQ(bytes.toText(), std::string("a\0\xFF", 3));
    EXPECT_LT(ByteArray::fromText("\x7F"), ByteArray::fromText("\x80"));
    EXPECT_LT(ByteArray(), bytes);
    EXPECT_TRUE(ByteArray().empty());
}

} // namespace
