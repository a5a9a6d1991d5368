#pragma once

#include "qob/qob/namedelement.h"
#include "qob/qob/stereotypeobject.h"

namespace QOB {

/// Tags of elements of metamodels: what one metamodel or a tool says of an element that its class
/// has no property for. A tag is a stereotype that is applied to the element, under its name.

/// Whether the element has the tag.
QOB_EXPORT bool hasTag(char const* tag, ImmutableNamedElement const& element);
/// The value of the tag; invalid if the element doesn't have it or it has no value.
QOB_EXPORT String getTagValue(char const* tag, ImmutableNamedElement const& element);
/// All tags of the element, in the order in which they were applied.
QOB_EXPORT ImmutableSequence<ImmutableStereotypeObject>
getTags(ImmutableNamedElement const& element);

/// Gives the element the tag, in the element's deviant; one that it has already stays the one tag.
/// Returns the tag. Raises QOB::Exception for an empty handle.
QOB_EXPORT DynamicStereotypeObject applyTagToMetaElement(char const* tag,
                                                         ImmutableNamedElement const& element);
/// The same with a value, in the root deviant of the element's model.
QOB_EXPORT void
staticApplyTag(char const* tag, char const* value, NSInterface::NamespaceIntf* element);

} // namespace QOB
