#include "qob/kernel/property/container.h"

#include "nshandmaintained/propertyindex.h"
#include "object/containerlists.h"
#include "object/describe.h"
#include "qob/kernel/containers/sequence/views/combinedsequence.h"
#include "qob/qob/class.h"

#include <string>

namespace QOB::property {

using NSInterface::ClassObjectIntf;

namespace {

/// Null for an object whose class is not in the meta-registry.
QOB::internal::PropertyIndex const* liveIndexOf(ClassObjectIntf const* object, Deviant deviant) {
    ImmutableClass const meta = object->getMetaClass(deviant);
    return meta.get() != nullptr ? &meta->internal_propertyIndex() : nullptr;
}

/// The first of the container's lists whose elements the object can be.
PropertyBinding
listFor(ClassObjectIntf const* object, Deviant deviant, ClassObjectIntf const* container) {
    QOB::internal::PropertyIndex const* const kinds = liveIndexOf(object, deviant);
    QOB::internal::PropertyIndex const* const properties = liveIndexOf(container, deviant);
    if (kinds != nullptr && properties != nullptr) {
        for (PropertyBinding const& list : properties->ownedLists()) {
            MetaPropertyDescription const& description = *list.methods->properties[list.id];
            if (kinds->isKindOf(
                    QOB::internal::recordAt(description.package, description.typeIndex))) {
                return list;
            }
        }
    }
    failNoList(container, object);
}

/// Puts the object into the part of what its container shows as contained in which it is there, in
/// another deviant. False if it is in none.
bool joinSamePart(ClassObject const& container,
                  ClassObject const& containerThere,
                  ClassObject const& object) {
    using combined_sequence_internal::GenericCombinedSequence;
    Generic::Ref const element = Generic::toRef(object);
    Sequence<ClassObject> const here = container->getContaineeQOBs(container.getDeviant());
    Deviant const deviantThere = containerThere.getDeviant();
    Sequence<ClassObject> const there = containerThere->getContaineeQOBs(deviantThere);
    auto const* const all = dynamic_cast<GenericCombinedSequence const*>(here.get());
    auto const* const allThere = dynamic_cast<GenericCombinedSequence const*>(there.get());
    if (all == nullptr || allThere == nullptr) {
        bool const isThere = there.generic_contains(element);
        if (isThere) {
            here.generic_push_back(element);
        }
        return isThere;
    }
    for (std::size_t i = 0; i != allThere->parts().size(); ++i) {
        if (allThere->parts()[i]->generic_contains(deviantThere, element)) {
            all->parts()[i]->generic_push_back(container.getDeviant(), element);
            return true;
        }
    }
    return false;
}

} // namespace

void failNoList(ClassObjectIntf const* container, ClassObjectIntf const* object) {
    std::string const owner = QOB::internal::describe(container);
    std::string const part = QOB::internal::describe(object);
    QOB_FAIL("The container, %s, has no list that takes in %s.", owner.c_str(), part.c_str());
}

void leaveContainer(ClassObjectIntf* object, Deviant deviant, ClassObject const& container) {
    container->getContaineeQOBsWithoutAssociation(deviant).removeAll(ClassObject(object, deviant));
}

void joinContainer(ClassObjectIntf* object, Deviant deviant, ClassObject const& container) {
    PropertyBinding const list = listFor(object, deviant, container.get());
    list.methods->getMultiValued(container.get(), deviant, list.id, false)
        .generic_push_back(Generic::toRef(ClassObject(object, deviant)));
}

void AssignContainer::assign(ClassObjectIntf* target,
                             Deviant deviant,
                             ClassObjectIntf const* source,
                             Deviant sourceDeviant) {
    ClassObject const containerThere = source->getContainerQOB(sourceDeviant);
    ClassObject const container(containerThere.get(), deviant);
    if (isState(target)) {
        target->setContainerQOB(deviant, container);
        return;
    }
    if (!container.isValid()) {
        if (target->hasContainerQOB(deviant)) {
            target->removeContainerQOB(deviant);
        }
        return;
    }
    ClassObject const object(target, deviant);
    if (target->getContainerQOB(deviant) == container) {
        return;
    }
    if (container->getContaineeQOBsWithoutAssociation(deviant).contains(object)) {
        setContainerAlone(target, deviant, container);
    } else if (!joinSamePart(container, containerThere, object)) {
        target->setContainerQOB(deviant, container);
    }
}

} // namespace QOB::property
