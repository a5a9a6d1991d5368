#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"

#include "qob/kernel/handle/outofline.h"
#include "velum_foundation/zorvane/metamodel/kindimpl.h"

namespace Zorvane::metamodel::types {

void FloatingPointKindLiterals::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

} // namespace Zorvane::metamodel::types

template class Zorvane::metamodel::Kind<Zorvane::metamodel::types::FloatingPointKind,
                                        Zorvane::metamodel::types::FloatingPointKindLiterals>;

template struct QOB::internal::OutOfLineFunction<
    static_cast<unsigned (*)(Zorvane::metamodel::types::FloatingPointKind const&) noexcept>(
        &Zorvane::metamodel::types::hash_value)>;
