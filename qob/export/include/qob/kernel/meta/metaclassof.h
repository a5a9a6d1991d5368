#pragma once

#include "qob/qob/class.h"
#include "qob/qob/introspection.h"

namespace QOB {

/// The live class of a record, seen in the root deviant of the meta-registry. Empty if it hasn't
/// been created, and for the record of a data type.
QOB_EXPORT ImmutableClass metaClassOf(IntrospectiveMethods const& methods);

} // namespace QOB
