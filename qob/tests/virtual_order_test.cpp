#include "qob/kernel/deviant/sparsetables.h"
#include "qob/qob/class.h"
#include "qob/qob/model.h"
#include "qob/qob/property.h"
#include "support/vtable.h"
#include "thing.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

using QOB::Deviant;
using QOB::ImmutableProperty;
using QOB::Object;
using QOB::String;
using QOB::NSInterface::ClassObjectIntf;
using QOB::NSInterface::ObjectIntf;
using VelumTest::slotOf;

namespace {

template <class Result, class... Argument>
using Reading = Result (ClassObjectIntf::*)(Deviant, Argument...) const;
template <class... Argument>
using Writing = void (ClassObjectIntf::*)(Deviant, Argument...);
using Property = ImmutableProperty const&;
using Values = QOB::ImmutableSequence<Object>;

/// The slot of an operation that has overloads.
template <class Signature>
std::size_t slotAs(Signature operation) {
    return slotOf(operation);
}

std::vector<std::size_t> reflectiveOperations() {
    using Self = ClassObjectIntf;
    return {slotAs<Reading<Values, Property>>(&Self::get),
            slotAs<Reading<Values, String>>(&Self::get),
            slotAs<Reading<Object, Property>>(&Self::getOne),
            slotAs<Reading<Object, String>>(&Self::getOne),
            slotAs<Reading<bool, Property>>(&Self::has),
            slotAs<Reading<bool, String>>(&Self::has),
            slotAs<Writing<Property, Object>>(&Self::setOrAdd),
            slotAs<Writing<String, Object>>(&Self::setOrAdd),
            slotAs<Writing<Property, Object>>(&Self::setOrAddOnly),
            slotAs<Writing<String, Object>>(&Self::setOrAddOnly),
            slotAs<Writing<Property>>(&Self::remove),
            slotAs<Writing<String>>(&Self::remove),
            slotAs<Writing<Property, Object>>(&Self::remove),
            slotAs<Writing<String, Object>>(&Self::remove),
            slotAs<Writing<Property, Object>>(&Self::removeOnly),
            slotAs<Writing<String, Object>>(&Self::removeOnly),
            slotAs<Writing<Property>>(&Self::removeOne),
            slotAs<Writing<String>>(&Self::removeOne),
            slotAs<Writing<Property>>(&Self::removeOneOnly),
            slotAs<Writing<String>>(&Self::removeOneOnly)};
}

std::vector<std::size_t> linkOperations() {
    using Self = ClassObjectIntf;
    return {slotOf(&Self::hasObjectId),
            slotOf(&Self::removeObjectId),
            slotOf(&Self::setObjectId),
            slotOf(&Self::getObjectId),
            slotOf(&Self::getContaineeQOBs),
            slotOf(&Self::getContaineeQOBsWithoutAssociation),
            slotOf(&Self::hasUri),
            slotOf(&Self::removeUri),
            slotOf(&Self::setUri),
            slotOf(&Self::getUri),
            slotOf(&Self::hasAppliedStereotypeInstances),
            slotOf(&Self::getAppliedStereotypeInstances),
            slotOf(&Self::getAppliedStereotypeInstancesWithoutAssociation),
            slotOf(&Self::hasModelQOB),
            slotOf(&Self::removeModelQOB),
            slotOf(&Self::setModelQOB),
            slotOf(&Self::getModelQOB),
            slotOf(&Self::removeOnlyModelQOB),
            slotOf(&Self::setOnlyModelQOB),
            slotOf(&Self::hasContainerQOB),
            slotOf(&Self::removeContainerQOB),
            slotOf(&Self::setContainerQOB),
            slotOf(&Self::getContainerQOB),
            slotOf(&Self::removeOnlyContainerQOB),
            slotOf(&Self::setOnlyContainerQOB),
            slotOf(&Self::hasRootModel),
            slotOf(&Self::removeRootModel),
            slotOf(&Self::getRootModel),
            slotOf(&Self::removeOnlyRootModel),
            slotOf(&Self::hasExternalId),
            slotOf(&Self::removeExternalId),
            slotOf(&Self::setExternalId),
            slotOf(&Self::getExternalId),
            slotOf(&Self::hasExternalToolInfos),
            slotOf(&Self::getExternalToolInfos),
            slotOf(&Self::getExternalToolInfosWithoutAssociation)};
}

std::vector<std::size_t> classObjectBlock() {
    using Self = ClassObjectIntf;
    using Pair = Self* (Self::*)(Deviant, Self const*) const;
    std::vector<std::size_t> slots{slotOf(&Self::getMetaClass),
                                   slotOf(&Self::getExternalToolInfo),
                                   slotOf(&Self::setExternalToolInfo),
                                   slotOf(&Self::removeExternalToolInfo)};
    for (auto const& part : {reflectiveOperations(), linkOperations()}) {
        slots.insert(slots.end(), part.begin(), part.end());
    }
    slots.push_back(slotAs<Pair>(&Self::getReadDeviantI));
    slots.push_back(slotAs<Pair>(&Self::getWriteDeviantI));
    return slots;
}

std::vector<std::size_t> objectBlock() {
    using Pair = ObjectIntf* (ObjectIntf::*)(Deviant, ObjectIntf const*) const;
    return {slotOf(&ObjectIntf::internal_disconnect),
            slotOf(&ObjectIntf::internal_discard),
            slotOf(&ObjectIntf::destroy),
            slotOf(&ObjectIntf::deviant_isValid),
            slotOf(&ObjectIntf::deviant_destroyState),
            slotOf(&ObjectIntf::deviant_markModelDestroyed),
            slotOf(&ObjectIntf::deviant_commitTransientState),
            slotOf(&ObjectIntf::deviant_getCopyOfDeviation),
            slotOf(&ObjectIntf::internal_getDeviation),
            slotOf(&ObjectIntf::internal_setDeviation),
            slotOf(&ObjectIntf::internal_createDeviation),
            slotOf(&ObjectIntf::internal_destroyDeviation),
            slotOf(&ObjectIntf::internal_deviationAssign),
            slotOf(&ObjectIntf::getRootDeviant),
            slotOf(&ObjectIntf::getLumvoName),
            slotOf(&ObjectIntf::toString),
            slotOf(&ObjectIntf::convertFromString),
            slotOf(&ObjectIntf::getMetaType),
            slotAs<Pair>(&ObjectIntf::getReadDeviantI),
            slotAs<Pair>(&ObjectIntf::getWriteDeviantI)};
}

std::vector<std::size_t> consecutiveFrom(std::size_t first, std::size_t count) {
    std::vector<std::size_t> slots;
    for (std::size_t i = 0; i < count; ++i) {
        slots.push_back(first + i);
    }
    return slots;
}

} // namespace

TEST(VirtualOrder, ClassObjectHasItsBlockBehindThatOfObject) {
    std::size_t const afterCast = slotOf(&QOB::ReferenceCountingIntf::cast) + 1;
    std::vector<std::size_t> const object = objectBlock();
    EXPECT_EQ(object, consecutiveFrom(afterCast, object.size()));
    std::vector<std::size_t> const own = classObjectBlock();
    EXPECT_EQ(own, consecutiveFrom(object.back() + 1, own.size()));
    EXPECT_EQ(slotOf(&sample::NSInterface::ThingIntf::setNumber), own.back() + 1)
        << "a class adds its block behind its base's";
}
