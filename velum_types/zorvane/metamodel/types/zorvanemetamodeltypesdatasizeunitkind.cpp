#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasizeunitkind.h"

#include "kindimpl.h"

namespace Zorvane::metamodel::types {

void DataSizeUnitKindLiterals::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

template class Kind<DataSizeUnitKind, DataSizeUnitKindLiterals>;

} // namespace Zorvane::metamodel::types
