#include "samples.h"
#include "support/vtable.h"
#include "tessel/tessel.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

// Derived types and boxes stand in libraries of their own, so the order of the virtual operations
// is part of the interface.
namespace {

using Tessel::any;
using Tessel::EnumType;
using Tessel::ModuleObjectImpl;
using Tessel::Type;
using VelumTest::destroyThrough;
using VelumTest::entryAt;
using VelumTest::entryOf;
using VelumTest::slotOf;

struct Flagged {
    bool* destroyed = nullptr;
    Flagged() = default;
    explicit Flagged(bool* flag) : destroyed(flag) {}
    Flagged(Flagged const&) = default;
    Flagged& operator=(Flagged const&) = default;
    ~Flagged() {
        if (destroyed != nullptr) {
            *destroyed = true;
        }
    }
};

TEST(VirtualOrder, OfType) {
    EXPECT_EQ(slotOf(&Type::convertFromString), 0U);
    EXPECT_EQ(slotOf(&Type::convertToString), 1U);
    EXPECT_EQ(slotOf(&Type::convertFromByteArray), 2U);
    EXPECT_EQ(slotOf(&Type::convertToByteArray), 3U);
    EXPECT_EQ(slotOf(&Type::convertFromUString), 4U);
    EXPECT_EQ(slotOf(&Type::convertToUString), 5U);
    EXPECT_EQ(slotOf(&Type::defaultConstruct), 6U);
    EXPECT_EQ(slotOf(&Type::isValid), 7U);
    EXPECT_EQ(slotOf(&Type::isEqualTo), 8U);
    EXPECT_EQ(slotOf(&Type::isLessThan), 9U);
    EXPECT_EQ(slotOf(&Type::clone), 10U);

    int destroyed = 0;
    destroyThrough<Type>(new Samples::TextType(&destroyed), 12); // the destructor's are 11 and 12
    EXPECT_EQ(destroyed, 1);
}

TEST(VirtualOrder, OfEnumTypeGoesOnBehindTheDestructor) {
    EXPECT_EQ(slotOf(&EnumType::toInteger), 13U);
    EXPECT_EQ(slotOf(&EnumType::fromInteger), 14U);
    EXPECT_EQ(slotOf(&EnumType::convertFromString), 0U);

    const Samples::UnitType unit;
    const Samples::TextType text;
    Type const* const asUnit = &unit;
    Type const* const asText = &text;
    EXPECT_EQ(entryOf(asUnit, &Type::convertFromUString),
              entryOf(asText, &Type::convertFromUString));
    EXPECT_EQ(entryOf(asUnit, &Type::convertToUString), entryOf(asText, &Type::convertToUString));
    EXPECT_NE(entryOf(asUnit, &Type::convertToByteArray),
              entryOf(asText, &Type::convertToByteArray));
    EXPECT_NE(entryOf(asUnit, &Type::isEqualTo), entryOf(asText, &Type::isEqualTo));
}

TEST(VirtualOrder, OfHolder) {
    using Box = any::placeholder;
    EXPECT_EQ(slotOf(&Box::referredValue), 2U); // 0 and 1 are the destructor's
    EXPECT_EQ(slotOf(&Box::type), 3U);
    EXPECT_EQ(slotOf(&Box::clone), 4U);
    EXPECT_EQ(slotOf(&Box::isEqualTo), 5U);
    EXPECT_EQ(slotOf(&any::holder<int>::isEqualTo), 5U);

    bool destroyed = false;
    const any original = Flagged(nullptr);
    auto* const box = new any::holder<Flagged>(std::in_place, &destroyed);
    EXPECT_EQ(entryAt(static_cast<Box*>(box), 3), entryAt(original.content(), 3));
    destroyThrough<Box>(box, 1);
    EXPECT_TRUE(destroyed);
}

TEST(VirtualOrder, OfModuleObject) {
    struct Deleter {
        void operator()(Flagged* object) const { delete object; }
    };
    using Module = ModuleObjectImpl<Flagged*, Deleter>;
    EXPECT_EQ(slotOf(&Module::deleteObject), 2U);
    bool destroyed = false;
    destroyThrough<Tessel::ModuleObject>(new Module(new Flagged(&destroyed)), 1);
    EXPECT_TRUE(destroyed);
}

TEST(VirtualOrder, OfAnOperationThatIsNotVirtualIsRefused) {
    EXPECT_THROW(slotOf(&EnumType::addLiteral), std::logic_error);
}

} // namespace
