#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"

#include "kindimpl.h"

namespace Zorvane::metamodel::types {

void FloatingPointKindLiterals::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

template class Kind<FloatingPointKind, FloatingPointKindLiterals>;

} // namespace Zorvane::metamodel::types
