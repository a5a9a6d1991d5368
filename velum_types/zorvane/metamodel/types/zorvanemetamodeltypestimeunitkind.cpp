#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestimeunitkind.h"

#include "kindimpl.h"

namespace Zorvane::metamodel::types {

void TimeUnitKindLiterals::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

template class Kind<TimeUnitKind, TimeUnitKindLiterals>;

} // namespace Zorvane::metamodel::types
