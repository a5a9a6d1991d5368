#include "qob/qob/tags.h"

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/deviant/onewrite.h"
#include "qob/qob/model.h"
#include "qob/qob/nsinterface/namespaceintf.h"

namespace QOB {

namespace {

/// The tag of that name; empty if the element doesn't have it.
StereotypeObject find(char const* tag, ImmutableNamedElement const& element) {
    if (element.isValid() && element.hasAppliedStereotypeInstances()) {
        for (StereotypeObject const& each :
             NamedElement(const_cast<NSInterface::NamedElementIntf*>(element.get()),
                          element.getDeviant())
                 .getAppliedStereotypeInstances()) {
            if (each.getStereotypeName().view() == tag) {
                return each;
            }
        }
    }
    return {};
}

} // namespace

bool hasTag(char const* tag, ImmutableNamedElement const& element) {
    return find(tag, element).isValid();
}

String getTagValue(char const* tag, ImmutableNamedElement const& element) {
    StereotypeObject const found = find(tag, element);
    return found.isValid() ? found.getValue() : String();
}

ImmutableSequence<ImmutableStereotypeObject> getTags(ImmutableNamedElement const& element) {
    // Read only, through a view that could write.
    auto* const object = const_cast<NSInterface::NamedElementIntf*>(element.operator->());
    return ImmutableSequence<ImmutableStereotypeObject>(
        object->getAppliedStereotypeInstancesWithoutAssociation(element.getDeviant()));
}

DynamicStereotypeObject applyTagToMetaElement(char const* tag,
                                              ImmutableNamedElement const& element) {
    if (StereotypeObject const there = find(tag, element); there.isValid()) {
        return DynamicStereotypeObject(there);
    }
    internal::OneWrite const write;
    auto* const object = const_cast<NSInterface::NamedElementIntf*>(element.operator->());
    Deviant const deviant = element.getDeviant();
    StereotypeObject const made = StereotypeObject::create(object->getModelQOB(deviant), tag);
    object->getAppliedStereotypeInstances(deviant).push_back(made);
    return DynamicStereotypeObject(made);
}

void staticApplyTag(char const* tag, char const* value, NSInterface::NamespaceIntf* element) {
    ImmutableNamedElement const target(element,
                                       element != nullptr ? element->getRootDeviant() : Deviant());
    applyTagToMetaElement(tag, target).setValue(value);
}

} // namespace QOB
