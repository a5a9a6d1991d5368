#include "support/vtable.h"
#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

using VelumTest::slotOf;

std::vector<std::size_t> integerBlock() {
    using Intf = types::NSInterface::IntegerIntf;
    using Pair = Intf* (Intf::*)(QOB::Deviant, Intf const*) const;
    return {slotOf(&Intf::hasLength),
            slotOf(&Intf::removeLength),
            slotOf(&Intf::setLength),
            slotOf(&Intf::getLength),
            slotOf(&Intf::removeOnlyLength),
            slotOf(&Intf::setOnlyLength),
            slotOf(&Intf::hasIsSigned),
            slotOf(&Intf::removeIsSigned),
            slotOf(&Intf::setIsSigned),
            slotOf(&Intf::isSigned),
            slotOf(static_cast<Pair>(&Intf::getReadDeviantI)),
            slotOf(static_cast<Pair>(&Intf::getWriteDeviantI))};
}

std::vector<std::size_t> consecutiveFrom(std::size_t first, std::size_t count) {
    std::vector<std::size_t> slots;
    for (std::size_t i = 0; i < count; ++i) {
        slots.push_back(first + i);
    }
    return slots;
}

TEST(VirtualOrder, ClassAddsItsBlockBehindItsBase) {
    using types::NSInterface::RealIntf;
    using Pair = RealIntf* (RealIntf::*)(QOB::Deviant, RealIntf const*) const;
    std::size_t const end = slotOf(static_cast<Pair>(&RealIntf::getWriteDeviantI)) + 1;
    EXPECT_EQ(integerBlock(), consecutiveFrom(end, 12));
}

} // namespace
