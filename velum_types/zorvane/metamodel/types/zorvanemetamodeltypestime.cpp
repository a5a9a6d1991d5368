#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"

#include "qob/kernel/handle/outofline.h"
#include "quantityimpl.h"

namespace Zorvane::metamodel::types {

std::string Time::getTypeName() {
    return "Zorvane.metamodel.types.Time";
}

Tessel::TypeInfo const& Time::getTypeInfo() {
    static Tessel::TypeInfo const info = TimeTypeInfo::Create();
    return info;
}

void Time::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

template class Quantity<Time, QOB::Real, TimeUnitKind>;
template class QuantityTypeInfo<TimeTypeInfo, Time>;

} // namespace Zorvane::metamodel::types

template struct QOB::internal::OutOfLineFunction<static_cast<unsigned (*)(
    Zorvane::metamodel::types::Time const&) noexcept>(&Zorvane::metamodel::types::hash_value)>;
