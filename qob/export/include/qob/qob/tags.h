#pragma once

#include "qob/qob/namedelement.h"
#include "qob/qob/stereotypeobject.h"

#include <utility>

namespace QOB {

namespace NSInterface {
class NamespaceIntf;
} // namespace NSInterface

/// A stereotype that no library declares, such as a tag.
class DynamicStereotypeObject : public StereotypeObject {
public:
    using StereotypeObject::StereotypeObject;
    DynamicStereotypeObject() noexcept = default;
    explicit DynamicStereotypeObject(StereotypeObject stereotype)
        : StereotypeObject(std::move(stereotype)) {}
};

/// Tags of the elements of metamodels: facts about an element for which its class has no property.
/// A tag is a stereotype that is applied to the element and has the tag's name.

/// Whether the element has the tag.
QOB_EXPORT bool hasTag(char const* tag, ImmutableNamedElement const& element);
/// The value of the tag; invalid if the element doesn't have it or it has no value.
QOB_EXPORT String getTagValue(char const* tag, ImmutableNamedElement const& element);
/// All tags of the element, in the order in which they were applied.
QOB_EXPORT ImmutableSequence<ImmutableStereotypeObject>
getTags(ImmutableNamedElement const& element);

/// Applies the tag in the element's deviant and returns it. An element that already has the tag
/// keeps that one. Raises QOB::Exception for an empty handle.
QOB_EXPORT DynamicStereotypeObject applyTagToMetaElement(char const* tag,
                                                         ImmutableNamedElement const& element);
/// The same with a value, in the root deviant of the element's model.
QOB_EXPORT void
staticApplyTag(char const* tag, char const* value, NSInterface::NamespaceIntf* element);

} // namespace QOB
