#include "meta/propertyindex.h"
#include "modelcore.h"
#include "qob/kernel/containers/sequence/views/filteredsequence.h"
#include "qob/kernel/property/container.h"
#include "qob/kernel/property/otherend.h"
#include "qob/qob/class.h"

#include <string>
#include <typeinfo>

/// Which list of a container takes an object in.
namespace QOB::property {

namespace {

using NSInterface::ClassObjectIntf;

[[noreturn]] void failNoList(ClassObjectIntf const* container, ClassObjectIntf const* object) {
    std::string const owner = QOB::internal::describe(container);
    std::string const part = QOB::internal::describe(object);
    AsserterEx<Exception>(
        "The container, %s, has no list that takes in %s.", owner.c_str(), part.c_str())
        .raise(__FILE__, __LINE__, "");
    std::terminate(); // not reached: that check has failed already
}

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

} // namespace

void joinContainer(ClassObjectIntf* object, Deviant deviant, ClassObject const& container) {
    PropertyBinding const list = listFor(object, deviant, container.get());
    list.methods->getMultiValued(container.get(), deviant, list.id, false)
        .generic_push_back(Generic::toRef(ClassObject(object, deviant)));
}

void requireElement(Generic::SequenceRef const& elements,
                    ClassObject const& object,
                    ClassObject const& container) {
    using filtered_sequence_internal::GenericFilteredSequence;
    Generic::SequenceIntf const& sequence = *elements.access();
    if (typeid(sequence) == typeid(GenericFilteredSequence) &&
        !static_cast<GenericFilteredSequence const&>(sequence).takes(Generic::toRef(object))) {
        failNoList(container.get(), object.get());
    }
}

} // namespace QOB::property
