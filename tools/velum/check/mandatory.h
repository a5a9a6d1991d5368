#pragma once

#include "check/issue.h"

#include <qob/qob.h>

namespace velum::check {

/// Reports the properties of an object that its metaclass calls mandatory and that have no value.
/// The metamodel's own tables say which; those of the base metamodel (a name) don't count, nor does
/// what the exchange format leaves out rightly or no object is made of. `element` is what the
/// object was made of, empty if there is nothing.
void checkMandatory(QOB::ClassObject const& object, arxml::SourceElement element, Sink const& sink);

} // namespace velum::check
