#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"

#include "qob/kernel/handle/outofline.h"
#include "quantityimpl.h"

namespace Zorvane::metamodel::types {

std::string DataSize::getTypeName() {
    return "Zorvane.metamodel.types.DataSize";
}

Tessel::TypeInfo const& DataSize::getTypeInfo() {
    static Tessel::TypeInfo const info = DataSizeTypeInfo::Create();
    return info;
}

void DataSize::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

template class Quantity<DataSize, QOB::Integer, DataSizeUnitKind>;
template class QuantityTypeInfo<DataSizeTypeInfo, DataSize>;

} // namespace Zorvane::metamodel::types

template struct QOB::internal::OutOfLineFunction<static_cast<unsigned (*)(
    Zorvane::metamodel::types::DataSize const&) noexcept>(&Zorvane::metamodel::types::hash_value)>;
