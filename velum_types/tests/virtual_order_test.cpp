#include "support/vtable.h"
#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

using VelumTest::slotOf;

/// The slots of a class's own block, the pair that ends it included.
std::vector<std::size_t> namedElementBlock() {
    using Intf = foundation::NSInterface::NamedElementIntf;
    using Pair = Intf* (Intf::*)(QOB::Deviant, Intf const*) const;
    return {slotOf(&Intf::hasName),
            slotOf(&Intf::removeName),
            slotOf(&Intf::setName),
            slotOf(&Intf::getName),
            slotOf(static_cast<Pair>(&Intf::getReadDeviantI)),
            slotOf(static_cast<Pair>(&Intf::getWriteDeviantI))};
}

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

std::vector<std::size_t> elementBlock() {
    using Intf = foundation::NSInterface::ElementIntf;
    using Pair = Intf* (Intf::*)(QOB::Deviant, Intf const*) const;
    return {slotOf(static_cast<Pair>(&Intf::getReadDeviantI)),
            slotOf(static_cast<Pair>(&Intf::getWriteDeviantI))};
}

std::vector<std::size_t> factoryBlock() {
    using Intf = types::NSInterface::FactoryIntf;
    using Pair = Intf* (Intf::*)(QOB::Deviant, Intf const*) const;
    using Bare = types::Integer (Intf::*)(QOB::Deviant);
    using Named = types::Integer (Intf::*)(QOB::Deviant, QOB::String);
    return {slotOf(static_cast<Named>(&Intf::createInteger)),
            slotOf(static_cast<Bare>(&Intf::createInteger)),
            slotOf(static_cast<Pair>(&Intf::getReadDeviantI)),
            slotOf(static_cast<Pair>(&Intf::getWriteDeviantI)),
            slotOf(&Intf::createObject)};
}

std::vector<std::size_t> consecutiveFrom(std::size_t first, std::size_t count) {
    std::vector<std::size_t> slots;
    for (std::size_t i = 0; i < count; ++i) {
        slots.push_back(first + i);
    }
    return slots;
}

TEST(VirtualOrder, EachClassAddsItsBlockBehindItsBase) {
    using QOB::NSInterface::ClassObjectIntf;
    using Pair = ClassObjectIntf* (ClassObjectIntf::*)(QOB::Deviant, ClassObjectIntf const*) const;
    std::size_t const end = slotOf(static_cast<Pair>(&ClassObjectIntf::getWriteDeviantI)) + 1;
    EXPECT_EQ(elementBlock(), consecutiveFrom(end, 2));
    EXPECT_EQ(namedElementBlock(), consecutiveFrom(end + 2, 6));
    EXPECT_EQ(integerBlock(), consecutiveFrom(end + 8, 12));
}

TEST(VirtualOrder, FactoryEndsWithTheCreationByName) {
    using QOB::NSInterface::FactoryObjectIntf;
    using Pair =
        FactoryObjectIntf* (FactoryObjectIntf::*)(QOB::Deviant, FactoryObjectIntf const*) const;
    std::size_t const end = slotOf(static_cast<Pair>(&FactoryObjectIntf::getWriteDeviantI)) + 1;
    EXPECT_EQ(factoryBlock(), consecutiveFrom(end, 5));
}

} // namespace
