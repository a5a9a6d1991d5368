#include "support/allocation_count.h"
#include "tessel/any.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using Tessel::any;
using Tessel::any_cast;
using Tessel::bad_any_cast;
using VelumTest::allocationCount;

struct Size {
    int value;
    int unit;
    friend bool operator==(Size const&, Size const&) = default;
};

struct Incomparable {
    int value;
};

/// Has a copy constructor and one from an any, like the boxed objects of the kernel.
struct Boxed {
    Boxed(any const& value) : number(any_cast<int>(value)) {} // NOLINT: implicit on purpose
    int number;
};

static_assert(std::is_nothrow_move_constructible_v<any>);
static_assert(std::is_nothrow_move_assignable_v<any>);
static_assert(std::is_base_of_v<std::exception, bad_any_cast>);
static_assert(std::is_nothrow_copy_constructible_v<bad_any_cast>);

TEST(Any, GivesBackTheValueUnderItsExactTypeOnly) {
    any value = Size{32, 1};
    EXPECT_EQ(any_cast<Size>(value), (Size{32, 1}));
    EXPECT_EQ(value.type(), typeid(Size));
    EXPECT_EQ(any_cast<int>(&value), nullptr);
    EXPECT_THROW(any_cast<int>(value), bad_any_cast);
    EXPECT_THROW(any_cast<int const&>(std::as_const(value)), bad_any_cast);
    EXPECT_THROW(any_cast<int>(any(2.0)), bad_any_cast);
    // What converts implicitly is another type nonetheless.
    EXPECT_THROW(any_cast<long>(any(2)), bad_any_cast);

    any_cast<Size&>(value).unit = 4;
    EXPECT_EQ(any_cast<const Size>(&value)->unit, 4);
    EXPECT_EQ(any_cast<Size const&>(std::as_const(value)).unit, 4);
    EXPECT_EQ(any_cast<Boxed>(any(Boxed(any(3)))).number, 3);
}

TEST(Any, EmptyHoldsNothingAndSaysSo) {
    const any none;
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(none.type(), typeid(void));
    EXPECT_EQ(none.content(), nullptr);
    EXPECT_EQ(any_cast<int>(&none), nullptr);
    EXPECT_EQ(any_cast<int>(static_cast<any const*>(nullptr)), nullptr);
    EXPECT_TRUE(any(none).empty());

    any value = 1;
    EXPECT_FALSE(value.empty());
    value.reset();
    EXPECT_TRUE(value.empty());
}

TEST(Any, CopiesAreIndependentAndMovesLeaveNothingBehind) {
    any first = std::string("a text too long for any small buffer");
    any second = first;
    any_cast<std::string&>(second) += "!";
    EXPECT_EQ(any_cast<std::string>(first), "a text too long for any small buffer");

    void const* const address = any_cast<std::string>(&second);
    any third = std::move(second);
    EXPECT_EQ(any_cast<std::string>(&third), address);
    EXPECT_TRUE(second.empty()); // NOLINT(bugprone-use-after-move): the state of it is promised

    any const& alias = first;
    first = alias;
    EXPECT_EQ(any_cast<std::string>(first).size(), 36U);
    first = 7;
    swap(first, third);
    EXPECT_EQ(any_cast<int>(third), 7);

    const auto taken = any_cast<std::string>(std::move(first));
    EXPECT_EQ(taken.back(), '!');
}

TEST(Any, EqualityAsksTheValuesOfOneType) {
    EXPECT_EQ(any(Size{8, 0}), any(Size{8, 0}));
    EXPECT_NE(any(Size{8, 0}), any(Size{8, 1}));
    EXPECT_NE(any(1), any(1L));
    EXPECT_NE(any(1), any());
    EXPECT_NE(any(), any(1));
    EXPECT_EQ(any(), any());

    const any odd = Incomparable{1};
    EXPECT_EQ(odd, odd);
    EXPECT_NE(odd, any(odd));
}

TEST(Any, BoxingAllocatesOnceAndReadingNever) {
    const std::size_t before = allocationCount();
    const any value = Size{32, 1};
    EXPECT_EQ(allocationCount() - before, 1U);

    any const& itself = value;
    const std::size_t boxed = allocationCount();
    const bool same = any_cast<Size const&>(value) == Size{32, 1} && value == itself &&
                      any_cast<int>(&value) == nullptr;
    EXPECT_EQ(allocationCount(), boxed);
    EXPECT_TRUE(same);
}

TEST(Any, BadCastNamesBothTypes) {
    const auto textOf = [](any const& value) -> std::string {
        try {
            static_cast<void>(any_cast<double>(value));
        } catch (bad_any_cast const& error) {
            const bad_any_cast copy(error); // NOLINT(performance-unnecessary-copy-initialization)
            return copy.what();
        }
        return {};
    };
    EXPECT_EQ(textOf(1), "The any holds a value of the type (int), not of the type (double).");
    EXPECT_EQ(textOf({}), "The any is empty and holds no value of the type (double).");
    EXPECT_STREQ(bad_any_cast().what(), "The any holds no value of the requested type.");
}

TEST(Any, HolderOwnsItsValueAndClonesIt) {
    const any value = Size{1, 2};
    any::placeholder const* box = value.content();
    EXPECT_EQ(box->referredValue(), nullptr);
    const auto copy = box->clone();
    EXPECT_NE(copy.get(), box);
    EXPECT_EQ(copy->type(), typeid(Size));
    EXPECT_TRUE(copy->isEqualTo(*box));
    EXPECT_FALSE(copy->isEqualTo(*any(1).content()));
}

} // namespace
