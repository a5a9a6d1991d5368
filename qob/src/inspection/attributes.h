#pragma once

#include "qob/qob/attributes.h"
#include "qob/qob/object.h"

namespace QOB::internal {

/// Whether a boxed value is the invalid one of its class, or the handle is empty.
bool isNothing(Object const& value);

/// Whether an object has values of the attribute. One that is there may be the invalid one of its
/// class, which is none.
bool hasValues(Attribute const& attribute, ClassObject const& object);

/// The values of an attribute with several, as the object's state has them: to be looked at at
/// once. On the object it would be a view, made for one question.
Generic::SequenceRef listOf(Attribute const& attribute, ClassObject const& object);

/// Whether the attribute is the external id, which every object has.
bool isExternalId(Attribute const& attribute);

/// The container, which contained objects that have no way to their owner also know.
Attribute containerAttribute();

/// The name of an object by its property "Name", or that of a stereotype; invalid if it has none.
String nameOf(ClassObject const& object);

} // namespace QOB::internal
