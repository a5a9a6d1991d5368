#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasizeunitkind.h"

#include "qob/kernel/handle/outofline.h"
#include "velum_foundation/zorvane/metamodel/kindimpl.h"

namespace Zorvane::metamodel::types {

void DataSizeUnitKindLiterals::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

} // namespace Zorvane::metamodel::types

template class Zorvane::metamodel::Kind<Zorvane::metamodel::types::DataSizeUnitKind,
                                        Zorvane::metamodel::types::DataSizeUnitKindLiterals>;

template struct QOB::internal::OutOfLineFunction<
    static_cast<unsigned (*)(Zorvane::metamodel::types::DataSizeUnitKind const&) noexcept>(
        &Zorvane::metamodel::types::hash_value)>;
